// The sockets of the web pages: who is connected, how long each may take, and how each one ends.
//
// What is answered is left to Http. After its answer a connection is closed for sending only, and
// what still comes in is thrown away until the other end closes too: closing with something unread
// would make the system reset the connection, and the answer could be lost on its way.
#pragma once

#include "Http.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

#include <QTcpServer>

class QTcpSocket;
class QTimer;

namespace world {

inline constexpr std::size_t MaxWebClients = 64;
inline constexpr std::chrono::seconds MaxPatience{5};

// Every connection ends with it.
class WebServer {
public:
    // Patience is the time a client has to send its head, and again to take its answer.
    explicit WebServer(Pages served, std::chrono::milliseconds granted = MaxPatience);

    // Begins to listen on 127.0.0.1; port 0 is any free one. False, with nothing begun, when the
    // port is taken.
    bool Listen(int port);

    int Port() const;
    std::size_t Clients() const;

    // A timer runs only while someone is connected.
    bool TimerRuns() const;

private:
    struct Connection {
        std::string received;
        bool isAnswered = false;
        QTimer* limit = nullptr; // a child of the socket
    };

    void Accept();
    void Begin(QTcpSocket* socket);
    void Receive(QTcpSocket* socket);
    void Forget(QTcpSocket* socket);

    Pages pages;
    std::chrono::milliseconds patience;
    std::map<QTcpSocket*, Connection> connections;
    QTcpServer listener;
};

} // namespace world
