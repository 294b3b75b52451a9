// Entry of the client: command line, application folder, main frame.
#include "app/MainFrame.h"
#include "app/frmMain.h"
#include "automation/Macros.h"
#include "config/FileHandler.h"
#include "config/MudList.h"
#include "config/Palette.h"
#include "net/Connection.h"
#include "ui/FrameControls.h"
#include "ui/qt/EventBoundary.h"
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
    const QString own = QCoreApplication::applicationDirPath();
    if (QDir(own).exists("Data"))
        return own;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/quillmere";
}

// Index in the mud list of the game called name, or of a new entry for HOST:PORT. -1 when name is
// neither.
int FindOrAddMud(const std::string& name) {
    const auto named = std::find_if(mw::MudList.begin(), mw::MudList.end(),
                                    [&name](const mw::MudEntry& mud) { return mud.Name == name; });
    if (named != mw::MudList.end())
        return static_cast<int>(named - mw::MudList.begin());
    const QString text = mw::ToQString(name);
    const qsizetype colon = text.lastIndexOf(':');
    bool isNumber = false;
    const short port = text.mid(colon + 1).toShort(&isNumber);
    if (colon < 1 || !isNumber)
        return -1;
    mw::MudEntry mud;
    mud.Name = mud.Address = mw::FromQString(text.left(colon));
    mud.Port = port;
    mw::MudList.push_back(mud);
    return static_cast<int>(mw::MudList.size()) - 1;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName("quillmere");
    QGuiApplication::setApplicationDisplayName("Quillmere Mud Client");
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
    mw::Palette = mw::kDefaultPalette;

    if (parser.isSet(connectTo)) {
        const int index = FindOrAddMud(mw::FromQString(parser.value(connectTo)));
        if (index < 0) {
            qCritical("There is no game of that name, and it is not HOST:PORT.");
            return 2;
        }
        mw::CurrentMud = static_cast<std::int16_t>(index);
    }
    mw::frmMain frame;
    frame.show();
    if (parser.isSet(connectTo))
        QTimer::singleShot(0, &frame, [] { mw::RunHandler("ConnectToMud", mw::ConnectToMud); });
    return QApplication::exec();
}
