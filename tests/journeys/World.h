// The demo world, running for one journey on a port of its own, or for the tour.
#pragma once

#include <QProcess>
#include <QString>

namespace journey {

struct WorldOptions {
    int RoundMs = 100;
    int Port = 0; // 0: any free one below 32768
    QString ClientVersion = "1";
};

struct World {
    // Throws when the port is taken.
    explicit World(const WorldOptions& options = {});
    ~World();

    QString Address; // "127.0.0.1:20000"
    QString WebRoot; // "http://127.0.0.1:20001"
    QProcess Process;
};

} // namespace journey
