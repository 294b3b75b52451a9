#include "World.h"

#include "Hamlet.h"
#include "Scene.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace world {
namespace {

TEST(World, IsFilledWithTheCreaturesAndThingsOfItsTown) {
    World world;
    Populate(world, Hamlet());
    EXPECT_EQ(world.town, &Hamlet());
    ASSERT_EQ(world.creatures.size(), Hamlet().kinds.size());
    for (std::size_t each = 0; each < world.creatures.size(); ++each) {
        EXPECT_EQ(world.creatures[each].kind, &Hamlet().kinds[each]);
        EXPECT_EQ(world.creatures[each].life, Hamlet().kinds[each].life);
    }
    EXPECT_EQ(world.beatsAway, std::vector<int>(Hamlet().things.size()));
    EXPECT_TRUE(world.dropped.empty());
}

TEST(World, LookingShowsTitleProseThingsCreaturesPeopleAndExitsInTheirColours) {
    Scene scene(Hamlet());
    Player& ada = scene.Join("Ada");
    scene.Join("Bob");
    scene.Connect().name = "Cy";
    scene.world.dropped.push_back({scene.ThingNamed("helm"), ada.room});
    LookAround(scene.world, ada);
    EXPECT_EQ(Scene::Read(ada), Line(TitleColour, "Yard") + Line(ProseColour, "A yard.") +
                                    Line(HungerColour, "Pears lie in the grass.") +
                                    Line(HungerColour, "A stick leans on the wall.") +
                                    Line(HungerColour, "Somebody has left an iron helm here.") +
                                    Line(CreatureColour, "A hen scratches about.") +
                                    Line(PeopleColour, "Bob is here.") +
                                    Line(ExitColour, "Exits: north, down."));
}

TEST(World, WhatIsAwayOrElsewhereIsNotSeen) {
    Scene scene(Hamlet());
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    bob.room = scene.RoomNamed("shed");
    scene.CreatureNamed("hen").life = 0;
    scene.world.beatsAway.assign(scene.world.beatsAway.size(), 1);
    scene.world.dropped.push_back({scene.ThingNamed("helm"), bob.room});
    LookAround(scene.world, ada);
    EXPECT_EQ(Scene::Read(ada), Line(TitleColour, "Yard") + Line(ProseColour, "A yard.") +
                                    Line(ExitColour, "Exits: north, down."));
}

struct WidthCase {
    const char* name;
    int columns;
    std::size_t width;
};

void PrintTo(const WidthCase& row, std::ostream* out) { *out << row.name; }

class WorldWidths : public ::testing::TestWithParam<WidthCase> {};

TEST_P(WorldWidths, FollowTheWindowWithinReason) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet.columns = GetParam().columns;
    EXPECT_EQ(WidthOf(ada), GetParam().width);
    LookAround(scene.world, ada);
    EXPECT_TRUE(Contains(Scene::Read(ada), Prose(ProseColour, RoomAt(scene.world, StartRoom).prose,
                                                 GetParam().width)));
}

const WidthCase kWidths[] = {
    {"OfAWindowThatIsUnknown", 0, 78},
    {"OfOneColumn", 1, 40},
    {"OfThirtyNine", 39, 40},
    {"OfForty", 40, 40},
    {"OfFortyOne", 41, 41},
    {"OfSeventySeven", 77, 77},
    {"OfEighty", 80, 78},
    {"OfTheWidest", 65535, 78},
};

INSTANTIATE_TEST_SUITE_P(All, WorldWidths, ::testing::ValuesIn(kWidths),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(World, SomeoneIsFoundByTheNameWhilePlaying) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    scene.Connect().name = "Cy";
    EXPECT_EQ(FindPlaying(scene.world, "Ada"), &ada);
    for (const char* name : {"ada", "Ad", "Cy", "Zoe", ""})
        EXPECT_EQ(FindPlaying(scene.world, name), nullptr) << name;
    ada.stage = Stage::Gone;
    EXPECT_EQ(FindPlaying(scene.world, "Ada"), nullptr);
}

TEST(World, EnteringIsSeenByThoseAtTheStartOnly) {
    Scene scene;
    Player& near = scene.Join("Near");
    Player& far = scene.Join("Far");
    far.room = scene.RoomNamed("ferry");
    Player& atTheGate = scene.Connect();
    Player& ada = scene.Connect();
    ada.name = "Ada";
    Enter(scene.world, ada);
    EXPECT_EQ(Scene::Read(near), Line(PeopleColour, "Ada comes in off the road."));
    EXPECT_EQ(Scene::Read(far), "");
    EXPECT_EQ(Scene::Read(atTheGate), "");
}

// Someone at the gate whose name stands in the book.
Player& ConnectKnown(Scene& scene, const Account& account) {
    scene.world.book["Ada"] = account;
    Player& ada = scene.Connect();
    ada.name = "Ada";
    return ada;
}

TEST(World, OneWhoComesBackIsAsTheBookRemembers) {
    Scene scene;
    Account account;
    account.life = 7;
    account.kills = 4;
    account.beatsSinceMeal = 9;
    account.carried = {"apple", "stone", "anvil"};
    account.worn = {"hat"};
    Player& ada = ConnectKnown(scene, account);
    Enter(scene.world, ada);
    EXPECT_EQ(ada.life, 7);
    EXPECT_EQ(ada.kills, 4);
    EXPECT_TRUE(IsHungry(ada));
    EXPECT_EQ(ada.carried, (std::vector<int>{scene.ThingNamed("apple"), scene.ThingNamed("stone")}))
        << "there is no anvil in the town";
    EXPECT_EQ(ada.worn, std::vector<int>{scene.ThingNamed("hat")});
    EXPECT_EQ(ada.room, StartRoom);
}

TEST(World, ANewcomerIsWholeWhateverElseTheBookSays) {
    Scene scene;
    Account account;
    account.kills = 4;
    account.carried = {"apple"};
    Player& ada = ConnectKnown(scene, account);
    Enter(scene.world, ada);
    EXPECT_EQ(ada.life, MaxLife);
    EXPECT_EQ(ada.kills, 0);
    EXPECT_TRUE(ada.carried.empty());
}

TEST(World, NobodyComesBackWithMoreThanAllTheLifeThereIs) {
    Scene scene;
    Account account;
    account.life = 1000;
    Player& ada = ConnectKnown(scene, account);
    Enter(scene.world, ada);
    EXPECT_EQ(ada.life, MaxLife);
}

TEST(World, LeavingIsSeenAndEndsTheFightAndTheFlood) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.foe = &scene.world.creatures[0];
    ada.flood = 1000;
    Leave(scene.world, ada, "fades from sight.");
    EXPECT_EQ(Scene::Read(bob), Line(PeopleColour, "Ada fades from sight."));
    EXPECT_EQ(ada.stage, Stage::Gone);
    EXPECT_EQ(ada.foe, nullptr);
    EXPECT_EQ(ada.flood, 0U);
}

TEST(World, LeavingIsRememberedInTheBook) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    scene.world.book["Ada"] = NewAccount("secret", 1);
    const Account before = scene.world.book.at("Ada");
    ada.life = 5;
    ada.kills = 2;
    ada.beatsSinceMeal = 3;
    ada.carried = {scene.ThingNamed("loaf"), scene.ThingNamed("loaf")};
    ada.worn = {scene.ThingNamed("coat")};
    Leave(scene.world, ada, "fades from sight.");
    Account expected = before;
    expected.life = 5;
    expected.kills = 2;
    expected.beatsSinceMeal = 3;
    expected.carried = {"loaf", "loaf"};
    expected.worn = {"coat"};
    EXPECT_EQ(scene.world.book.at("Ada"), expected);
    EXPECT_TRUE(scene.world.isBookChanged);
}

TEST(World, OneWhoIsNotInTheBookIsNotWrittenIntoIt) {
    Scene scene;
    Remember(scene.world, scene.Join("Ada"));
    EXPECT_TRUE(scene.world.book.empty());
    EXPECT_FALSE(scene.world.isBookChanged);
}

TEST(World, WalkingIsSeenInBothRooms) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& here = scene.Join("Here");
    Player& there = scene.Join("There");
    there.room = *RoomTo(scene.world, StartRoom, Direction::North);
    Walk(scene.world, ada, Direction::North);
    EXPECT_EQ(ada.room, there.room);
    EXPECT_EQ(Scene::Read(here), Line(PeopleColour, "Ada leaves north."));
    EXPECT_EQ(Scene::Read(there), Line(PeopleColour, "Ada arrives from the south."));
    Walk(scene.world, ada, Direction::Up);
    EXPECT_EQ(Scene::Read(there), Line(PeopleColour, "Ada leaves up."));
    Walk(scene.world, ada, Direction::Down);
    EXPECT_EQ(Scene::Read(there), Line(PeopleColour, "Ada arrives from above."));
}

TEST(World, ThePianoPlaysForTheOneWhoComesInAndAfterWhatThereIsToSee) {
    Scene scene;
    scene.world.soundRoot = "http://127.0.0.1:20001/sounds/";
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    bob.room = scene.RoomNamed("loft");
    ada.room = *RoomTo(scene.world, bob.room, Direction::Down);
    Walk(scene.world, ada, Direction::Up);
    EXPECT_TRUE(Scene::Read(ada).ends_with("Exits: down.\r\n"
                                           "\x1b[0;37mThe piano begins to play, rather slowly.\r\n"
                                           "!!MUSIC(tune.mid V=70 P=50 "
                                           "U=http://127.0.0.1:20001/sounds/tune.mid )\r\n"));
    EXPECT_FALSE(Contains(Scene::Read(bob), "!!"));
    EXPECT_FALSE(Contains(scene.Type(ada, "look"), "!!")) << "seeing is not coming in";
    Walk(scene.world, ada, Direction::Down);
    EXPECT_FALSE(Contains(Scene::Read(ada), "!!"));
}

TEST(World, WhereThereIsNoWayNobodyMoves) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.foe = &scene.world.creatures[0];
    Walk(scene.world, ada, Direction::Down);
    EXPECT_EQ(ada.room, StartRoom);
    EXPECT_EQ(Scene::Read(ada), Line(ProseColour, "There is no way down from here."));
    EXPECT_EQ(Scene::Read(bob), "");
    EXPECT_NE(ada.foe, nullptr) << "the fight goes on";
}

TEST(World, APromptFitsTheStage) {
    Player player;
    EXPECT_EQ(PromptOf(player), "By what name are you known? ");
    player.stage = Stage::Password;
    EXPECT_EQ(PromptOf(player), "Password: ");
    player.stage = Stage::Playing;
    player.life = 7;
    EXPECT_EQ(PromptOf(player), "[7/20] > ");
    player.stage = Stage::Gone;
    EXPECT_EQ(PromptOf(player), "");
}

} // namespace
} // namespace world
