// Entry of the client: command line, application folder, start and stop.
#include "app/MainFrame.h"
#include "app/StartUp.h"
#include "base/Version.h"
#include "config/FileHandler.h"
#include "ui/FrameControls.h"
#include "ui/MessageBox.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/FolderLock.h"
#include "ui/qt/StopSignals.h"
#include "ui/qt/Text.h"

#include <memory>
#include <string_view>

#ifdef __linux__
#include <malloc.h>
#endif

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QWidget>

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

// One client writes below the folder at a time; a second one plays and writes nothing there.
void TakeFolder(const QString& folder) {
    QDir().mkpath(folder);
    mw::ApplicationFolder = folder.toStdU16String();
    mw::FolderIsTaken = !mw::LockFolder(folder);
    if (mw::FolderIsTaken)
        mw::ShowMessage("The client runs already with the folder " + mw::FromQString(folder) +
                        ". You can play here too, but nothing will be saved: games, colours, "
                        "macros, triggers, aliases and sounds stay as they are.");
}

// All is saved, and the application may outlive it: it waits until the host of a game that is being
// looked up is found or not. The player sees nothing of that, and can start the client again.
void Leave() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        window->hide();
    mw::UnlockFolder();
}

// In each size that it was drawn for, so that no desktop has to scale it.
QIcon WindowIcon() {
    QIcon icon;
    for (const QString& file : QDir(":/icon").entryList())
        icon.addFile(":/icon/" + file);
    return icon;
}

bool StopIsAsked = false; // perhaps before there is an event loop to leave

// What the system asks for by a signal. A stop that is under way goes on; before the main frame is
// there nothing has to be saved.
void Stop() {
    if (mw::SavingMode)
        return;
    StopIsAsked = true;
    if (mw::FrameIsShown())
        mw::UnloadFrame();
    else
        QCoreApplication::exit(0);
}

void StopWhenAsked() {
    mw::OnStopSignal(qGuiApp, Stop);
    // The desktop's session ends: what is to be saved is saved before it goes on.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, qGuiApp, [] {
        Stop();
        mw::FinishSaving();
    });
}

// Large blocks, a sound or what a flood filled, go back to the system when they are freed. Left to
// itself the allocator would learn to keep them.
void GiveBackLargeBlocks() {
#ifdef M_MMAP_THRESHOLD
    constexpr int kLarge = 128 * 1024; // bytes
    mallopt(M_MMAP_THRESHOLD, kLarge);
#endif
}

// What the style draws is drawn anew each time. Qt's cache of it drops pictures, but never the
// names that it kept them by: some twenty kilobytes for each dialog that opens.
void KeepNoPictures() { QPixmapCache::setCacheLimit(0); }

// Help and version need no display. Behind another option they may be that option's value.
bool OnlyPrints(int argc, char** argv) {
    const std::string_view only = argc == 2 ? argv[1] : "";
    return only == "-h" || only == "--help" || only == "--help-all" || only == "-v" ||
           only == "--version";
}

std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) {
    if (OnlyPrints(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    return std::make_unique<QApplication>(argc, argv);
}

// Returns the value of --home. The game to connect to is kept for the frame.
QString ReadOptions(const QCoreApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription("A client for text-based multi-user dungeon games.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption home("home", "Keep everything below <DIR>.", "DIR");
    const QCommandLineOption connectTo(
        "connect", "Connect at once to a game of the list, or to <HOST:PORT>.", "NAME|HOST:PORT");
    parser.addOptions({home, connectTo});
    parser.process(app);
    mw::ConnectAtStart = mw::FromQString(parser.value(connectTo));
    return parser.value(home);
}

} // namespace

int main(int argc, char* argv[]) {
    GiveBackLargeBlocks();
    const std::unique_ptr<QCoreApplication> app = MakeApplication(argc, argv);
    KeepNoPictures(); // heard only now that there is an application
    QCoreApplication::setApplicationName("quillmere");
    QCoreApplication::setApplicationVersion(
        QString::fromStdString(mw::DottedVersion(mw::kOwnVersion)));
    const QString home = ReadOptions(*app);

    QApplication::setWindowIcon(WindowIcon());
    QGuiApplication::setDesktopFileName("quillmere"); // by which others find the icon
    QApplication::setQuitOnLastWindowClosed(false);   // the splash comes and goes
    StopWhenAsked();
    TakeFolder(ChooseApplicationFolder(home));
    if (StopIsAsked) // while the box was open
        return 0;
    if (!mw::RunAtStart(mw::StartProgram))
        return 1;
    const int status = QApplication::exec();
    mw::FinishSaving();
    Leave();
    return status;
}
