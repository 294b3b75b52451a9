// Entry of the client: command line, application folder, main frame.
#include "app/MainFrame.h"
#include "app/StartUp.h"
#include "app/frmMain.h"
#include "base/Numbers.h"
#include "config/FileHandler.h"
#include "config/MudList.h"
#include "net/Connection.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/StopSignals.h"
#include "ui/qt/Text.h"

#include <algorithm>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>

namespace {

// The folder given with --home, else the program's own when it holds "Data" (portable use), else
// the per-user data folder.
QString ChooseApplicationFolder(const QString& home) {
    if (!home.isEmpty())
        return QDir(home).absolutePath();
    QString own = QCoreApplication::applicationDirPath();
    if (QDir(own).exists("Data"))
        return own;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/quillmere";
}

// Index in the mud list of the game called name, or of the entry for HOST:PORT, which is added when
// it is not there. -1 when name is neither.
int FindOrAddMud(const std::string& name) {
    const auto indexOf = [](const auto& wanted) {
        const auto found = std::find_if(mw::MudList.begin(), mw::MudList.end(), wanted);
        return found == mw::MudList.end() ? -1 : static_cast<int>(found - mw::MudList.begin());
    };
    const int named = indexOf([&name](const mw::MudEntry& mud) { return mud.Name == name; });
    if (named >= 0)
        return named;
    const std::size_t colon = name.rfind(':');
    if (colon == std::string::npos || colon == 0 || !mw::IsNumeric(name.substr(colon + 1)))
        return -1;
    mw::MudEntry mud;
    mud.Name = mud.Address = name.substr(0, colon);
    mud.Port = mw::ToInt16(name.substr(colon + 1));
    const int same = indexOf([&mud](const mw::MudEntry& other) {
        return other.Address == mud.Address && other.Port == mud.Port;
    });
    if (same >= 0)
        return same;
    mw::MudList.push_back(mud);
    return static_cast<int>(mw::MudList.size()) - 1;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName("quillmere");
    QCoreApplication::setApplicationVersion(QStringLiteral("%1.%2.%3")
                                                .arg(mw::kMajorVersion)
                                                .arg(mw::kMinorVersion)
                                                .arg(mw::kRevision));
    QCommandLineParser parser;
    parser.setApplicationDescription("A client for text-based multi-user dungeon games.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption home("home", "Keep everything below <DIR>.", "DIR");
    const QCommandLineOption connectTo(
        "connect", "Connect at once to a game of the list, or to <HOST:PORT>.", "NAME|HOST:PORT");
    parser.addOptions({home, connectTo});
    parser.process(app);

    const QString folder = ChooseApplicationFolder(parser.value(home));
    QDir().mkpath(folder);
    mw::ApplicationFolder = folder.toStdU16String();
    int game = 0;
    const bool loaded = mw::RunAtStart([&] {
        mw::PrepareFolders();
        mw::RunAllStages();
        if (parser.isSet(connectTo))
            game = FindOrAddMud(mw::FromQString(parser.value(connectTo)));
    });
    if (!loaded)
        return 1;
    if (game < 0) {
        qCritical("There is no game of that name, and it is not HOST:PORT.");
        return 2;
    }
    mw::CurrentMud = static_cast<std::int16_t>(game);

    mw::frmMain frame;
    mw::OnStopSignal(&frame, [] { QCoreApplication::quit(); });
    frame.show();
    if (parser.isSet(connectTo))
        QTimer::singleShot(0, &frame, [] { mw::RunHandler("ConnectToMud", mw::ConnectToMud); });
    const int status = QApplication::exec();
    if (status == 0) {
        mw::SavingMode = true;
        mw::RunAllStages();
    }
    return status;
}
