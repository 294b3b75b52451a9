#include "GameServer.h"

#include "Wait.h"

#include <fcntl.h>
#include <stdexcept>
#include <sys/socket.h>

#include <QHostAddress>
#include <QNetworkProxy>
#include <QRandomGenerator>

namespace journey {
namespace {

constexpr int kFirstPort = 20000;
constexpr int kEndOfPorts = 32768; // the client keeps ports in 16 bits with a sign
constexpr int kTries = 100;

} // namespace

GameServer::GameServer() {
    Listener.setProxy(QNetworkProxy::NoProxy);
    for (int tries = 0; tries < kTries && !Listener.isListening(); ++tries) {
        const int port = QRandomGenerator::global()->bounded(kFirstPort, kEndOfPorts);
        Listener.listen(QHostAddress::LocalHost, static_cast<quint16>(port));
    }
    if (!Listener.isListening())
        throw std::runtime_error("No free port for the game server");
}

QString GameServer::Address() const { return "127.0.0.1:" + PortText(); }

QString GameServer::PortText() const { return QString::number(Listener.serverPort()); }

bool GameServer::HasPlayerWaiting() const { return Listener.hasPendingConnections(); }

void GameServer::WaitForPlayer() {
    WaitFor("the client to connect", [this] { return HasPlayerWaiting(); });
    Player.reset(Listener.nextPendingConnection());
    Player->setParent(nullptr);
    Player->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    Received.clear();
}

void GameServer::Send(std::string_view bytes) {
    Player->write(bytes.data(), static_cast<qint64>(bytes.size()));
    Player->flush();
}

void GameServer::Read() { Received += Player->readAll().toStdString(); }

void GameServer::Expect(std::string_view bytes) {
    Becomes([&] {
        Read();
        return Received.size() >= bytes.size() || !bytes.starts_with(Received);
    });
    if (!Received.starts_with(bytes))
        throw std::runtime_error("Waited for the bytes " + Escaped(bytes) + " and got " +
                                 Escaped(Received));
    Received.erase(0, bytes.size());
}

std::string GameServer::Unread() {
    Read();
    return Received;
}

int GameServer::HandOver() {
    const int own = ::fcntl(static_cast<int>(Player->socketDescriptor()), F_DUPFD_CLOEXEC, 0);
    Player.reset();
    return own;
}

void GameServer::WaitForPlayerToLeave() {
    WaitFor("the client to end the connection", [this] {
        Read();
        return Player->state() == QAbstractSocket::UnconnectedState;
    });
}

void GameServer::Close() {
    Player->disconnectFromHost();
    WaitForPlayerToLeave();
}

void GameServer::Reset() {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(Player->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                 sizeof atOnce);
    Player->abort();
}

// The socket is kept, so that nobody else can take the port meanwhile.
void GameServer::StopListening() {
    Listener.pauseAccepting();
    ::shutdown(static_cast<int>(Listener.socketDescriptor()), SHUT_RD);
}

void GameServer::ListenAgain() {
    if (::listen(static_cast<int>(Listener.socketDescriptor()), SOMAXCONN) != 0)
        throw std::runtime_error("The game server can't listen again");
    Listener.resumeAccepting();
}

} // namespace journey
