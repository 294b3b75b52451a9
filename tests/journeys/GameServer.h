// A game server that the journey plays itself: it sends the bytes it is given and checks the exact
// bytes that come back.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

namespace journey {

struct GameServer {
    // Listens on a free port below 32768.
    GameServer();

    QString Address() const;  // "127.0.0.1:20000"
    QString PortText() const; // "20000"

    bool HasPlayerWaiting() const;
    void WaitForPlayer();
    void Send(std::string_view bytes);   // as one packet
    void Expect(std::string_view bytes); // exactly these next; throws a line with both otherwise
    std::string Unread();                // what came since, and was not expected
    int HandOver(); // the connection's descriptor, for who serves it from a thread

    void WaitForPlayerToLeave();
    void Close();         // an orderly end
    void Reset();         // an end that the player's system reports as a reset
    void StopListening(); // a new connection is refused from here on
    void ListenAgain();

    std::unique_ptr<QTcpSocket> Player;

private:
    void Read();

    QTcpServer Listener;
    std::string Received;
};

} // namespace journey
