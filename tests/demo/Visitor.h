// A telnet client for the tests: it remembers every chunk as it came and answers nothing by itself.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <vector>

#include <QCoreApplication>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>

namespace world {

// Lets events run until the condition holds. False when five seconds pass without it.
inline bool WaitFor(const std::function<bool()>& condition) {
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(5000);
    while (!condition() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return condition();
}

struct Visitor {
    QTcpSocket socket;
    std::vector<std::string> chunks;
    std::string received; // since the last Forget

    explicit Visitor(int port) {
        socket.setProxy(QNetworkProxy::NoProxy);
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] {
            chunks.push_back(socket.readAll().toStdString());
            received += chunks.back();
        });
        socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    }

    void Send(std::string_view bytes) {
        socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }

    void Forget() { received.clear(); }

    // Says, once all is sent, that nothing more will be, and goes on receiving. False when it is
    // not sent in time.
    bool ClosesItsHalf() {
        const bool isSent = WaitFor([this] {
            return socket.state() == QTcpSocket::ConnectedState && socket.bytesToWrite() == 0;
        });
        ::shutdown(static_cast<int>(socket.socketDescriptor()), SHUT_WR);
        return isSent;
    }

    bool Sees(std::string_view part) {
        return WaitFor([&] { return received.find(part) != std::string::npos; });
    }

    bool IsClosed() {
        return WaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }

    // Types one line the way the game client does and waits for the part of the answer.
    bool Type(std::string_view line, std::string_view answer) {
        Forget();
        Send(std::string(line) + '\r');
        return Sees(answer);
    }

    bool LogIn(std::string_view name) {
        return Sees("By what name") && Type(name, "Password: ") && Type("secret", "/20] > ");
    }

    // Agrees to be asked for sounds.
    void TakeSounds() { Send("\xff\xfd\x5a"); }
};

} // namespace world
