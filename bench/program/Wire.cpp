#include "bench/program/Wire.h"

#include <algorithm>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <random>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {
namespace {

constexpr int kPatienceMs = 60000;
constexpr int kQuietMs = 100;

// The question, and what drains the lines that wait before it: they are handed to the triggers one
// an append, and each colour is one. The last byte of an arrival is lost, perhaps the question's,
// so it is put three times.
std::string Question() {
    constexpr int kTimes = 3;
    constexpr int kMostWaiting = 1000; // lines of usual length in what may wait
    std::string question;
    for (int time = 0; time < kTimes; ++time) {
        question.append("\r\n").append(kAsk).append("\r\n");
        for (int i = 0; i < kMostWaiting; ++i)
            question += "\x1b[0;32m.";
    }
    return question;
}

bool IsReadable(int descriptor, int waitMs) {
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, waitMs) > 0;
}

void Ask(Wire& wire) {
    static const std::string question = Question();
    wire.Send(question);
    wire.AwaitReply();
}

} // namespace

Listener::Listener() : Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), Port(0) {
    constexpr int kFirstPort = 20000;
    constexpr int kLastPort = 32767;
    constexpr int kTries = 100;
    std::random_device random;
    for (int tries = 0; tries < kTries; ++tries) {
        Port = std::uniform_int_distribution(kFirstPort, kLastPort)(random);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(Port));
        if (::bind(Descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
            ::listen(Descriptor, 1) == 0)
            return;
    }
    throw std::runtime_error("No free port to listen at");
}

Listener::~Listener() { ::close(Descriptor); }

Wire::Wire(const Listener& listener) {
    if (!IsReadable(listener.Descriptor, kPatienceMs))
        throw std::runtime_error("Nobody connected");
    Descriptor = ::accept4(listener.Descriptor, nullptr, nullptr, SOCK_CLOEXEC);
    const int on = 1;
    ::setsockopt(Descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

Wire::~Wire() { ::close(Descriptor); }

void Wire::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(Descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            throw std::runtime_error("The other end is gone");
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void Wire::AwaitReply() {
    char bytes[256];
    do {
        if (!IsReadable(Descriptor, kPatienceMs))
            throw std::runtime_error("There was no reply");
        const ssize_t size = ::recv(Descriptor, bytes, sizeof bytes, 0);
        if (size <= 0)
            throw std::runtime_error("The other end is gone");
        if (std::find(bytes, bytes + size, '\r') != bytes + size)
            return;
    } while (true);
}

void Wire::Drain() const {
    char bytes[256];
    while (IsReadable(Descriptor, kQuietMs) && ::recv(Descriptor, bytes, sizeof bytes, 0) > 0) {
    }
}

void Settle(Wire& wire) {
    Ask(wire);
    wire.Drain();
}

double StreamRate(Wire& wire, std::string_view text, std::size_t size) {
    wire.Drain();
    const Moment start = Now();
    std::size_t sent = 0;
    for (; sent < size; sent += text.size())
        wire.Send(text);
    Ask(wire);
    const double rate = static_cast<double>(sent) / 1000 / MsSince(start);
    wire.Drain();
    return rate;
}

Sample RoundTrips(Wire& wire, int count) {
    wire.Drain();
    const std::string ask = std::string(kAsk) + "\r\n> "; // the text makes the line a whole one
    Sample times;
    for (int i = 0; i < count; ++i) {
        const Moment start = Now();
        wire.Send(ask);
        wire.AwaitReply();
        times.push_back(MsSince(start));
    }
    return times;
}

Flood::Flood(Wire& wire, std::string_view text, double bytesASecond)
    : Way(wire), Thread([this, text, bytesASecond] { Run(text, bytesASecond); }) {}

Flood::~Flood() {
    IsStopping = true;
    Thread.join();
}

void Flood::Run(std::string_view text, double bytesASecond) {
    const Moment start = Now();
    double sent = 0;
    while (!IsStopping) {
        Way.Send(text);
        sent += static_cast<double>(text.size());
        if (bytesASecond > kUnbounded)
            std::this_thread::sleep_until(start + Milliseconds(1000 * sent / bytesASecond));
    }
}

} // namespace bench
