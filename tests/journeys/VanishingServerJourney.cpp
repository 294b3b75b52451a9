// Servers go away in every way there is. The client says so, stays alive and connects again.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <string>

namespace journey {
namespace {

class VanishingServer : public ServerJourney {
protected:
    void ExpectToBeDisconnected() {
        Player.WaitToSee("\n\nConnection Closed");
        WaitFor("the connect button to be usable", [this] { return Player.CanUse(ConnectButton); });
        EXPECT_FALSE(Player.CanUse(DisconnectButton));
    }

    void ExpectANewConnectionToWork(const std::string& game = "127.0.0.1") {
        Player.ClickToolbar(ConnectButton);
        Server.WaitForPlayer();
        Player.WaitToSee("Attempting connection to: " + game);
        SendText("\r\nWelcome back.");
        Player.WaitToSee("Welcome back.");
        Player.Enter("look");
        Server.Expect("look\r");
        EXPECT_TRUE(Player.CanUse(DisconnectButton));
        EXPECT_FALSE(Player.CanUse(ConnectButton));
        Moment("3-connected-again");
    }
};

TEST_F(VanishingServer, Closes) {
    Connect();
    SendText("Night falls.");
    Player.WaitToSee("Night falls.");
    Server.Close();
    ExpectToBeDisconnected();
    Moment("1-closed");
    EXPECT_FALSE(Player.HasStatus());
    Player.Enter("look");
    Moment("2-told-to-connect");
    Player.AnswerBox();
    ExpectANewConnectionToWork();
}

TEST_F(VanishingServer, ClosesRightBehindItsLastWords) {
    Connect();
    SendText("The end.");
    Server.Close();
    ExpectToBeDisconnected();
    EXPECT_EQ(Player.Shown(), "\nAttempting connection to: 127.0.0.1The end.\n\nConnection Closed");
}

TEST_F(VanishingServer, ResetsTheConnection) {
    Connect();
    SendText("Thunder.");
    Player.WaitToSee("Thunder.");
    Server.Reset();
    ExpectToBeDisconnected();
    Moment("1-reset");
    EXPECT_TRUE(Player.HasStatus());
    ExpectANewConnectionToWork();
}

TEST_F(VanishingServer, StallsInMidText) {
    Connect();
    SendText("The bridge sways.\r\nThen it");
    Player.WaitToSee("The bridge sways.\nThen it");
    Player.Enter("cross bridge");
    OpenAndCloseAWindow();
    Player.Enter("look");
    Player.WaitToSee("\n\n"); // one for each line sent, and no answer
    Moment("1-stalled");
    EXPECT_TRUE(Player.HasStatus());
    Player.ClickToolbar(DisconnectButton);
    Player.WaitToSee("\nConnection Closed");
    EXPECT_FALSE(Player.HasStatus());
    Server.Expect("cross bridge\rlook\r");
    Server.WaitForPlayerToLeave();
    ExpectANewConnectionToWork();
}

TEST_F(VanishingServer, RefusesTheConnection) {
    Server.StopListening();
    Player.Start({"--connect", Server.Address()});
    ExpectToBeDisconnected();
    Moment("1-refused");
    EXPECT_TRUE(Player.HasStatus());
    Server.ListenAgain();
    ExpectANewConnectionToWork();
}

TEST_F(VanishingServer, HasANameThatIsUnknown) {
    // Too long for any name, so that nobody needs to be asked for it.
    const QString host(64, 'x');
    PutFile(Player.Home + "/Data/muds.lst",
            GameList({{"Quillmere", Server.PortText().toStdString()}}));
    Player.Start({"--connect", host + ":4000"});
    ExpectToBeDisconnected();
    Moment("1-unknown");
    EXPECT_TRUE(Player.HasStatus());
    Player.ClickToolbar(ConnectButton);
    ExpectToBeDisconnected();
    Player.ClickToolbar(DeleteButton); // leaves the built-in game
    ExpectANewConnectionToWork("Quillmere");
    Exit();
}

} // namespace
} // namespace journey
