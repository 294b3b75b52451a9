// The client program, started from its release build with a home folder of its own.
#pragma once

#include "bench/Home.h"
#include "bench/program/Moment.h"
#include "bench/program/Process.h"
#include "bench/program/Screen.h"
#include "bench/program/Wire.h"

#include <memory>

namespace bench {

enum class Platform { X, Offscreen };

struct Client {
    // Starts it with one macro set: the trigger that answers the question, and as many others that
    // never match. On X it has a display of its own, which its window fills.
    Client(Platform platform, std::size_t otherTriggers, bool connects = true);

    // Starts it in the home of a player of many years.
    explicit Client(const std::string& webRoot);

    // Waits until its window is there and it has connected.
    void AwaitConnection();

    std::unique_ptr<Screen> Display; // on X
    Folder Home;
    Listener Gate;
    Moment Start;
    std::unique_ptr<Process> Program;
    std::unique_ptr<Wire> Game;

private:
    void Launch(bool connects, const std::string& webRoot);
};

} // namespace bench
