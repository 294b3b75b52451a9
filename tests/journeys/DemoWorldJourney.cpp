// The demo world in its colours, left and entered again.
#include "Journey.h"

namespace journey {
namespace {

struct Sight {
    const char* what;
    Colour colour;
};

class DemoWorld : public WorldJourney {
protected:
    void ExpectToSeeColour(const Sight& sight) const {
        constexpr int kFewestPixels = 25;
        EXPECT_GE(CountOf(Screen.Look(), Client::Output, sight.colour), kFewestPixels)
            << sight.what;
    }
};

TEST_F(DemoWorld, ShowsItsColours) {
    ComeIn();
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
    ComeIn();
    EXPECT_FALSE(Player.CanUse(ConnectButton));
    Player.ClickToolbar(DisconnectButton);
    Player.WaitToSee("Connection Closed");
    Moment("1-disconnected");
    EXPECT_FALSE(Player.CanUse(DisconnectButton));
    EXPECT_FALSE(Player.HasStatus());

    Player.ClickToolbar(ConnectButton);
    Player.WaitToSee("Attempting connection to: 127.0.0.1");
    LogIn(Player, "Ada", kKnown);
    Moment("2-connected-again");
    EXPECT_TRUE(Player.HasStatus());
}

} // namespace
} // namespace journey
