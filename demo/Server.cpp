#include "Server.h"

#include "Commands.h"
#include "Life.h"
#include "Login.h"
#include "Ports.h"
#include "Sounds.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <utility>

#include <QTcpSocket>

namespace world {
namespace {

constexpr int kReceiveBuffer = 4096;
constexpr int kSendBuffer = 64 * 1024; // the system's own share, kept small beside MaxQueue
constexpr int kNarrowest = 40;         // a window smaller than that gets lines of this width

void SetRunning(QTimer& timer, bool run) {
    if (run && !timer.isActive())
        timer.start();
    else if (!run)
        timer.stop();
}

// Flushed at once: two messages in one packet would leave the first one's spare byte in the middle.
void Write(QTcpSocket* socket, const std::string& message) {
    socket->write(message.data(), static_cast<qint64>(message.size()));
    socket->flush();
}

std::size_t WidthFor(int columns) {
    const int wished = columns > 0 ? std::max(columns, kNarrowest) : static_cast<int>(ProseWidth);
    return std::min(static_cast<std::size_t>(wished), ProseWidth);
}

} // namespace

Server::Server(const Settings& chosen) : settings(chosen) {
    world.roll = settings.roll;
    Populate(world);
    turnTimer.setSingleShot(true);
    fightTimer.setInterval(settings.round);
    beatTimer.setInterval(settings.beat);
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [this] { Accept(); });
    QObject::connect(&turnTimer, &QTimer::timeout, &listener, [this] { Turn(); });
    QObject::connect(&fightTimer, &QTimer::timeout, &listener, [this] {
        Round(world);
        turnTimer.start();
    });
    QObject::connect(&beatTimer, &QTimer::timeout, &listener, [this] {
        Beat(world);
        turnTimer.start();
    });
}

bool Server::Listen() { return ListenAt(listener, settings.port); }

int Server::Port() const { return listener.serverPort(); }

void Server::OfferSoundsAt(int httpPort) {
    world.soundRoot = "http://127.0.0.1:" + std::to_string(httpPort) + std::string(SoundPath);
}

bool Server::FightTimerRuns() const { return fightTimer.isActive(); }

bool Server::BeatTimerRuns() const { return beatTimer.isActive(); }

void Server::Close() {
    listener.close();
    for (auto& [id, connection] : connections) {
        Player& player = world.players.at(id);
        if (player.stage != Stage::Gone)
            Tell(player, NoticeColour, "The world is rolled up for the night. Come back soon.");
        player.stage = Stage::Gone;
        Send(id, connection);
    }
}

void Server::Accept() {
    while (QTcpSocket* socket = listener.nextPendingConnection()) {
        const bool isFull = connections.size() >= MaxClients;
        std::cerr << (isFull ? "refused " : "connected ")
                  << socket->peerAddress().toString().toStdString() << ':' << socket->peerPort()
                  << '\n';
        if (isFull)
            Refuse(socket);
        else
            Welcome(socket);
    }
}

void Server::Refuse(QTcpSocket* socket) {
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    Write(socket, Message({}, Line(NoticeColour, "The town is full. Please try again later."), {}));
    socket->disconnectFromHost();
}

void Server::Welcome(QTcpSocket* socket) {
    const int id = ++lastId;
    Connection& connection = connections[id];
    connection.socket = socket;
    connection.negotiation = Opening(connection.telnet);
    Player& player = world.players[id];
    player.id = id;
    Greet(player);
    socket->setReadBufferSize(kReceiveBuffer);
    socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSendBuffer);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QObject::connect(socket, &QTcpSocket::readyRead, &listener, [this] { turnTimer.start(); });
    QObject::connect(socket, &QTcpSocket::disconnected, &listener, [this, id] {
        connections.at(id).isLost = true;
        turnTimer.start();
    });
    turnTimer.start();
}

// Nothing in here waits or lets events run; sockets that close meanwhile only set a flag.
void Server::Turn() {
    bool isMoreToDo = false;
    for (auto& [id, connection] : connections)
        isMoreToDo |= Serve(id, connection);
    RemoveLost();
    for (auto& [id, connection] : connections)
        Send(id, connection);
    SetTimers();
    if (isMoreToDo)
        turnTimer.start();
}

// True when the player has sent more than one turn carries out.
bool Server::Serve(int id, Connection& connection) {
    Player& player = world.players.at(id);
    if (connection.lines.empty() && connection.socket->bytesAvailable() > 0)
        Receive(player, connection);
    for (int count = 0; count < MaxLinesATurn && !connection.lines.empty(); ++count) {
        const std::string line = std::move(connection.lines.front());
        connection.lines.pop_front();
        HandleLine(world, player, line);
    }
    return !connection.lines.empty() || connection.socket->bytesAvailable() > 0;
}

void Server::Receive(Player& player, Connection& connection) {
    const QByteArray bytes = connection.socket->read(MaxRead);
    TelnetInput input =
        Decode(connection.telnet, {bytes.data(), static_cast<std::size_t>(bytes.size())});
    std::ranges::move(input.lines, std::back_inserter(connection.lines));
    connection.negotiation += input.replies;
    player.terminal = connection.telnet.terminal;
    player.width = WidthFor(connection.telnet.columns);
}

// One who is lost goes when everything received before has been carried out.
void Server::RemoveLost() {
    for (auto each = connections.begin(); each != connections.end();) {
        const auto& [id, connection] = *each;
        if (!connection.isLost || !connection.lines.empty() ||
            connection.socket->bytesAvailable() > 0) {
            ++each;
            continue;
        }
        Player& player = world.players.at(id);
        if (player.stage == Stage::Playing)
            Leave(world, player, "fades from sight.");
        connection.socket->deleteLater();
        world.players.erase(id);
        each = connections.erase(each);
    }
}

void Server::Send(int id, Connection& connection) {
    Player& player = world.players.at(id);
    const std::string negotiation = std::exchange(connection.negotiation, {}) +
                                    HideTyping(connection.telnet, player.stage == Stage::Password);
    const std::string lines = WithoutMistakableWaves(std::exchange(player.lines, {}));
    const bool wantsPrompt = std::exchange(player.wantsPrompt, false) || !lines.empty();
    const std::string prompt = wantsPrompt ? PromptOf(player) : std::string{};
    const bool isEmpty = negotiation.empty() && lines.empty() && prompt.empty();
    if (isEmpty || connection.isLost || connection.isLeaving)
        return;
    Write(connection.socket, Message(negotiation, lines, prompt));
    if (connection.socket->bytesToWrite() > MaxQueue) {
        connection.isLost = true;
        connection.socket->abort();
        turnTimer.start();
    } else if (player.stage == Stage::Gone) {
        connection.isLeaving = true;
        connection.socket->disconnectFromHost();
    }
}

void Server::SetTimers() {
    SetRunning(fightTimer, AnyoneFights(world));
    SetRunning(beatTimer, AnyonePlays(world));
}

} // namespace world
