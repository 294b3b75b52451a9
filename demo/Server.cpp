#include "Server.h"

#include "Commands.h"
#include "Life.h"
#include "Login.h"
#include "Ports.h"
#include "Shows.h"
#include "Sounds.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <sys/file.h>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QTcpSocket>

namespace world {
namespace {

constexpr int kReceiveBuffer = 4096;
constexpr int kSendBuffer = 64 * 1024;        // the system's own share, kept small beside MaxQueue
constexpr std::chrono::seconds kSaveDelay{1}; // what changes meanwhile shares one write

// A neighbour of the book, which is itself replaced by each write. The system gives the lock back
// when the file is closed or the program is gone, so the file can stay. Where there can be none, no
// book can be written either.
void Lock(QFile& lock, const std::string& book) {
    lock.setFileName(QString::fromStdString(book + ".lock"));
    QDir().mkpath(QFileInfo(lock).path());
    if (lock.open(QFile::WriteOnly, QFile::ReadOwner | QFile::WriteOwner) &&
        ::flock(lock.handle(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        throw std::runtime_error("another world keeps its players there");
}

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

// What the player is to read now. While a flood runs there is no prompt, and no more text than the
// client keeps up with.
Outgoing Compose(const World& world, Player& player, bool hasRoom) {
    Outgoing outgoing;
    outgoing.negotiation = HideTyping(player.telnet, player.stage == Stage::Password);
    if (player.flood > 0 && hasRoom)
        player.lines += TakeFlood(*world.town, player);
    outgoing.lines = WithoutMistakableWaves(std::exchange(player.lines, {}));
    const bool wantsPrompt = std::exchange(player.wantsPrompt, false) || !outgoing.lines.empty();
    if (player.probe == ProbeState::Wanted && player.flood == 0) {
        player.probe = ProbeState::Sent;
        outgoing.probe = Probe;
    } else if (wantsPrompt && player.flood == 0) {
        outgoing.prompt = PromptOf(player);
    }
    return outgoing;
}

} // namespace

Server::Server(const Settings& chosen) : settings(chosen) {
    world.roll = settings.roll;
    if (!settings.book.empty()) {
        Lock(lock, settings.book);
        world.book = LoadBook(settings.book);
    }
    Populate(world, Quillmere());
    listener.setListenBacklogSize(static_cast<int>(MaxClients)); // who may all come at once
    turnTimer.setSingleShot(true);
    saveTimer.setSingleShot(true);
    saveTimer.setInterval(kSaveDelay);
    fightTimer.setInterval(settings.round);
    beatTimer.setInterval(settings.beat);
    paceTimer.setInterval(settings.pace);
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [this] { Accept(); });
    QObject::connect(&turnTimer, &QTimer::timeout, &listener, [this] { Turn(); });
    QObject::connect(&saveTimer, &QTimer::timeout, &listener, [this] { SaveChangedBook(); });
    QObject::connect(&fightTimer, &QTimer::timeout, &listener, [this] {
        Round(world);
        turnTimer.start();
    });
    QObject::connect(&beatTimer, &QTimer::timeout, &listener, [this] {
        Beat(world);
        turnTimer.start();
    });
    QObject::connect(&paceTimer, &QTimer::timeout, &listener, [this] { StepOn(); });
}

bool Server::Listen() { return ListenAt(listener, settings.port); }

int Server::Port() const { return listener.serverPort(); }

void Server::OfferSoundsAt(int httpPort) {
    world.soundRoot = "http://127.0.0.1:" + std::to_string(httpPort) + std::string(SoundPath);
}

bool Server::FightTimerRuns() const { return fightTimer.isActive(); }

bool Server::BeatTimerRuns() const { return beatTimer.isActive(); }

bool Server::PaceTimerRuns() const { return paceTimer.isActive(); }

void Server::Close() {
    listener.close();
    for (auto& [id, connection] : connections) {
        Player& player = world.players.at(id);
        player.flood = 0;
        if (player.stage == Stage::Playing)
            Remember(world, player);
        if (player.stage != Stage::Gone)
            Tell(player, NoticeColour, "The world is rolled up for the night. Come back soon.");
        player.stage = Stage::Gone;
        Send(id, connection);
    }
    SaveChangedBook();
}

void Server::SaveChangedBook() {
    if (!world.isBookChanged || settings.book.empty())
        return;
    world.isBookChanged = !SaveBook(settings.book, world.book);
    if (world.isBookChanged)
        std::cerr << "The players can't be written to " << settings.book << '\n';
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
    Outgoing outgoing;
    outgoing.lines = Line(NoticeColour, "The town is full. Please try again later.");
    Write(socket, Message(outgoing));
    socket->disconnectFromHost();
}

void Server::Welcome(QTcpSocket* socket) {
    const int id = ++lastId;
    Connection& connection = connections[id];
    connection.socket = socket;
    Player& player = world.players[id];
    player.id = id;
    connection.negotiation = Opening(player.telnet);
    Greet(world, player);
    socket->setReadBufferSize(kReceiveBuffer);
    socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSendBuffer);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QObject::connect(socket, &QTcpSocket::readyRead, &listener, [this] { turnTimer.start(); });
    QObject::connect(socket, &QTcpSocket::bytesWritten, &listener, [this, id] {
        const auto reader = world.players.find(id);
        if (reader != world.players.end() && reader->second.flood > 0)
            turnTimer.start();
    });
    QObject::connect(socket, &QTcpSocket::disconnected, &listener, [this, id] {
        connections.at(id).isLost = true;
        turnTimer.start();
    });
    turnTimer.start();
}

// Nothing in here waits or lets events run; sockets that close meanwhile only set a flag.
void Server::Turn() {
    bool isMoreToDo = false;
    passwordsLeft = MaxPasswordsATurn;
    for (auto& [id, connection] : connections)
        isMoreToDo |= Serve(id, connection);
    RemoveLost();
    for (auto& [id, connection] : connections)
        Send(id, connection);
    SetTimers();
    if (isMoreToDo)
        turnTimer.start();
}

// What one says is sent to many: without the pace, one who talks on and on could fill the queues of
// all who hear it, and they would be dropped.
void Server::StepOn() {
    for (auto& [id, connection] : connections)
        connection.linesLeft = std::min(connection.linesLeft + MaxLinesATurn, MaxLinesAhead);
    turnTimer.start();
}

// True when the player has sent more than one turn carries out, and need not wait for the pace.
bool Server::Serve(int id, Connection& connection) {
    Player& player = world.players.at(id);
    if (connection.lines.empty() && connection.socket->bytesAvailable() > 0)
        Receive(player, connection);
    const int most = std::min(MaxLinesATurn, connection.linesLeft);
    for (int count = 0; count < most && !connection.lines.empty(); ++count) {
        if (IsPasswordTry(player, connection.lines.front()) && !TakesPasswordOf(id))
            break;
        const std::string line = std::move(connection.lines.front());
        connection.lines.pop_front();
        --connection.linesLeft;
        HandleLine(world, player, line);
    }
    return connection.linesLeft > 0 &&
           (!connection.lines.empty() || connection.socket->bytesAvailable() > 0);
}

// True when it is heard now. Else the player waits in the queue, and behind all others there with
// the next one.
bool Server::TakesPasswordOf(int id) {
    if (std::ranges::find(passwordQueue, id) == passwordQueue.end())
        passwordQueue.push_back(id);
    if (passwordsLeft == 0 || passwordQueue.front() != id)
        return false;
    --passwordsLeft;
    passwordQueue.pop_front();
    return true;
}

void Server::Receive(Player& player, Connection& connection) {
    const QByteArray bytes = connection.socket->read(MaxRead);
    TelnetInput input =
        Decode(player.telnet, {bytes.data(), static_cast<std::size_t>(bytes.size())});
    std::ranges::move(input.lines, std::back_inserter(connection.lines));
    connection.negotiation += input.replies;
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
    const bool hasRoom = connection.socket->bytesToWrite() < static_cast<std::int64_t>(FloodPiece);
    Outgoing outgoing = Compose(world, player, hasRoom);
    outgoing.negotiation.insert(0, std::exchange(connection.negotiation, {}));
    outgoing.afterPrompt = connection.atPrompt;
    if (IsEmpty(outgoing) || connection.isLost || connection.isLeaving)
        return;
    Write(connection.socket, Message(outgoing));
    if (!outgoing.lines.empty() || !outgoing.prompt.empty())
        connection.atPrompt = !outgoing.prompt.empty();
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
    SetRunning(paceTimer, std::ranges::any_of(connections, [](const auto& entry) {
                   return entry.second.linesLeft < MaxLinesAhead;
               }));
    if (world.isBookChanged && !saveTimer.isActive())
        saveTimer.start();
}

} // namespace world
