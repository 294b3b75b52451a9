// A game server's end of a connection, and the text that is sent over it.
//
// Whoever is measured answers kAsk, when a line holds it, with one CR. Raises std::runtime_error
// when the other end is gone, or silent for a minute.
#pragma once

#include "bench/program/Moment.h"
#include "bench/program/Sample.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>

namespace bench {

inline constexpr std::string_view kAsk = "bench: are you there?";

struct Listener {
    // On this machine, at a free port that fits into 16 bits with a sign.
    Listener();
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    int Descriptor;
    int Port;
};

struct Wire {
    // Waits for someone to connect.
    explicit Wire(const Listener& listener);
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    void Send(std::string_view bytes) const;

    // Waits for the next CR, whatever comes before it.
    void AwaitReply();

    // Reads and forgets until nothing has come for a while.
    void Drain() const;

    int Descriptor;
};

// Lets everything that was sent arrive and be read.
void Settle(Wire& wire);

// Sends text over and over until there are at least size bytes, and the question. Returns the
// bytes a second (in 10^6) until the reply is here.
double StreamRate(Wire& wire, std::string_view text, std::size_t size);

// Milliseconds from a question to its reply, one by one.
Sample RoundTrips(Wire& wire, int count);

// Text that is sent from a thread of its own: bytes a second, or as many as are taken.
struct Flood {
    static constexpr double kUnbounded = 0;

    Flood(Wire& wire, std::string_view text, double bytesASecond);
    ~Flood(); // at the end of a line
    Flood(const Flood&) = delete;
    Flood& operator=(const Flood&) = delete;

private:
    void Run(std::string_view text, double bytesASecond);

    Wire& Way;
    std::atomic<bool> IsStopping = false;
    std::thread Thread;
};

} // namespace bench
