// The newcomer's first visit, from the first start to good-bye: by the toolbar, and without it by
// the Mud menu. The tour begins with both.
#include "Files.h"
#include "Journey.h"
#include "Tour.h"
#include "Wait.h"

#include <utility>

namespace journey {
namespace {

struct Way {
    const char* Chapter;
    bool HasToolbar;
    const char* InTheWorld;
};

class FirstVisit : public WorldJourney {
protected:
    FirstVisit() { PutTownInTheList(); }

    void StartForTheFirstTime() {
        Player.Launch();
        Player.WaitForSplash();
        WaitFor("the configuration of a first start",
                [this] { return !FileText(Player.Home + "/Data/client.cfg").empty(); });
        Moment("splash", "The start. Behind the splash the client reads its files and asks the "
                         "web site whether there is a newer version.");
        Player.WaitForFrame();
        WaitFor("the toolbar", [this] { return Player.HasToolbar(); });
    }

    void ConnectByTheToolbar() {
        Moment("toolbar", "The client at its first start: menus and toolbar above, the game's text "
                          "in the middle, the command line below.");
        Player.ClickToolbar(Chooser);
        WaitFor("the list", [this] { return Player.HasList(); });
        Moment("chooser", "The chooser of the games. Quillmere is built in; New adds another.");
        Player.ChooseFromList({"Return"});
        Player.ClickToolbar(ConnectButton);
    }

    void ConnectByTheMudMenu() {
        Player.ToggleToolbar();
        Moment("no-toolbar", "Configuration, Enable Toolbar has taken the toolbar away. The menu "
                             "Mud is there instead.");
        Player.Press("alt+m");
        WaitFor("the list", [this] { return Player.HasList(); });
        Moment("mud-menu", "The menu Mud does what the toolbar does, and it is all in reach of "
                           "the keyboard.");
        Player.ChooseFromList({"c"});
    }

    void CreateACharacter(const Way& way) {
        Player.WaitToSee("Attempting connection to: Quillmere");
        LogIn(Player, "Ada");
        EXPECT_TRUE(Player.HasStatus());
        Moment("world", way.InTheWorld);
    }

    void WalkByTheKeypad() {
        for (const auto& [key, room] : {std::pair{'8', "North Gate"},
                                        {'-', "Gatehouse Roof"},
                                        {'+', "North Gate"},
                                        {'6', "Windmill Rise"},
                                        {'2', "Paper Market"},
                                        {'3', "Ferry Stage"},
                                        {'7', "Paper Market"},
                                        {'4', "Goose Green"},
                                        {'9', "Windmill Rise"},
                                        {'1', "Goose Green"},
                                        {'5', "Goose Green"}})
            Walk(Player, key, room);
        Moment("walk", "A walk by the keypad: the digits are the points of the compass, plus and "
                       "minus go down and up, 5 looks around.");
    }

    void Fight() {
        Player.Enter("s;d");
        Player.WaitToSee("Archive Cellar");
        Player.WaitToSee("A brown rat sits on a ledger");
        Player.Enter("kill rat");
        Player.WaitToSee("You go for the brown rat!");
        Player.WaitToSee("You have beaten the brown rat!");
        Moment("fight", "Two commands in one line, with a semicolon between them, led to the "
                        "cellar. The fight goes on by itself, round by round.");
    }

    void QuitAndClose() {
        Player.Enter("quit");
        Player.WaitToSee("Good-bye, Ada.");
        Player.WaitToSee("Connection Closed");
        EXPECT_FALSE(Player.HasStatus());
        Moment("quit", "The world has said good-bye and closed the connection.");
        Player.ExitByMenu();
        Player.WaitForSplash();
        Moment("saving", "File, Exit. Behind the splash the client saves what was changed.");
        EXPECT_EQ(Player.WaitForEnd(), 0);
    }

    void Play(const Way& way) {
        BeginChapter(way.Chapter);
        StartForTheFirstTime();
        if (way.HasToolbar)
            ConnectByTheToolbar();
        else
            ConnectByTheMudMenu();
        CreateACharacter(way);
        EXPECT_EQ(Player.HasToolbar(), way.HasToolbar);
        WalkByTheKeypad();
        Fight();
        QuitAndClose();
    }
};

TEST_F(FirstVisit, GoesByTheToolbar) {
    Play({"A first visit", true, "A name, a password, and Ada stands in the world."});
}

TEST_F(FirstVisit, GoesByTheMudMenuWithoutTheToolbar) {
    Play({"The same without the toolbar", false,
          "In the world again. The output has the toolbar's room too."});
}

} // namespace
} // namespace journey
