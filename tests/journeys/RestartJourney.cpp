// Stop and start: what of the way of playing is kept, and what is forgotten. The window's place,
// the games, macros, colours and the font are in journeys of their own.
#include "Files.h"
#include "Journey.h"

namespace journey {
namespace {

class Restart : public ServerJourney {
protected:
    void ConnectWithoutToolbar() {
        Player.Launch({"--connect", Server.Address()});
        Player.WaitForFrame();
        Server.WaitForPlayer();
    }
};

TEST_F(Restart, KeepsTheTogglesAndForgetsEchoAndHistoryOnPurpose) {
    Connect();
    Player.Enter("look");
    Player.Press("Return");
    Server.Expect("look\r\r");
    Player.ChooseFromMenu("alt+c", {"k"});
    Player.ChooseFromMenu("alt+c", {"e", "Return"}); // two have the key; it goes to the first
    Player.ToggleToolbar();
    Player.Enter("dance");
    Player.Press("Return");
    Server.Expect("dance\rdance\r");
    Player.WaitToSee("dance");
    Moment("1-toggled");
    Exit();
    EXPECT_NE(FileText(Player.SettingsFile()).find("\"Echo\""), std::string::npos);

    ConnectWithoutToolbar();
    EXPECT_TRUE(FindToolbar(Screen.Look()).empty());
    Player.Press({"Up", "Return"});
    Server.Expect("\r"); // nothing is remembered
    Player.Enter("sing");
    Player.Press("Return");
    Server.Expect("sing\rsing\r");
    SendText("The hall is silent.");
    Player.WaitToSee("The hall is silent.");
    EXPECT_EQ(Player.Shown().find("sing"), std::string::npos);
    Player.ToggleToolbar();
    Moment("2-toolbar-again");
    Exit();

    Player.Start(); // with the toolbar
}

} // namespace
} // namespace journey
