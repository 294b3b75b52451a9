#include "Journey.h"

#include <exception>
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
    if (!HasFailure() && !PicturesAreWanted())
        return;
    QDir().mkpath(Folder());
    Screen.Save(Folder() + "/end.png");
    if (Player.Process.state() == QProcess::Running)
        LeaveTranscript();
    Write(Folder() + "/client.log", Player.Log());
}

void Journey::LeaveTranscript() {
    try {
        Write(Folder() + "/transcript.txt", Player.Shown());
    } catch (const std::exception& error) {
        Write(Folder() + "/transcript.txt", error.what());
    }
}

void Journey::Moment(const QString& name) const {
    if (!PicturesAreWanted())
        return;
    QDir().mkpath(Folder());
    Screen.Save(Folder() + '/' + name + ".png");
}

void ServerJourney::Connect() {
    Player.Start({"--connect", Server.Address()});
    Server.WaitForPlayer();
}

void ServerJourney::SendText(std::string_view text) { Server.Send(std::string(text) + '\r'); }

} // namespace journey
