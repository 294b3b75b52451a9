#include "Flood.h"

#include <cstdio>
#include <poll.h>
#include <sys/socket.h>

namespace journey {
namespace {

constexpr int kLinesABlock = 100;
constexpr int kPatienceMs = 100; // how long Stop may have to wait for a client that does not read

// False when the client is gone or does not read while stopping.
bool SendAll(int descriptor, std::string_view bytes, const std::atomic<bool>& isStopping) {
    bool last = false;
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
            continue;
        }
        pollfd writable{descriptor, POLLOUT, 0};
        const bool isReady = ::poll(&writable, 1, kPatienceMs) > 0;
        if ((writable.revents & (POLLERR | POLLHUP)) != 0 || (last && !isReady))
            return false;
        last = isStopping;
    }
    return true;
}

} // namespace

Flood::Flood(GameServer& server)
    : Thread([this, descriptor = static_cast<int>(server.Player->socketDescriptor())] {
          Run(descriptor);
      }) {}

Flood::~Flood() { Stop(); }

void Flood::Run(int descriptor) {
    while (!IsStopping) {
        std::string block;
        const int end = LastLine + kLinesABlock;
        for (int number = LastLine + 1; number <= end; ++number)
            block += FloodLine(number) + "\x1b[0;32m fills the screen\x1b[0;37m\r\n";
        if (!SendAll(descriptor, block, IsStopping))
            return;
        LastLine = end;
    }
}

int Flood::Stop() {
    IsStopping = true;
    if (Thread.joinable())
        Thread.join();
    return LastLine;
}

std::string FloodLine(int number) {
    char text[32];
    std::snprintf(text, sizeof text, "line %08d", number);
    return text;
}

} // namespace journey
