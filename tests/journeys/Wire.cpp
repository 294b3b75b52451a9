#include "Wire.h"

#include "Wait.h"

#include <algorithm>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace journey {
namespace {

constexpr int kTurnMs = 1; // how late what the journey asks for may begin
constexpr std::size_t kPiece = 32768;
constexpr std::size_t kMostRead = 32 * kPiece; // answers may be longer than what they answer
constexpr std::size_t kMostWaiting = std::size_t{1024} * 1024; // bytes of answers

// What lies ready in the system is still to be read when an attack is over: a megabyte at most.
constexpr int kSystemBuffer = 128 * 1024;

} // namespace

Wire::Wire(int descriptor) : Descriptor(descriptor), Thread([this] { Run(); }) {
    ::setsockopt(Descriptor, SOL_SOCKET, SO_SNDBUF, &kSystemBuffer, sizeof kSystemBuffer);
}

Wire::~Wire() {
    IsEnding = true;
    Thread.join();
    ::close(Descriptor);
}

void Wire::Begin(const Attack& attack) {
    const std::lock_guard lock(Lock);
    Now = attack;
    IsAttacking = true;
    Sent = 0;
    Waiting += attack.First;
}

std::size_t Wire::Stop() {
    std::unique_lock lock(Lock);
    const bool isDone =
        Changed.wait_for(lock, kLimit, [this] { return Sent >= Now.Least || IsBroken; });
    IsAttacking = false;
    Due = {};
    if (!isDone)
        throw std::runtime_error("The client has taken only " + std::to_string(Sent) +
                                 " bytes of " + Now.Name);
    return Sent;
}

void Wire::Send(std::string_view bytes) {
    std::unique_lock lock(Lock);
    Waiting += bytes;
    if (!Changed.wait_for(lock, kLimit, [this] { return Waiting.empty() || IsBroken; }))
        throw std::runtime_error("The client does not take what is sent");
}

void Wire::ListenFor(std::string_view bytes) {
    const std::lock_guard lock(Lock);
    Mark = bytes;
    Tail.clear();
    IsHeard = false;
}

bool Wire::HasHeard(std::chrono::milliseconds limit) {
    std::unique_lock lock(Lock);
    return Changed.wait_for(lock, limit, [this] { return IsHeard; });
}

Wire::Clock::time_point Wire::Heard(const std::string& what) {
    if (!HasHeard(kLimit))
        throw std::runtime_error("Waited " + std::to_string(kLimit.count()) + " s for " + what);
    const std::lock_guard lock(Lock);
    return HeardAt;
}

void Wire::AnswerLines(const std::string& reply) {
    const std::lock_guard lock(Lock);
    Reply = reply;
}

void Wire::StopReading() { IsReading = false; }

bool Wire::IsOpen() const { return !IsBroken; }

void Wire::EndSending() { ::shutdown(Descriptor, SHUT_WR); }

// Disconnecting a socket in this way sends a reset, and keeps its descriptor for the thread.
void Wire::Reset() {
    const sockaddr none{AF_UNSPEC, {}};
    IsBroken = true;
    ::connect(Descriptor, &none, sizeof none);
}

void Wire::Run() {
    while (!IsEnding) {
        if (IsBroken) {
            ::poll(nullptr, 0, kTurnMs);
            continue;
        }
        pollfd way{Descriptor, POLLRDHUP, 0};
        if (IsReading)
            way.events = POLLIN;
        {
            const std::lock_guard lock(Lock);
            if (HasToSend() && Clock::now() >= Due)
                way.events |= POLLOUT;
        }
        ::poll(&way, 1, kTurnMs);
        if ((way.revents & POLLIN) != 0)
            Read();
        else if ((way.revents & (POLLERR | POLLHUP | POLLRDHUP)) != 0)
            IsBroken = true;
        if ((way.revents & POLLOUT) != 0)
            Write();
        Changed.notify_all();
    }
}

void Wire::Read() {
    static thread_local char bytes[kMostRead];
    const ssize_t size = ::recv(Descriptor, bytes, sizeof bytes, MSG_DONTWAIT);
    if (size <= 0) {
        IsBroken = true;
        return;
    }
    const std::lock_guard lock(Lock);
    Answer({bytes, static_cast<std::size_t>(size)});
    Tail.append(bytes, static_cast<std::size_t>(size));
    if (!IsHeard && !Mark.empty() && Tail.find(Mark) != std::string::npos) {
        IsHeard = true;
        HeardAt = Clock::now();
    }
    Tail.erase(0, Tail.size() - std::min(Tail.size(), Mark.size())); // its beginning may be there
}

void Wire::Answer(std::string_view bytes) {
    for (const char byte : bytes) {
        if (byte == '\r' && Waiting.size() < kMostWaiting)
            Waiting += Reply;
    }
}

bool Wire::HasToSend() const { return !Waiting.empty() || (IsAttacking && !Now.Block.empty()); }

std::string_view Wire::Next() const {
    std::string_view text = Waiting;
    if (text.empty())
        text = std::string_view(Now.Block).substr(Sent % Now.Block.size());
    return text.substr(0, IsAttacking && Now.Packet != 0 ? Now.Packet : kPiece);
}

void Wire::Write() {
    const std::lock_guard lock(Lock);
    if (!HasToSend()) // stopped meanwhile
        return;
    const std::string_view next = Next();
    const ssize_t sent = ::send(Descriptor, next.data(), next.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent > 0)
        Took(static_cast<std::size_t>(sent));
    if (IsAttacking)
        Due = Clock::now() + std::chrono::milliseconds(Now.PauseMs);
}

void Wire::Took(std::size_t count) {
    if (Waiting.empty())
        Sent += count;
    else
        Waiting.erase(0, count);
}

} // namespace journey
