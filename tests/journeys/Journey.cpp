#include "Journey.h"

#include "Files.h"
#include "Tour.h"
#include "Wait.h"

#include <ostream>

#include <QDir>
#include <QFile>

namespace journey {
namespace {

using namespace std::string_literals;
using namespace std::chrono_literals;

// Ends whatever a server may have left open: a command, a sequence, a line.
const std::string kEnding = "\0\0\0\0m\x1b[0;37m\r\nIt is quiet.\r\n"s;
const std::string kTerminalQuestion = "\xff\xfa\x18\x01\xff\xf0\r"s;
const std::string kTerminal = "\xff\xfa\0DEC-VT100\xff\xf0"s;

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

void Journey::Exit() {
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
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

void ServerJourney::OpenAndCloseAWindow() const {
    Player.Press({"alt+h", "Up", "Return"});
    Player.TakeKeys("^About$");
    Player.Press("Return");
    Player.WaitToClose("^About$");
    Player.TakeKeys(Client::kFrame);
}

void WireJourney::ConnectByWire() {
    Connect();
    Way = std::make_unique<Wire>(Server.HandOver());
    Toolbar = FindToolbar(Screen.Look());
}

void WireJourney::Push(ToolbarPlace place) const {
    const Area& control = Toolbar.at(place);
    Screen.Click((control.Left + control.Right) / 2, (control.Top + control.Bottom) / 2);
}

// A click on a button that can't be used does nothing. What the client answers shows that it, too,
// takes itself for connected.
void WireJourney::ConnectAgain() {
    WaitFor("the client to connect again", [this] {
        Push(ConnectButton);
        return Becomes([this] { return Server.HasPlayerWaiting(); }, 50ms);
    });
    Server.WaitForPlayer();
    Way = std::make_unique<Wire>(Server.HandOver());
    LetRead();
}

void WireJourney::WaitForTheEndOfTheConnection() const {
    WaitFor("the client to end the connection", [this] { return !Way->IsOpen(); });
}

// The end of an arrival may have cut the question, so it is asked until it is answered.
void WireJourney::LetRead() {
    Way->ListenFor(kTerminal);
    WaitFor("the client to have read everything", [this] {
        Way->Send(kEnding + kTerminalQuestion);
        return Way->HasHeard(1s);
    });
}

double WireJourney::TypeALine() {
    const QString line = "n" + QString::number(++Lines);
    QStringList keys = line.split("", Qt::SkipEmptyParts);
    keys += "Return";
    Way->ListenFor(line.toStdString() + '\r');
    const auto start = Wire::Clock::now();
    Player.Press(keys);
    const auto heard = Way->Heard("the line that was typed");
    return std::chrono::duration<double, std::milli>(heard - start).count();
}

QStringList WireJourney::BoxesLeft() const {
    return Player.Windows("^(Error|Quillmere Mud Client)$");
}

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
