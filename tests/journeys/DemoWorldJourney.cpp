// The demo world in its colours, left and entered again.
#include "Journey.h"
#include "Wait.h"

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

TEST_F(DemoWorld, ShowsEveryColourOfTheClient) {
    ComeIn();
    Player.Enter("colours");
    Player.WaitToSee("Any other code is white");
    Player.WaitToSee("] >");
    Moment("1-colours");
    for (const Sight& sight :
         {Sight{"grey, as of 0;1;30m", {140, 140, 140}},
          Sight{"light grey, as of 0;37m", {211, 211, 211}}, Sight{"red, as of 0;31m", {140, 0, 0}},
          Sight{"bright red, as of 0;1;31m", {255, 0, 0}}, Sight{"green, as of 0;32m", {0, 140, 0}},
          Sight{"bright green, as of 0;1;32m", {0, 255, 0}},
          Sight{"orange, as of 0;33m", {255, 165, 0}},
          Sight{"yellow, as of 0;1;33m", {255, 255, 0}}, Sight{"blue, as of 0;34m", {0, 0, 160}},
          Sight{"bright blue, as of 0;1;34m", {0, 0, 255}},
          Sight{"purple, as of 0;35m", {140, 0, 140}},
          Sight{"bright purple, as of 0;1;35m", {255, 0, 255}},
          Sight{"cyan, as of 0;36m", {0, 140, 140}},
          Sight{"bright cyan, as of 0;1;36m", {0, 255, 255}},
          Sight{"white, as of 0;1;37m", {255, 255, 255}}})
        ExpectToSeeColour(sight);
    EXPECT_NE(Player.Shown().find("0;30m"), std::string::npos) << "black is there to be copied";
}

TEST_F(DemoWorld, AsksTheClientWhoItIsAndWhatItAgreedTo) {
    ComeIn();
    Player.Enter("probe");
    Player.WaitToSee("It answers: SMWCLIENT.");
    Player.WaitToSee("] >");
    Player.Enter("options");
    Player.WaitToSee("your client tells its terminal (TTYPE): agreed");
    Player.WaitToSee("the world asks for sounds (MSP): agreed");
    Player.WaitToSee("Your terminal is a DEC-VT100.");
    Moment("1-options");
}

TEST_F(DemoWorld, FloodsTheClientAndIsPlayedOnIn) {
    ComeIn();
    Player.Enter("flood 5000");
    Player.WaitToSee("a goose is riding like a queen.");
    // An arrival may end anywhere in a flood, and its last byte is lost, so one answer may be cut.
    WaitFor("an answer behind the flood", [this] {
        Player.Enter("score");
        return Becomes(
            [this] {
                return Player.Shown().find("Ada: 20 of 20 life, fights won 0.\n") !=
                       std::string::npos;
            },
            std::chrono::seconds(1));
    });
    Walk(Player, '8', "North Gate");
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
