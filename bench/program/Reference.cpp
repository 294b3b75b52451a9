#include "bench/program/Reference.h"

#include <csignal>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

int ConnectTo(int port) {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    ::connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address);
    const int on = 1;
    ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return descriptor;
}

void TakeLine(int descriptor, std::string_view line) {
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    if (line.ends_with(kAsk))
        ::send(descriptor, "\r", 1, MSG_NOSIGNAL);
}

// Returns the beginning of a line whose end has not come.
std::string_view TakeLines(int descriptor, std::string_view text) {
    while (const void* const end = std::memchr(text.data(), '\n', text.size())) {
        const auto length = static_cast<std::size_t>(static_cast<const char*>(end) - text.data());
        TakeLine(descriptor, text.substr(0, length));
        text.remove_prefix(length + 1);
    }
    return text;
}

void Read(int descriptor) {
    std::string buffer(std::size_t{256} * 1024, '\0');
    std::size_t kept = 0;
    for (;;) {
        const ssize_t size = ::recv(descriptor, buffer.data() + kept, buffer.size() - kept, 0);
        if (size <= 0)
            return;
        const std::string_view text(buffer.data(), kept + static_cast<std::size_t>(size));
        const std::string_view rest = TakeLines(descriptor, text);
        std::memmove(buffer.data(), rest.data(), rest.size());
        kept = rest.size() < buffer.size() ? rest.size() : 0;
    }
}

pid_t StartReader(int port) {
    const pid_t id = ::fork();
    if (id == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        Read(ConnectTo(port));
        ::_exit(0);
    }
    return id;
}

} // namespace

Reference::Reference() : Reader(StartReader(Gate.Port)), Game(Gate) {}

Reference::~Reference() {
    ::kill(Reader, SIGKILL);
    ::waitpid(Reader, nullptr, 0);
}

} // namespace bench
