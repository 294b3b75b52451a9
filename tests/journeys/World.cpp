#include "World.h"

#include "Wait.h"

#include <stdexcept>

namespace journey {
namespace {

constexpr const char* kPrompt = "] >";
constexpr const char* kRoundMs = "100"; // so that no fight takes long

} // namespace

World::World(const QString& clientVersion) {
    Process.setStandardErrorFile(QProcess::nullDevice());
    StartChild(Process, qEnvironmentVariable("QUILLMERE_WORLD_PROGRAM", WORLD_PROGRAM),
               {"--port", "0", "--round", kRoundMs, "--http-port", "0", "--client-version",
                clientVersion, "--players", Folder.filePath("players.json")});
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

void LogIn(Client& player, const QString& name, const char* answer) {
    player.WaitToSee("By what name are you known?");
    player.Enter(name.toLower());
    player.WaitToSee(answer);
    player.Enter("goose7");
    player.WaitToSee("Welcome to Quillmere, " + name.toStdString() + '.');
    player.WaitToSee(kPrompt);
}

void Walk(Client& player, char key, const char* room) {
    player.Keypad(key);
    player.WaitToSee(room);
    player.WaitToSee(kPrompt);
}

} // namespace journey
