#include "WebServer.h"

#include "Wait.h"

#include <stdexcept>

#include <QHostAddress>
#include <QNetworkProxy>
#include <QUrl>

namespace journey {
namespace {

constexpr qint64 kLongestHead = 8192;
constexpr const char* kEndOfHead = "\r\n\r\n";

void Send(QTcpSocket& socket, const std::string& bytes) {
    socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    socket.flush();
}

std::string Head(const std::string& status, std::size_t length) {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(length) +
           "\r\nConnection: close\r\n\r\n";
}

} // namespace

WebServer::WebServer() {
    Listener.setProxy(QNetworkProxy::NoProxy);
    QObject::connect(&Listener, &QTcpServer::newConnection, &Listener, [this] { Welcome(); });
    if (!Listener.listen(QHostAddress::LocalHost))
        throw std::runtime_error("No free port for the web server");
}

std::string WebServer::AddressOf(const std::string& name) const {
    return "http://127.0.0.1:" + std::to_string(Listener.serverPort()) + '/' + name;
}

void WebServer::Serve(const std::string& name, const std::string& bytes) {
    Files[name] = {bytes, bytes.size()};
}

void WebServer::Begin(const std::string& name, const std::string& bytes, std::size_t percent) {
    Files[name] = {bytes, bytes.size() * percent / 100};
}

void WebServer::GoOn() {
    for (const auto& [socket, rest] : std::exchange(Held, {})) {
        if (!socket)
            continue;
        Send(*socket, rest);
        socket->disconnectFromHost();
    }
}

void WebServer::Welcome() {
    while (QTcpSocket* const socket = Listener.nextPendingConnection()) {
        QObject::connect(socket, &QTcpSocket::readyRead, socket,
                         [this, socket] { Answer(*socket); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void WebServer::Answer(QTcpSocket& socket) {
    if (socket.bytesAvailable() > kLongestHead)
        return socket.abort();
    if (!socket.peek(kLongestHead).contains(kEndOfHead))
        return;                                                    // more is to come
    const QString request = QString::fromLatin1(socket.readAll()); // "GET /rain.wav HTTP/1.1..."
    Asked.push_back(request.section(' ', 1, 1).mid(1).toStdString());
    const auto found = Files.find(Asked.back());
    if (found != Files.end())
        return SendFile(socket, found->second);
    Send(socket, Head("404 Not Found", 0));
    socket.disconnectFromHost();
}

void WebServer::SendFile(QTcpSocket& socket, const File& file) {
    Send(socket, Head("200 OK", file.Bytes.size()) + file.Bytes.substr(0, file.Begun));
    if (file.Begun == file.Bytes.size())
        socket.disconnectFromHost();
    else
        Held.emplace_back(&socket, file.Bytes.substr(file.Begun));
}

std::string ServedAt(const QString& address) {
    const QUrl url(address);
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(url.host(), static_cast<quint16>(url.port()));
    socket.write("GET " + url.path().toLatin1() + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
    std::string answer;
    WaitFor(address.toStdString(), [&] {
        answer += socket.readAll().toStdString();
        return socket.state() == QAbstractSocket::UnconnectedState;
    });
    const std::size_t end = answer.find(kEndOfHead);
    if (!answer.starts_with("HTTP/1.1 200 ") || end == std::string::npos)
        throw std::runtime_error("Nothing is served at " + address.toStdString());
    return answer.substr(end + 4);
}

} // namespace journey
