#include "bench/VersionServer.h"

#include <netinet/in.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {

VersionServer::VersionServer() : Listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(Listener, reinterpret_cast<sockaddr*>(&address), length);
    ::listen(Listener, 8);
    ::getsockname(Listener, reinterpret_cast<sockaddr*>(&address), &length);
    Root = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    Thread = std::thread([this] { Serve(); });
}

VersionServer::~VersionServer() {
    ::shutdown(Listener, SHUT_RDWR);
    Thread.join();
    ::close(Listener);
}

void VersionServer::Serve() const {
    constexpr std::string_view kAnswer = "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n"
                                         "Connection: close\r\n\r\n0";
    for (int client = 0; (client = ::accept(Listener, nullptr, nullptr)) >= 0;) {
        char request[4096];
        if (::recv(client, request, sizeof request, 0) > 0)
            ::send(client, kAnswer.data(), kAnswer.size(), MSG_NOSIGNAL);
        ::close(client);
    }
}

} // namespace bench
