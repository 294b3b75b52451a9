// The one TCP socket to the game.
//
// Its events come back as the handlers of net/Connection.h (wskTCP_Connect, wskTCP_DataArrival,
// wskTCP_Close, wskTCP_Error), never from inside one of the calls below.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

enum SocketState : std::int16_t {
    SocketClosed = 0,
    SocketOpen = 1,
    SocketListening = 2,
    SocketPending = 3,
    SocketResolving = 4,
    SocketResolved = 5,
    SocketConnecting = 6,
    SocketConnected = 7,
    SocketClosing = 8, // the server has closed, Close has not been called yet
    SocketError = 9,   // an error was reported, Close has not been called yet
};

namespace wskTCP {

// Starts to connect and returns. Raises 40020 when the socket is not closed. A port that is no TCP
// port ends in an Error event.
void Connect(const std::string& host, std::int16_t port);

// Closes at once; what was not read is gone. A closed socket stays as it is.
void Close();

// Queues the bytes for sending. Dropped unless connected. A queue over 1 MiB ends the connection
// with an Error event.
void SendData(std::string_view bytes);

// What has arrived, 32,767 bytes at most.
std::string GetData();

// A SocketState.
std::int16_t State();

} // namespace wskTCP
} // namespace mw
