// A web server on this machine, in a thread of its own, because the version check waits while it
// fetches. What it answers is up to the test, byte by byte.
#pragma once

#include <arpa/inet.h>
#include <atomic>
#include <functional>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QByteArray>

namespace forms {

class WebServer {
public:
    // One visit; it ends with the answer.
    struct Visit {
        int Socket;
        std::string Path;

        // False when the visitor has gone.
        bool Send(std::string_view bytes) const {
            while (!bytes.empty()) {
                const ssize_t sent = ::send(Socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
                if (sent <= 0)
                    return false;
                bytes.remove_prefix(static_cast<std::size_t>(sent));
            }
            return true;
        }
    };

    using Answer = std::function<void(const Visit&)>;

    // Answers each visitor in the same words.
    explicit WebServer(std::string bytes)
        : WebServer([bytes = std::move(bytes)](const Visit& visit) { visit.Send(bytes); }) {}

    explicit WebServer(Answer answer) : OnVisit(std::move(answer)) {
        Listen();
        Worker = std::thread([this] { Serve(); });
    }

    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    ~WebServer() {
        Stopped = true;
        Worker.join();
        ::close(Listener);
    }

    std::string Host() const { return "127.0.0.1:" + std::to_string(Port); }

    std::string Root() const { return "http://" + Host(); }

    // The paths that were asked for, in order.
    std::vector<std::string> Paths() const {
        const std::lock_guard lock(Guard);
        return Asked;
    }

private:
    void Listen() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        Listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::bind(Listener, any, size) != 0 || ::listen(Listener, 8) != 0 ||
            ::getsockname(Listener, any, &size) != 0)
            throw std::runtime_error("no free port");
        Port = ntohs(address.sin_port);
    }

    void Serve() {
        constexpr int kLookEvery = 10; // milliseconds
        while (!Stopped) {
            pollfd waiting{Listener, POLLIN, 0};
            if (::poll(&waiting, 1, kLookEvery) > 0)
                Welcome(::accept4(Listener, nullptr, nullptr, SOCK_CLOEXEC));
        }
    }

    void Welcome(int socket) {
        const std::string request = ReadRequest(socket);
        const std::size_t path = request.find(' ') + 1;
        const Visit visit{socket, request.substr(path, request.find(' ', path) - path)};
        {
            const std::lock_guard lock(Guard);
            Asked.push_back(visit.Path);
        }
        OnVisit(visit);
        ::close(socket);
    }

    static std::string ReadRequest(int socket) {
        std::string request;
        char bytes[1024];
        while (request.find("\r\n\r\n") == std::string::npos) {
            const ssize_t count = ::recv(socket, bytes, sizeof bytes, 0);
            if (count <= 0)
                break;
            request.append(bytes, static_cast<std::size_t>(count));
        }
        return request;
    }

    const Answer OnVisit;
    int Listener = -1;
    int Port = 0;
    std::atomic<bool> Stopped = false;
    mutable std::mutex Guard;
    std::vector<std::string> Asked;
    std::thread Worker;
};

// Makes an address the root of the maker's web site while it lives.
class MakersSite {
public:
    explicit MakersSite(const std::string& root) : Before(qgetenv(kVariable)) {
        qputenv(kVariable, QByteArray::fromStdString(root));
    }
    MakersSite(const MakersSite&) = delete;
    MakersSite& operator=(const MakersSite&) = delete;
    ~MakersSite() { qputenv(kVariable, Before); }

private:
    static constexpr const char* kVariable = "QUILLMERE_WEB_ROOT";
    QByteArray Before;
};

} // namespace forms
