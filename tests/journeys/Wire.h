// A server's end of a connection in the hands of a thread, which sends as fast as is taken and
// reads all that comes, so that the client never waits for the journey.
#pragma once

#include "Attacks.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace journey {

struct Wire {
    using Clock = std::chrono::steady_clock;

    explicit Wire(int descriptor); // which is its own from here on
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    // Sends without end, in the background.
    void Begin(const Attack& attack);

    // Ends that, wherever it is, once its least has been sent. Returns the bytes sent. Throws when
    // the client does not take them.
    std::size_t Stop();

    // Returns when all has been taken.
    void Send(std::string_view bytes);

    // From now on waits for the bytes. Heard tells when they came, and throws when they don't.
    void ListenFor(std::string_view bytes);
    Clock::time_point Heard(const std::string& what);
    bool HasHeard(std::chrono::milliseconds limit);

    // Each line that comes is answered with the reply, until that is empty.
    void AnswerLines(const std::string& reply);

    void StopReading();
    bool IsOpen() const; // at the client's end too
    void EndSending();   // the client sees the end of the connection
    void Reset();        // the same, as a reset

private:
    void Run();
    void Read();
    void Answer(std::string_view bytes);
    void Write();
    bool HasToSend() const;
    std::string_view Next() const;
    void Took(std::size_t count);

    const int Descriptor;
    std::atomic<bool> IsEnding = false;
    std::atomic<bool> IsBroken = false;
    std::atomic<bool> IsReading = true;

    mutable std::mutex Lock; // of all that follows
    std::condition_variable Changed;
    Attack Now;
    bool IsAttacking = false; // the block is sent again and again
    std::size_t Sent = 0;     // of the attack
    std::string Waiting;      // to be sent, before all else
    Clock::time_point Due;    // the next send
    std::string Mark;         // what is listened for
    std::string Tail;         // of what came
    bool IsHeard = false;
    Clock::time_point HeardAt;
    std::string Reply;

    std::thread Thread; // last: it uses all the others
};

} // namespace journey
