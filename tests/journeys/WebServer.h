// A web server that the journey plays itself: it gives out the files it is given, and of some the
// first part only, until it is told to go on.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

namespace journey {

struct WebServer {
    // Listens on a free port. What has no name there is answered with 404.
    WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    std::string AddressOf(const std::string& name) const; // "http://127.0.0.1:40000/rain.wav"

    // Of a file that is begun the whole length is announced and so many percent are sent.
    void Serve(const std::string& name, const std::string& bytes);
    void Begin(const std::string& name, const std::string& bytes, std::size_t percent);

    // Sends the rest of all files that were begun, to those who are still there.
    void GoOn();

    std::vector<std::string> Asked; // the names that were asked for, in order

private:
    struct File {
        std::string Bytes;
        std::size_t Begun = 0; // bytes sent at once
    };

    void Welcome();
    void Answer(QTcpSocket& socket);
    void SendFile(QTcpSocket& socket, const File& file);

    std::map<std::string, File> Files;
    std::vector<std::pair<QPointer<QTcpSocket>, std::string>> Held; // what each has yet to get
    QTcpServer Listener;
};

// The bytes that a server has at the address, read the plain way. Throws when it has none.
std::string ServedAt(const QString& address);

} // namespace journey
