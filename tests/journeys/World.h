// The demo world, running for one journey on a port of its own, or for the tour.
#pragma once

#include <QProcess>
#include <QString>

namespace journey {

struct World {
    // Port 0: any free one below 32768. Throws when the port is taken.
    explicit World(int roundMs = 100, int port = 0);
    ~World();

    QString Address; // "127.0.0.1:20000"
    QProcess Process;
};

} // namespace journey
