#include "Things.h"

#include "Hamlet.h"
#include "Scene.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace world {
namespace {

// Ada and Bob in the yard of the hamlet.
struct Yard : Scene {
    Player& ada = Join("Ada");
    Player& bob = Join("Bob");

    Yard() : Scene(Hamlet()) {}

    void Give(Player& player, std::string_view thing) {
        player.carried.push_back(ThingNamed(thing));
    }
    void Put(Player& player, std::string_view room) { player.room = RoomNamed(room); }

    std::vector<std::string> Carried(const Player& player) const {
        return IdsOf(*world.town, player.carried);
    }
    std::vector<std::string> Worn(const Player& player) const {
        return IdsOf(*world.town, player.worn);
    }

    bool Shows(std::string_view sight) { return Contains(Type(ada, "look"), sight); }
};

using Ids = std::vector<std::string>;

constexpr std::string_view kStickAtHome = "A stick leans on the wall.";
constexpr std::string_view kStickDropped = "Somebody has left a bent stick here.";

TEST(WorldThings, AreTakenWithAWordToTheRoom) {
    Yard yard;
    EXPECT_EQ(yard.Type(yard.ada, "get stick"), Line(HungerColour, "You take a bent stick."));
    EXPECT_EQ(Scene::Read(yard.bob), Line(PeopleColour, "Ada takes a bent stick."));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{"stick"});
}

struct CallCase {
    const char* name;
    const char* called;
    bool isTaken;
};

void PrintTo(const CallCase& row, std::ostream* out) { *out << row.name; }

class WorldThingNames : public ::testing::TestWithParam<CallCase> {};

TEST_P(WorldThingNames, CallAThingOrNone) {
    Yard yard;
    const std::string read = yard.Type(yard.ada, "get " + std::string(GetParam().called));
    EXPECT_EQ(yard.Carried(yard.ada), GetParam().isTaken ? Ids{"stick"} : Ids{});
    if (!GetParam().isTaken) {
        EXPECT_EQ(read, Line(ProseColour, "You see no such thing to take."));
        EXPECT_EQ(Scene::Read(yard.bob), "");
    }
}

const CallCase kCalls[] = {
    {"ByTheLastWord", "stick", true},
    {"ByAnyOtherWord", "bent", true},
    {"ByTheWholeName", "a bent stick", true},
    {"WithAnotherArticle", "the stick", true},
    {"InCapitals", "STICK", true},
    {"HalfAWord", "stic", false},
    {"MoreThanAWord", "sticks", false},
    {"NothingAtAll", "", false},
    {"AThingThatIsNone", "goose", false},
    {"AThingOfAnotherRoom", "cap", false},
    {"ByAWordBeforeAStranger", "stick goose", false},
};

INSTANTIATE_TEST_SUITE_P(All, WorldThingNames, ::testing::ValuesIn(kCalls),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldThings, OneThatIsTakenIsGoneAndBackAtHomeAfterAWhile) {
    Yard yard;
    EXPECT_TRUE(yard.Shows(kStickAtHome));
    yard.Type(yard.ada, "get stick");
    EXPECT_FALSE(yard.Shows(kStickAtHome));
    EXPECT_TRUE(Contains(yard.Type(yard.bob, "get stick"), "no such thing"));
    for (int beat = 1; beat < BeatsUntilHome; ++beat)
        LetThingsMove(yard.world);
    EXPECT_FALSE(yard.Shows(kStickAtHome));
    LetThingsMove(yard.world);
    EXPECT_TRUE(yard.Shows(kStickAtHome));
    EXPECT_TRUE(Contains(yard.Type(yard.bob, "get stick"), "You take a bent stick."));
}

TEST(WorldThings, AnEndlessOneIsNeverGone) {
    Yard yard;
    for (int times = 0; times < 3; ++times)
        yard.Type(yard.ada, "get pear");
    EXPECT_EQ(yard.Carried(yard.ada), (Ids{"pear", "pear", "pear"}));
    EXPECT_TRUE(yard.Shows("Pears lie in the grass."));
}

TEST(WorldThings, EightAreAllThatAnyoneCarriesWhatIsWornIncluded) {
    Yard yard;
    yard.ada.worn = {yard.ThingNamed("cap")};
    for (std::size_t times = 1; times < MaxCarried; ++times)
        EXPECT_TRUE(Contains(yard.Type(yard.ada, "get pear"), "You take")) << times;
    EXPECT_EQ(yard.Type(yard.ada, "get pear"),
              Line(ProseColour, "Your arms are full. Drop something first, or eat it."));
    EXPECT_EQ(yard.ada.carried.size(), MaxCarried - 1);
    yard.Type(yard.ada, "eat pear");
    EXPECT_TRUE(Contains(yard.Type(yard.ada, "get pear"), "You take"));
}

TEST(WorldThings, OneThatIsDroppedLiesThereForAnyone) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    yard.Put(yard.bob, "cellar");
    yard.Give(yard.ada, "stick");
    EXPECT_EQ(yard.Type(yard.ada, "drop stick"), Line(HungerColour, "You drop a bent stick."));
    EXPECT_EQ(Scene::Read(yard.bob), Line(PeopleColour, "Ada drops a bent stick."));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{});
    EXPECT_TRUE(yard.Shows(kStickDropped));
    yard.Type(yard.bob, "get stick");
    EXPECT_EQ(yard.Carried(yard.bob), Ids{"stick"});
    EXPECT_FALSE(yard.Shows(kStickDropped));
}

TEST(WorldThings, ADroppedOneLiesWhereItWasDroppedOnly) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    yard.Give(yard.ada, "stick");
    yard.Type(yard.ada, "drop stick");
    yard.Put(yard.ada, "shed");
    EXPECT_FALSE(yard.Shows(kStickDropped));
    EXPECT_TRUE(Contains(yard.Type(yard.ada, "get stick"), "no such thing"));
}

TEST(WorldThings, ADroppedOneIsTakenBeforeTheOneAtHome) {
    Yard yard;
    yard.Give(yard.ada, "stick");
    yard.Type(yard.ada, "drop stick");
    yard.Type(yard.ada, "get stick");
    EXPECT_FALSE(yard.Shows(kStickDropped));
    EXPECT_TRUE(yard.Shows(kStickAtHome));
}

TEST(WorldThings, ADroppedOneIsGoneAfterAWhile) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    yard.Give(yard.ada, "stick");
    yard.Type(yard.ada, "drop stick");
    for (int beat = 1; beat < BeatsOnTheGround; ++beat)
        LetThingsMove(yard.world);
    EXPECT_TRUE(yard.Shows(kStickDropped));
    LetThingsMove(yard.world);
    EXPECT_FALSE(yard.Shows(kStickDropped));
}

TEST(WorldThings, TheOldestOfAHundredThatLieAboutMakesRoom) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    yard.Give(yard.ada, "stick");
    yard.Type(yard.ada, "drop stick");
    for (std::size_t times = 1; times < MaxDropped; ++times) {
        yard.Give(yard.ada, "pear");
        yard.Type(yard.ada, "drop pear");
    }
    EXPECT_TRUE(yard.Shows(kStickDropped));
    yard.Give(yard.ada, "pear");
    yard.Type(yard.ada, "drop pear");
    EXPECT_FALSE(yard.Shows(kStickDropped));
    EXPECT_EQ(yard.world.dropped.size(), MaxDropped);
}

TEST(WorldThings, WhatIsNotCarriedCannotBeDroppedWornOrEaten) {
    Yard yard;
    yard.Give(yard.ada, "cap");
    yard.Type(yard.ada, "wear cap");
    yard.bob.lines.clear();
    for (const char* line : {"drop stick", "drop", "drop cap", "wear stick", "wear", "wear cap"})
        EXPECT_EQ(yard.Type(yard.ada, line), Line(ProseColour, "You carry no such thing.")) << line;
    for (const char* line : {"eat pear", "eat", "eat cap"})
        EXPECT_TRUE(Contains(yard.Type(yard.ada, line), "You have no such thing to eat.")) << line;
    EXPECT_EQ(yard.Worn(yard.ada), Ids{"cap"});
    EXPECT_EQ(Scene::Read(yard.bob), "");
}

TEST(WorldThings, OneIsWornAndTakenOffAgain) {
    Yard yard;
    yard.Give(yard.ada, "cap");
    EXPECT_EQ(yard.Type(yard.ada, "wear cap"),
              Line(HungerColour, "You wear an old cap on your head."));
    EXPECT_EQ(Scene::Read(yard.bob), Line(PeopleColour, "Ada puts on an old cap."));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{});
    EXPECT_EQ(yard.Worn(yard.ada), Ids{"cap"});
    EXPECT_EQ(yard.Type(yard.ada, "remove cap"), Line(HungerColour, "You take off an old cap."));
    EXPECT_EQ(Scene::Read(yard.bob), Line(PeopleColour, "Ada takes off an old cap."));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{"cap"});
    EXPECT_EQ(yard.Worn(yard.ada), Ids{});
}

TEST(WorldThings, NothingIsTakenOffThatIsNotWorn) {
    Yard yard;
    yard.Give(yard.ada, "cap");
    for (const char* line : {"remove cap", "remove stick", "remove"})
        EXPECT_EQ(yard.Type(yard.ada, line), Line(ProseColour, "You wear no such thing.")) << line;
    EXPECT_EQ(yard.Carried(yard.ada), Ids{"cap"});
    EXPECT_EQ(Scene::Read(yard.bob), "");
}

TEST(WorldThings, OneIsWornInAPlaceAtATime) {
    Yard yard;
    for (const char* thing : {"cap", "helm", "apron", "stick"})
        yard.Give(yard.ada, thing);
    yard.Type(yard.ada, "wear cap");
    EXPECT_EQ(yard.Type(yard.ada, "wear helm"),
              Line(ProseColour, "You wear something on your head already."));
    EXPECT_TRUE(Contains(yard.Type(yard.ada, "wear apron"), "round your waist"));
    EXPECT_TRUE(Contains(yard.Type(yard.ada, "wear stick"), "It is not for wearing."));
    EXPECT_EQ(yard.Worn(yard.ada), (Ids{"cap", "apron"}));
    EXPECT_EQ(yard.Carried(yard.ada), (Ids{"helm", "stick"}));
}

TEST(WorldThings, AllThatIsWornGuardsTogetherAndWhatIsCarriedDoesNot) {
    Yard yard;
    EXPECT_EQ(GuardOf(yard.world, yard.ada), 0);
    for (const char* thing : {"cap", "apron", "helm"})
        yard.Give(yard.ada, thing);
    EXPECT_EQ(GuardOf(yard.world, yard.ada), 0);
    yard.Type(yard.ada, "wear cap");
    EXPECT_EQ(GuardOf(yard.world, yard.ada), 1);
    yard.Type(yard.ada, "wear apron");
    EXPECT_EQ(GuardOf(yard.world, yard.ada), 4);
}

TEST(WorldThings, EatingStillsHungerAndHeals) {
    Yard yard;
    yard.Give(yard.ada, "pear");
    yard.ada.life = 10;
    yard.ada.beatsSinceMeal = 9;
    EXPECT_EQ(yard.Type(yard.ada, "eat pear"), Line(HungerColour, "You eat the pear."));
    EXPECT_EQ(Scene::Read(yard.bob), Line(PeopleColour, "Ada eats a ripe pear."));
    EXPECT_EQ(yard.ada.life, 13);
    EXPECT_FALSE(IsHungry(yard.ada));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{});
}

TEST(WorldThings, EatingHealsNobodyBeyondWhole) {
    Yard yard;
    yard.Give(yard.ada, "pear");
    yard.ada.life = MaxLife - 1;
    yard.Type(yard.ada, "eat pear");
    EXPECT_EQ(yard.ada.life, MaxLife);
}

TEST(WorldThings, WhatIsNoFoodIsBittenAndKept) {
    Yard yard;
    yard.Give(yard.ada, "stick");
    yard.ada.beatsSinceMeal = 9;
    EXPECT_TRUE(Contains(yard.Type(yard.ada, "eat stick"), "You bite it."));
    EXPECT_EQ(yard.Carried(yard.ada), Ids{"stick"});
    EXPECT_TRUE(IsHungry(yard.ada));
    EXPECT_EQ(Scene::Read(yard.bob), "");
}

TEST(WorldThings, TheInventoryShowsWhatIsCarriedAndWhatIsWornWhere) {
    Yard yard;
    const std::string nothing = Line(ProseColour, "You carry nothing but your good name.");
    EXPECT_EQ(yard.Type(yard.ada, "inventory"), nothing);
    for (const char* thing : {"pear", "cap", "pear"})
        yard.Give(yard.ada, thing);
    yard.Type(yard.ada, "wear cap");
    EXPECT_EQ(yard.Type(yard.ada, "i"), Line(ProseColour, "  a ripe pear") +
                                            Line(ProseColour, "  a ripe pear") +
                                            Line(ProseColour, "  an old cap, worn on your head"));
    EXPECT_EQ(yard.Type(yard.bob, "i"), nothing);
}

TEST(WorldThings, OneIsLookedAtWhereverItIsNear) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    EXPECT_EQ(yard.Type(yard.ada, "look helm"), Line(ProseColour, "It is rusty.")) << "at home";
    yard.Give(yard.ada, "pear");
    EXPECT_EQ(yard.Type(yard.ada, "look pear"), Line(ProseColour, "It is green.")) << "carried";
    yard.ada.worn = {yard.ThingNamed("cap")};
    EXPECT_EQ(yard.Type(yard.ada, "l CAP"), Line(ProseColour, "It is moth-eaten.")) << "worn";
    yard.world.dropped.push_back({yard.ThingNamed("stick"), yard.ada.room});
    EXPECT_EQ(yard.Type(yard.ada, "look stick"), Line(ProseColour, "It has a knot.")) << "dropped";
}

TEST(WorldThings, OneThatIsNotNearIsNotSeen) {
    Yard yard;
    yard.Put(yard.ada, "cellar");
    yard.Give(yard.bob, "pear");
    yard.world.dropped.push_back({yard.ThingNamed("stick"), yard.RoomNamed("shed")});
    yard.world.beatsAway[static_cast<std::size_t>(yard.ThingNamed("helm"))] = 1;
    for (const char* line : {"look cap", "look pear", "look stick", "look helm", "look goose"})
        EXPECT_EQ(yard.Type(yard.ada, line), Line(ProseColour, "You see no such thing here."))
            << line;
}

TEST(WorldThings, AreKeptByTheirNamesAndFoundAgain) {
    const Ids ids = {"cap", "pear", "pear", "stick"};
    EXPECT_EQ(IdsOf(Hamlet(), NumbersOf(Hamlet(), ids)), ids);
    EXPECT_EQ(IdsOf(Hamlet(), {}), Ids{});
}

TEST(WorldThings, KeptOnesThatTheTownDoesNotKnowAreLeftOut) {
    EXPECT_EQ(IdsOf(Hamlet(), NumbersOf(Hamlet(), {"anvil", "cap", "", "CAP", "a ripe pear"})),
              Ids{"cap"});
}

TEST(WorldThings, NoMoreThanEightAreFoundAgain) {
    for (const std::size_t kept : {8U, 9U, 20U})
        EXPECT_EQ(NumbersOf(Hamlet(), Ids(kept, "pear")).size(), 8U) << kept;
}

} // namespace
} // namespace world
