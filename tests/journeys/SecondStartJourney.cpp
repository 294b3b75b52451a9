// Two clients with one folder: the second one plays and changes nothing.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <csignal>

#include <QDir>
#include <QFile>

namespace journey {
namespace {

class SecondStart : public ServerJourney {
protected:
    SecondStart() { Second.Home = Player.Home; }

    Client Second{Screen};
};

TEST_F(SecondStart, IsToldPlaysAndChangesNothing) {
    Player.Start();
    // A start that may write would delete the first file and make the second one anew.
    PutFile(Player.Home + "/client.cfg", "stale");
    QFile::remove(Player.Home + "/Data/client.cfg");
    const FileTexts before = FilesBelow(Player.Home);

    Second.Launch({"--connect", Server.Address()});
    WaitFor("the box of the second", [this] { return !Second.Boxes().isEmpty(); });
    Moment("1-told");
    EXPECT_FALSE(Second.ShowsSplash());
    Second.AnswerBox();
    Second.WaitForFrame();
    Server.WaitForPlayer();
    Second.Enter("look");
    Server.Expect("look\r");
    SendText("\r\nA second pair of eyes.");
    Second.WaitToSee("A second pair of eyes.");
    Moment("2-plays");
    Second.ExitByMenu();
    EXPECT_EQ(Second.WaitForEnd(), 0);
    EXPECT_EQ(FilesBelow(Player.Home), before);
    EXPECT_FALSE(QDir(Player.Home + "/127.0.0.1").exists()) << "a game's folder was made";

    Player.TakeKeys(Client::kFrame);
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_TRUE(QFile::exists(Player.Home + "/Data/client.cfg")) << "the first saved nothing";
}

TEST_F(SecondStart, AfterAKillIsAnOrdinaryOne) {
    Player.Start();
    Player.Process.kill();
    EXPECT_EQ(Player.WaitForEnd(), -SIGKILL);
    QFile::remove(Player.Home + "/Data/client.cfg");
    Second.Start(); // a box would hold it up
    EXPECT_TRUE(Second.Boxes().isEmpty());
    Second.ExitByMenu();
    EXPECT_EQ(Second.WaitForEnd(), 0);
    EXPECT_TRUE(QFile::exists(Player.Home + "/Data/client.cfg"));
}

TEST_F(SecondStart, InAFolderOfItsOwnIsAnOrdinaryOne) {
    Player.Start();
    Second.Home = Second.Folder.filePath("home");
    Second.Start();
    EXPECT_TRUE(Second.Boxes().isEmpty());
}

} // namespace
} // namespace journey
