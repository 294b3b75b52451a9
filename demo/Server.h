// The sockets of the world: who is connected, what came in, and one write a turn for each player.
//
// Socket events only note what happened. Turn, once per turn of the event loop, reads, lets the
// world act and sends, so nothing that an event does can pull a player away from under a loop.
#pragma once

#include "World.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>

#include <QFile>
#include <QTcpServer>
#include <QTimer>

class QTcpSocket;

namespace world {

inline constexpr std::size_t MaxClients = 300;
inline constexpr std::int64_t MaxQueue = 256 * 1024; // unsent bytes of one client
inline constexpr std::int64_t MaxRead = 1024;        // bytes taken from one client a turn
inline constexpr int MaxLinesATurn = 8;     // so that one who floods leaves room for others
inline constexpr int MaxLinesAhead = 64;    // of the pace, so that few of those who play notice it
inline constexpr int MaxPasswordsATurn = 1; // of all players: nobody is heard while one is hashed

struct Settings {
    int port = 1234; // 0: any free one up to LastPort (Ports.h)
    std::chrono::milliseconds round{1500};
    std::chrono::milliseconds beat{30000};
    std::function<int(int)> roll;      // chance; a number from 0 up to below its argument
    std::string book;                  // the file of the players; empty for none
    std::chrono::milliseconds pace{5}; // in it a player may have MaxLinesATurn more carried out
};

class Server {
public:
    // Reads the book, and keeps it from other worlds as long as this one is there. Throws
    // std::runtime_error when its file can't be read or is another world's.
    explicit Server(const Settings& chosen);

    // Begins to listen on 127.0.0.1. False, with nothing begun, when the port is taken.
    bool Listen();

    int Port() const;

    // From now on sounds are asked for with addresses of the web server at this port.
    void OfferSoundsAt(int httpPort);

    // The timers run only while they can change something.
    bool FightTimerRuns() const;
    bool BeatTimerRuns() const;
    bool PaceTimerRuns() const;

    // Says good-bye to everyone, hands what is unsent to the system without waiting for it to
    // arrive, and writes the book.
    void Close();

private:
    struct Connection {
        QTcpSocket* socket = nullptr;
        std::deque<std::string> lines; // received, not yet carried out
        std::string negotiation;       // to send
        int linesLeft = MaxLinesAhead; // to be carried out before the next step of the pace
        bool isLost = false;           // the other end is gone
        bool isLeaving = false;        // its good-bye is sent
        bool atPrompt = true;          // what was sent last ended with one, or nothing was sent
    };

    void Accept();
    void Refuse(QTcpSocket* socket);
    void Welcome(QTcpSocket* socket);
    void Turn();
    void StepOn();
    bool Serve(int id, Connection& connection);
    bool TakesPasswordOf(int id);
    void Receive(Player& player, Connection& connection);
    void RemoveLost();
    void Send(int id, Connection& connection);
    void SaveChangedBook();
    void SetTimers();

    Settings settings;
    QFile lock;
    World world;
    std::map<int, Connection> connections; // the ids are those of World::players
    int lastId = 0;
    std::deque<int> passwordQueue; // those whose next line is a password; they still have it
    int passwordsLeft = 0;         // this turn
    QTcpServer listener;
    QTimer turnTimer;
    QTimer fightTimer;
    QTimer beatTimer;
    QTimer paceTimer;
    QTimer saveTimer;
};

} // namespace world
