// A game server on this machine: it takes visitors, remembers what they send and answers what a
// test tells it to.
#pragma once

#include "forms/WaitFor.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>

#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

namespace forms {

// Lets events run for a moment in which something must not happen.
inline void WaitAMoment(const std::function<bool()>& whatMustNotBe) {
    constexpr int kMoment = 100; // milliseconds
    EXPECT_FALSE(QTest::qWaitFor(whatMustNotBe, kMoment));
}

// A port that a game can have (they are signed 16-bit numbers), another one with each call.
inline quint16 NextPort() {
    static quint16 port = static_cast<quint16>(20000 + QCoreApplication::applicationPid() % 8000);
    port = port < 32000 ? static_cast<quint16>(port + 1) : quint16{20001};
    return port;
}

// Ends a connection with a reset: what the other end has not got yet is gone.
inline void BreakOff(QTcpSocket& socket) {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                 sizeof atOnce);
    socket.abort();
}

class GameServer {
public:
    GameServer() {
        QObject::connect(&Listener, &QTcpServer::newConnection, &Listener, [this] { Welcome(); });
        for (int tries = 0; !Listener.isListening(); ++tries) {
            if (tries == 1000)
                throw std::runtime_error("no free port");
            Listener.listen(QHostAddress::LocalHost, NextPort());
        }
    }

    std::int16_t Port() const { return static_cast<std::int16_t>(Listener.serverPort()); }

    // Lets visitors knock without an answer: they are connected, and nothing they send is read.
    void ReadNothing() { Listener.pauseAccepting(); }

    void StopListening() { Listener.close(); }

    void Send(std::string_view bytes) const {
        Visitor->write(bytes.data(), static_cast<qint64>(bytes.size()));
    }

    // Closes after what was sent.
    void HangUp() const { Visitor->disconnectFromHost(); }

    void Reset() const { BreakOff(*Visitor); }

    bool HasVisitor() const {
        return WaitFor(
            [this] { return Visitor && Visitor->state() == QAbstractSocket::ConnectedState; });
    }

    bool VisitorLeaves() const {
        return WaitFor(
            [this] { return Visitor && Visitor->state() == QAbstractSocket::UnconnectedState; });
    }

    bool Gets(std::string_view bytes) const {
        return WaitFor([&] { return Received.size() >= bytes.size(); }) && Received == bytes;
    }

    std::string Received;         // from the present visitor
    int Visitors = 0;             // so far
    QPointer<QTcpSocket> Visitor; // the present one

private:
    void Welcome() {
        delete Visitor;
        Visitor = Listener.nextPendingConnection();
        ++Visitors;
        Received.clear();
        QObject::connect(Visitor, &QTcpSocket::readyRead, Visitor, [this, from = Visitor.data()] {
            Received += from->readAll().toStdString();
        });
    }

    QTcpServer Listener;
};

} // namespace forms
