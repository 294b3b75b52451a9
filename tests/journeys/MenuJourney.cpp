// The menus: Mud instead of the toolbar, help, about, and the log that is none.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

namespace journey {
namespace {

class Menu : public ServerJourney {
protected:
    static constexpr const char* kDialog = "^Add/Delete/Change Mud$";

    void OpenDialog() {
        Player.Press({"alt+m", "a"});
        Player.TakeKeys(kDialog);
    }

    void CloseDialog() {
        Player.Press("Return"); // Done
        Player.WaitToClose(kDialog);
        Player.TakeKeys(Client::kFrame);
        Player.ClickCommandLine();
    }

    // In the dialog, whose chooser has the keys afterwards.
    void AddGame(const QString& name) {
        Player.Press("alt+a");
        Player.TakeKeys("^Add Mud$");
        Player.Type(name);
        Player.Press("Tab");
        Player.Type("127.0.0.1");
        Player.Press("Tab");
        Player.Type(Server.PortText());
        Player.Press("Return");
        Player.WaitToClose("^Add Mud$");
        Player.TakeKeys(kDialog);
        Player.Press("alt+m");
    }

    int Games() const {
        const std::string list = FileText(Player.Home + "/Data/muds.lst");
        int count = 0;
        for (std::size_t at = list.find("[Mud]"); at != std::string::npos;
             at = list.find("[Mud]", at + 1))
            ++count;
        return count;
    }
};

TEST_F(Menu, ManagesTheGamesWithoutTheToolbar) {
    Player.Start();
    Player.ToggleToolbar();
    OpenDialog();
    AddGame("First");
    AddGame("Second");
    EXPECT_EQ(Games(), 3);
    Player.Press("End"); // chooses the second
    Moment("1-chooser");
    Player.Press("alt+l");
    WaitFor("a game to be deleted", [this] { return Games() == 2; });
    Player.Press({"alt+m", "Down"});
    Moment("2-chosen");
    CloseDialog();

    Player.Press("alt+m");
    Moment("3-menu");
    Player.ChooseFromList({"c"});
    Server.WaitForPlayer();
    Player.WaitToSee("Attempting connection to: First");
    Player.Enter("look");
    Server.Expect("look\r");
    Player.ChooseFromMenu("alt+m", {"d"});
    Server.WaitForPlayerToLeave();
}

TEST_F(Menu, StartsNoLogOnPurpose) {
    Player.Start();
    const FileTexts before = FilesBelow(Player.Home);
    Player.Press("alt+f");
    Moment("1-file-menu");
    Player.Press({"Up", "Return"}); // the last item
    WaitFor("the message", [this] { return !Player.Boxes().isEmpty(); });
    Moment("2-autolog");
    Player.AnswerBox();
    EXPECT_EQ(FilesBelow(Player.Home), before);
}

TEST_F(Menu, OpensHelpAndAbout) {
    Player.Start();
    Player.Press({"alt+h", "g"});
    Player.TakeKeys("^Manual - ");
    Moment("1-help");
    Player.Press("Escape");
    Player.WaitToClose("^Manual - ");
    Player.TakeKeys(Client::kFrame);
    Player.Press({"alt+h", "Up", "Return"});
    Player.TakeKeys("^About$");
    Moment("2-about");
    Player.Press("Return");
    Player.WaitToClose("^About$");
    Player.TakeKeys(Client::kFrame);
    Exit();
}

} // namespace
} // namespace journey
