#include "World.h"

#include "Wait.h"

#include <stdexcept>

namespace journey {

World::World(const WorldOptions& options) {
    Process.setStandardErrorFile(QProcess::nullDevice());
    StartChild(Process, WORLD_PROGRAM,
               {"--port", QString::number(options.Port), "--round",
                QString::number(options.RoundMs), "--http-port", "0", "--client-version",
                options.ClientVersion});
    QByteArray lines;
    WaitFor("the demo world to listen and to serve", [&] {
        lines += Process.readAllStandardOutput();
        if (Process.state() == QProcess::NotRunning)
            throw std::runtime_error("The demo world ended at its start");
        return lines.count('\n') == 2;
    });
    const QStringList announced = QString::fromLatin1(lines).split('\n');
    Address = announced[0].section(' ', -1);
    WebRoot = announced[1].section(' ', -1).chopped(1); // without the slash at its end
}

World::~World() { StopChild(Process); }

} // namespace journey
