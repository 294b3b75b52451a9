// Numbered lines that a game server sends as fast as the client takes them, from a thread of its
// own.
#pragma once

#include "GameServer.h"

#include <atomic>
#include <thread>

namespace journey {

struct Flood {
    // The server must not send anything else until Stop.
    explicit Flood(GameServer& server);
    ~Flood();

    // Ends the flood after a whole line. Returns the number of the last line sent.
    int Stop();

    std::atomic<int> LastLine = 0;

private:
    void Run(int descriptor);

    std::atomic<bool> IsStopping = false;
    std::thread Thread;
};

// "line 00000007"
std::string FloodLine(int number);

} // namespace journey
