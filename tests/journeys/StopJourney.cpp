// The ways in which the program ends.
#include "Journey.h"
#include "Wait.h"

#include <QFile>

namespace journey {
namespace {

class Stop : public ServerJourney {};

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
    QFile(Player.Folder.filePath("home/Data/client.cfg")).remove();
    Player.Process.terminate();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    Server.WaitForPlayerToLeave();
    EXPECT_TRUE(QFile::exists(Player.Folder.filePath("home/Data/client.cfg")))
        << "nothing was saved";
}

// The message box is over the frame, and nobody is there to answer it.
TEST_F(Stop, ByASignalWhileAMessageBoxIsOpen) {
    Player.Start();
    Player.Enter("look");
    WaitFor("the message box", [this] { return Screen.Windows(".").size() > 1; });
    Player.Process.terminate();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

} // namespace
} // namespace journey
