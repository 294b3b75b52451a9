// The newcomer's first visit: into the demo world, about in it, and out again.
#include "Journey.h"
#include "World.h"

#include <string>

namespace journey {
namespace {

struct Sight {
    const char* what;
    Colour colour;
};

class DemoWorld : public Journey {
protected:
    void EnterTheWorld() {
        Player.Start({"--connect", Town.Address});
        Player.WaitToSee("By what name are you known?");
        Player.Enter("ada");
        Player.WaitToSee("Choose a password");
        Player.Enter("goose7");
        Player.WaitToSee("Welcome to Quillmere, Ada.");
        Player.WaitToSee("Exits: north");
    }

    void ExpectToSeeColour(const Sight& sight) const {
        constexpr int kFewestPixels = 25;
        EXPECT_GE(CountOf(Screen.Look(), Client::Output, sight.colour), kFewestPixels)
            << sight.what;
    }

    World Town;
};

TEST_F(DemoWorld, IsEnteredWalkedFoughtInAndLeft) {
    EnterTheWorld();
    Moment("1-entered");
    Player.Enter("look");
    Player.WaitToSee("Goose Green");

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
                                    {'5', "Goose Green"}}) {
        Player.Keypad(key);
        Player.WaitToSee(room);
        Player.WaitToSee("] >");
    }
    Player.Enter("say well met, all");
    Player.WaitToSee("You say: well met, all");
    Moment("2-walked");

    Player.Enter("s;d");
    Player.WaitToSee("Archive Cellar");
    Player.WaitToSee("A brown rat sits on a ledger");
    Player.Enter("kill rat");
    Player.WaitToSee("You go for the brown rat!");
    Player.WaitToSee("You have beaten the brown rat!");
    Moment("3-fought");

    Player.Enter("quit");
    Player.WaitToSee("Good-bye, Ada.");
    Player.WaitToSee("Connection Closed");
    Moment("4-left");
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

TEST_F(DemoWorld, ShowsItsColours) {
    EnterTheWorld();
    Player.Enter("s;d");
    Player.WaitToSee("A brown rat sits");
    Moment("1-colours");
    for (const Sight& sight :
         {Sight{"a title in yellow", {255, 255, 0}}, Sight{"prose in light grey", {211, 211, 211}},
          Sight{"a notice in white", {255, 255, 255}}, Sight{"exits in cyan", {0, 140, 140}},
          Sight{"a creature in red", {255, 0, 0}}, Sight{"a prompt in green", {0, 140, 0}}})
        ExpectToSeeColour(sight);
}

TEST_F(DemoWorld, IsLeftAndEnteredAgainByTheToolbar) {
    EnterTheWorld();
    EXPECT_FALSE(Player.CanUse(ConnectButton));
    Player.ClickToolbar(DisconnectButton);
    Player.WaitToSee("Connection Closed");
    Moment("1-disconnected");
    EXPECT_FALSE(Player.CanUse(DisconnectButton));
    EXPECT_FALSE(Player.HasStatus());

    Player.ClickToolbar(ConnectButton);
    Player.WaitToSee("Attempting connection to: 127.0.0.1");
    Player.WaitToSee("By what name are you known?");
    Player.Enter("Ada");
    Player.WaitToSee("The book knows you, Ada.");
    Player.Enter("goose7");
    Player.WaitToSee("Welcome to Quillmere, Ada.");
    Moment("2-connected-again");
    EXPECT_TRUE(Player.HasStatus());
}

} // namespace
} // namespace journey
