// A web server that publishes version 0 to whoever asks.
#pragma once

#include <string>
#include <thread>

namespace bench {

struct VersionServer {
    VersionServer();
    ~VersionServer();
    VersionServer(const VersionServer&) = delete;
    VersionServer& operator=(const VersionServer&) = delete;

    std::string Root; // "http://127.0.0.1:40000"

private:
    void Serve() const;

    int Listener;
    std::thread Thread;
};

} // namespace bench
