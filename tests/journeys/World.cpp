#include "World.h"

#include "Wait.h"

#include <stdexcept>

namespace journey {

World::World(int roundMs, int port) {
    Process.setStandardErrorFile(QProcess::nullDevice());
    StartChild(Process, WORLD_PROGRAM,
               {"--port", QString::number(port), "--round", QString::number(roundMs)});
    QByteArray line;
    WaitFor("the demo world to listen", [&] {
        line += Process.readAllStandardOutput();
        if (line.isEmpty() && Process.state() == QProcess::NotRunning)
            throw std::runtime_error("The demo world ended at its start");
        return line.endsWith('\n');
    });
    Address = QString::fromLatin1(line.trimmed()).section(' ', -1);
}

World::~World() { StopChild(Process); }

} // namespace journey
