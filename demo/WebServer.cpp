#include "WebServer.h"

#include "Ports.h"

#include <algorithm>
#include <sys/socket.h>
#include <utility>

#include <QTcpSocket>
#include <QTimer>

namespace world {
namespace {

constexpr int kReceiveBuffer = 4096;

// Sockets cannot be closed for one direction through Qt.
void EndSending(QTcpSocket* socket) {
    if (socket->bytesToWrite() == 0)
        ::shutdown(static_cast<int>(socket->socketDescriptor()), SHUT_WR);
}

} // namespace

WebServer::WebServer(Pages served, std::chrono::milliseconds granted)
    : pages(std::move(served)), patience(granted) {
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [this] { Accept(); });
}

bool WebServer::Listen(int port) { return ListenAt(listener, port); }

int WebServer::Port() const { return listener.serverPort(); }

std::size_t WebServer::Clients() const { return connections.size(); }

bool WebServer::TimerRuns() const {
    return std::ranges::any_of(listener.findChildren<QTimer*>(), &QTimer::isActive);
}

void WebServer::Accept() {
    while (QTcpSocket* socket = listener.nextPendingConnection()) {
        if (connections.size() < MaxWebClients)
            Begin(socket);
        else
            socket->deleteLater(); // which closes it
    }
}

void WebServer::Begin(QTcpSocket* socket) {
    auto* limit = new QTimer(socket);
    limit->setSingleShot(true);
    limit->setInterval(patience);
    connections[socket].limit = limit;
    socket->setReadBufferSize(kReceiveBuffer);
    QObject::connect(limit, &QTimer::timeout, socket, [socket] { socket->abort(); });
    QObject::connect(socket, &QTcpSocket::readyRead, &listener,
                     [this, socket] { Receive(socket); });
    QObject::connect(socket, &QTcpSocket::bytesWritten, socket, [socket] { EndSending(socket); });
    QObject::connect(socket, &QTcpSocket::disconnected, &listener,
                     [this, socket] { Forget(socket); });
    limit->start();
}

void WebServer::Receive(QTcpSocket* socket) {
    const QByteArray bytes = socket->readAll();
    Connection& connection = connections.at(socket);
    if (connection.isAnswered)
        return;
    connection.received.append(bytes.data(), static_cast<std::size_t>(bytes.size()));
    const std::optional<std::string> answer = Answer(connection.received, pages);
    if (!answer)
        return;
    connection.isAnswered = true;
    connection.limit->start();
    // Flushed at once: after the end of what a client sends, Qt drops what it still has to write.
    // The system takes several times the largest page at once.
    socket->write(answer->data(), static_cast<qint64>(answer->size()));
    socket->flush();
}

// Runs inside the socket's own signals, and perhaps its timer's: both live until these are over.
void WebServer::Forget(QTcpSocket* socket) {
    connections.at(socket).limit->stop();
    connections.erase(socket);
    socket->deleteLater();
}

} // namespace world
