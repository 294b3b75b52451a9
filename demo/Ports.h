// Where the program's servers listen: on 127.0.0.1 alone, at a port given or at any free one.
//
// Server and WebServer each hand in the listener they own. What a port that is taken means is left
// to them: the game cannot go on without its port, the pages can be done without.
#pragma once

class QTcpServer;

namespace world {

// The last port the client can store: its ports are signed 16-bit numbers.
inline constexpr int LastPort = 32767;

// Begins to listen on 127.0.0.1. Port 0 stands for any free one up to LastPort. False, with nothing
// begun, when the port is taken.
bool ListenAt(QTcpServer& listener, int port);

} // namespace world
