// A client for the tests that sends and does not read, or only late.
#pragma once

#include <array>
#include <cstdint>
#include <netinet/in.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace world {

// A socket of the system with little room for what it does not read.
class Mute {
public:
    explicit Mute(int port) : handle(::socket(AF_INET, SOCK_STREAM, 0)) {
        const int small = 4096;
        ::setsockopt(handle, SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        isOpen =
            ::connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    Mute(const Mute&) = delete;
    Mute& operator=(const Mute&) = delete;
    ~Mute() { ::close(handle); }

    bool Send(std::string_view bytes) const {
        return isOpen && ::send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
                             static_cast<ssize_t>(bytes.size());
    }

    // Says that nothing more will be sent, and goes on receiving.
    void CloseItsHalf() const { ::shutdown(handle, SHUT_WR); }

    // What has come after all, up to the words that end it. Gives up when five seconds pass without
    // a byte.
    std::string ReadLateUntil(std::string_view end) const {
        const timeval patience = {5, 0};
        ::setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        std::string late;
        std::array<char, 4096> piece{};
        while (!late.ends_with(end)) {
            const ssize_t count = ::recv(handle, piece.data(), piece.size(), 0);
            if (count <= 0)
                break;
            late.append(piece.data(), static_cast<std::size_t>(count));
        }
        return late;
    }

    // What has come after all, up to the end that the other side made. Waits for that end.
    std::string ReadLate() const {
        std::string late;
        std::array<char, 4096> piece{};
        for (ssize_t count = 0; (count = ::recv(handle, piece.data(), piece.size(), 0)) > 0;)
            late.append(piece.data(), static_cast<std::size_t>(count));
        return late;
    }

private:
    int handle;
    bool isOpen = false;
};

} // namespace world
