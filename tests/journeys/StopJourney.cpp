// The ways in which the program ends.
#include "Editors.h"
#include "Journey.h"
#include "Wait.h"

#include <csignal>
#include <sys/types.h>

#include <QFile>

namespace journey {
namespace {

class Stop : public ServerJourney {
protected:
    // The program is told to stop; what a save makes anew is there afterwards.
    void ExpectToStopAndToSave(int signal = SIGTERM) {
        const QString saved = Player.Home + "/Data/client.cfg";
        QFile::remove(saved);
        ::kill(static_cast<pid_t>(Player.Process.processId()), signal);
        EXPECT_EQ(Player.WaitForEnd(), 0);
        EXPECT_TRUE(QFile::exists(saved)) << "nothing was saved";
    }
};

TEST_F(Stop, ByTheMenuEndsTheConnectionAndTheProgram) {
    Connect();
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    Server.WaitForPlayerToLeave();
    EXPECT_EQ(Server.Unread(), "");
}

TEST_F(Stop, ByTheMenuWithoutAConnection) {
    Player.Start();
    Moment("1-first-start");
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

TEST_F(Stop, ByASignalIsAsOrderlyAsByTheMenu) {
    Connect();
    ExpectToStopAndToSave();
    Server.WaitForPlayerToLeave();
}

TEST_F(Stop, ByTheEndOfItsTerminal) {
    Player.Start();
    ExpectToStopAndToSave(SIGHUP);
}

TEST_F(Stop, IsNotCausedByAPipeThatNobodyReads) {
    Player.Start();
    ::kill(static_cast<pid_t>(Player.Process.processId()), SIGPIPE);
    ExpectToStopAndToSave();
}

TEST_F(Stop, ByTwoSignalsSavesAllAfterTheSecond) {
    Player.Start();
    QFile::remove(Player.Home + "/Data/client.cfg");
    QFile::remove(Player.Home + "/Macros/Default.mco");
    Player.Process.terminate();
    WaitFor("the saving splash", [this] { return Player.ShowsSplash(); });
    EXPECT_FALSE(QFile::exists(Player.Home + "/Macros/Default.mco"));
    Player.Process.terminate();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_TRUE(QFile::exists(Player.Home + "/Data/client.cfg"));
    EXPECT_TRUE(QFile::exists(Player.Home + "/Macros/Default.mco"));
}

TEST_F(Stop, ByASignalWhileADialogIsOpen) {
    Player.Start();
    OpenEditor(Player, "a", kAliases);
    ExpectToStopAndToSave();
}

TEST_F(Stop, ByASignalWhileAMenuIsOpen) {
    Player.Start();
    Player.Press("alt+f");
    ExpectToStopAndToSave();
}

// The message box is over the frame, and nobody is there to answer it.
TEST_F(Stop, ByASignalWhileAMessageBoxIsOpen) {
    Player.Start();
    Player.Enter("look");
    WaitFor("the message box", [this] { return !Player.Boxes().isEmpty(); });
    ExpectToStopAndToSave();
}

// What looks the host up goes on behind the client's end.
TEST_F(Stop, WhileTheGamesHostIsLookedUpLeavesNothingInTheWay) {
    Client next{Screen};
    next.Home = Player.Home;
    Player.HoldLookups();
    Player.Start({"--connect", "held.test:4000"});
    WaitFor("the look-up", [this] { return QFile::exists(Player.HeldLookup()); });
    Player.Process.terminate();
    Player.WaitForSplash();
    WaitFor("the splash to go", [this] { return !Player.ShowsSplash(); });
    next.Launch();
    next.WaitForSplash(); // a box would come before it
    EXPECT_TRUE(QFile::remove(Player.HeldLookup())) << "the stop waited for the look-up";
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

} // namespace
} // namespace journey
