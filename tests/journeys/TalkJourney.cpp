// Two players in two clients, each with a display of its own, meet in the demo world.
#include "Journey.h"

namespace journey {
namespace {

class Talk : public WorldJourney {
protected:
    void StartBoth() {
        for (Client* client : {&Player, &Bea})
            client->Launch({"--connect", Town.Address});
        for (Client* client : {&Player, &Bea})
            client->WaitForFrame();
    }

    // Those whom the world names to Ada, in their alphabetic order.
    std::string NamesAbout() {
        Player.Enter("who");
        Player.WaitToSee("In Quillmere at this hour:");
        Player.WaitToSee("] >");
        const std::string shown = Player.Shown();
        const std::string list = shown.substr(shown.rfind("In Quillmere at this hour:"));
        std::string names;
        for (const std::string name : {"Ada", "Bea"}) {
            if (list.find("  " + name + ", Goose Green") != std::string::npos)
                names += (names.empty() ? "" : " ") + name;
        }
        return names;
    }

    void TearDown() override {
        LeaveTraces("bea-", BeasScreen, Bea);
        WorldJourney::TearDown();
    }

    Display BeasScreen;
    Client Bea{BeasScreen};
};

TEST_F(Talk, GoesFromOneClientToTheOther) {
    StartBoth();
    LogIn(Player, "Ada");
    LogIn(Bea, "Bea");
    Player.WaitToSee("Bea comes in off the road.");
    EXPECT_EQ(NamesAbout(), "Ada Bea");

    Player.Enter("say Well met, Bea.");
    Player.WaitToSee("You say: Well met, Bea.");
    Bea.WaitToSee("Ada says: Well met, Bea.");
    Bea.Enter("say Mind the geese!");
    Bea.WaitToSee("You say: Mind the geese!");
    Player.WaitToSee("Bea says: Mind the geese!");
    Moment("1-met");

    Walk(Bea, '8', "North Gate");
    Player.WaitToSee("Bea leaves north.");
    Player.Enter("say Where are you?");
    Player.WaitToSee("You say: Where are you?");
    Walk(Bea, '2', "Goose Green");
    EXPECT_EQ(Bea.Shown().find("Where are you?"), std::string::npos) << "heard from afar";

    Walk(Bea, '8', "North Gate");
    Player.Enter("tell bea Come back, there is bread.");
    Player.WaitToSee("You tell Bea: Come back, there is bread.");
    Bea.WaitToSee("Ada tells you: Come back, there is bread.");
    Walk(Bea, '2', "Goose Green");

    Bea.Enter("quit");
    Bea.WaitToSee("Connection Closed");
    Player.WaitToSee("Bea takes the road out of town.");
    EXPECT_EQ(NamesAbout(), "Ada");
}

} // namespace
} // namespace journey
