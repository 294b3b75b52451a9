// The TCP socket to the game, with the states and events that the connection manager expects.
//
// frmOutput owns the one instance and turns its signals into handler calls. No signal is ever sent
// from inside a call, and none belongs to a connection that has been closed since.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <QByteArray>
#include <QObject>
#include <QTcpSocket>

namespace mw {

class GameSocket : public QObject {
    Q_OBJECT

public:
    // More than this waiting to be sent means that the server does not read.
    static constexpr qint64 kLongestSendQueue = qint64{1024} * 1024;
    // What is read ahead of the client; a faster server waits. A key that is pressed waits for as
    // much at most.
    static constexpr qint64 kReadBuffer = qint64{64} * 1024;
    static constexpr qint64 kLongestArrival = 32767;

    explicit GameSocket(QObject* parent = nullptr);
    ~GameSocket() override;

    // A SocketState (ui/Socket.h).
    std::int16_t State() const;

    // Starts to connect. Raises 40020 unless the state is closed.
    void Connect(const std::string& host, std::int16_t port);

    // Closes at once and drops every event that is under way.
    void Close();

    // Queues bytes, and sends them at once when they end a line; drops them unless connected.
    void Send(std::string_view bytes);

    // What has arrived, at most kLongestArrival bytes.
    std::string GetData();

signals:
    void connected();
    void dataArrival();
    void closed();
    void error(int number, const QString& description);

private:
    void Later(const std::function<void()>& event);
    void OnConnected();
    void OnReadyRead();
    void OnEnded();
    void OnError(QAbstractSocket::SocketError code);
    void Fail(int number, const QString& description);
    void SaveRest();
    void SendLines();
    int TcpState() const; // as the system counts them; 0 when it does not tell
    bool IsOpen() const;  // neither end has closed
    bool WasReset() const;

    std::unique_ptr<QTcpSocket> Tcp;
    std::uint64_t Generation = 0; // of the connection that events may come from
    int Watch = -1;               // second descriptor of the connection, see WasReset
    bool Failed = false;          // an error was reported and Close not called since
    bool PeerClosed = false;      // the same for the server's close
    bool Broken = false;          // that close was a reset
    bool Draining = false;        // dataArrival is being sent
    bool EndWaits = false;        // the server closed meanwhile
    bool LineWaits = false;       // written and not sent
    QByteArray Rest;              // received before the connection ended, not handed over yet
};

} // namespace mw
