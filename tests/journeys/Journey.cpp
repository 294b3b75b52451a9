#include "Journey.h"

#include "Files.h"
#include "Tour.h"

#include <ostream>

#include <QDir>
#include <QFile>

namespace journey {
namespace {

bool PicturesAreWanted() { return qEnvironmentVariableIsSet("QUILLMERE_KEEP_PICTURES"); }

void Write(const QString& path, const std::string& text) {
    QFile file(path);
    if (file.open(QFile::WriteOnly))
        file.write(text.data(), static_cast<qint64>(text.size()));
}

// What the client shows or, when it has ended, what it showed last.
std::string TranscriptOf(const Client& client) {
    if (client.Process.state() == QProcess::Running)
        client.Copied();
    return client.LastShown();
}

} // namespace

void PrintTo(const Area& area, std::ostream* out) {
    *out << area.Left << ',' << area.Top << " to " << area.Right << ',' << area.Bottom;
}

QString Journey::Folder() const {
    const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    QString name = QStringLiteral("%1.%2").arg(test->test_suite_name(), test->name());
    return JOURNEY_FOLDER "/" + name.replace('/', '.');
}

void Journey::SetUp() { QDir(Folder()).removeRecursively(); }

void Journey::TearDown() {
    EndChapter(Player.LastShown());
    LeaveTraces("", Screen, Player);
}

void Journey::LeaveTraces(const QString& prefix, const Display& screen, Client& client) const {
    if (!HasFailure() && !PicturesAreWanted())
        return;
    QDir().mkpath(Folder());
    const QString path = Folder() + '/' + prefix;
    screen.Save(path + "end.png");
    Write(path + "transcript.txt", TranscriptOf(client));
    Write(path + "client.log", client.Log());
}

void Journey::Moment(const QString& name, const QString& caption) const {
    if (!caption.isEmpty())
        ShowInTour(Screen, name, caption);
    if (!PicturesAreWanted())
        return;
    Screen.LetSettle();
    QDir().mkpath(Folder());
    Screen.Save(Folder() + '/' + name + ".png");
}

void ServerJourney::Connect() {
    Player.Start({"--connect", Server.Address()});
    Server.WaitForPlayer();
}

void ServerJourney::SendText(std::string_view text) { Server.Send(std::string(text) + '\r'); }

void WorldJourney::PutTownInTheList() {
    Game = "Quillmere";
    const std::string port = Town.Address.section(':', -1).toStdString();
    PutFile(Player.Home + "/Data/muds.lst", GameList({{Game.toStdString(), port}}));
}

void WorldJourney::ComeIn(const char* answer) {
    Player.Start({"--connect", Game});
    LogIn(Player, "Ada", answer);
}

} // namespace journey
