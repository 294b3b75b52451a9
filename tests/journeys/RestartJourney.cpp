// What a restart keeps, and what it forgets.
#include "Files.h"
#include "Journey.h"

namespace journey {
namespace {

class Restart : public ServerJourney {
protected:
    void Stop() {
        Player.ExitByMenu();
        ASSERT_EQ(Player.WaitForEnd(), 0);
    }
};

TEST_F(Restart, KeepsTheToggleOfTheSentText) {
    Connect();
    Player.Enter("look");
    Player.Press("Return");
    Server.Expect("look\r\r");
    Player.Press({"alt+c", "k"});
    Player.Enter("dance");
    Player.Press("Return");
    Server.Expect("dance\rdance\r");
    Stop();
    Connect();
    Player.Enter("sing");
    Player.Press("Return");
    Server.Expect("sing\rsing\r");
}

TEST_F(Restart, ForgetsTheEchoOnPurpose) {
    Connect();
    Player.Press({"alt+c", "e", "Return"}); // two items have the key; it goes to the first
    Player.Enter("dance");
    Server.Expect("dance\r");
    Player.WaitToSee("dance");
    Stop();
    EXPECT_NE(FileText(Player.SettingsFile()).find("\"Echo\""), std::string::npos);
    Connect();
    Player.Enter("sing");
    Server.Expect("sing\r");
    SendText("The hall is silent.");
    Player.WaitToSee("The hall is silent.");
    EXPECT_EQ(Player.Shown().find("sing"), std::string::npos);
}

} // namespace
} // namespace journey
