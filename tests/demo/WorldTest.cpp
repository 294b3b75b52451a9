#include "World.h"

#include "Scene.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <vector>

namespace world {
namespace {

int RoomCount() { return static_cast<int>(Rooms().size()); }

const DirectionRow& RowOf(Direction direction) {
    return Directions()[static_cast<std::size_t>(direction)];
}

int FlourLoft() {
    int room = 0;
    while (!RoomAt(room).has.piano)
        ++room;
    return room;
}

TEST(WorldMap, HasTwelveToFifteenRooms) {
    EXPECT_GE(RoomCount(), 12);
    EXPECT_LE(RoomCount(), 15);
}

TEST(WorldMap, DirectionsStandInTheirOrderAndOpposeEachOther) {
    ASSERT_EQ(Directions().size(), 10U);
    for (std::size_t i = 0; i < Directions().size(); ++i) {
        const DirectionRow& row = Directions()[i];
        EXPECT_EQ(static_cast<std::size_t>(row.direction), i) << row.word;
        EXPECT_EQ(RowOf(row.opposite).opposite, row.direction) << row.word;
        EXPECT_NE(row.opposite, row.direction) << row.word;
    }
}

TEST(WorldMap, EveryPassageJoinsTwoRooms) {
    for (const Passage& passage : Passages()) {
        for (const int room : {passage.from, passage.to}) {
            EXPECT_GE(room, 0);
            EXPECT_LT(room, RoomCount());
        }
        EXPECT_NE(passage.from, passage.to);
    }
}

TEST(WorldMap, NoRoomHasTwoWaysInOneDirection) {
    std::set<std::pair<int, Direction>> ways;
    for (const Passage& passage : Passages()) {
        EXPECT_TRUE(ways.emplace(passage.from, passage.way).second) << passage.from;
        EXPECT_TRUE(ways.emplace(passage.to, RowOf(passage.way).opposite).second) << passage.to;
    }
}

TEST(WorldMap, EveryExitLeadsToARoomAndBack) {
    for (int room = 0; room < RoomCount(); ++room) {
        for (const DirectionRow& row : Directions()) {
            const std::optional<int> next = RoomTo(room, row.direction);
            if (!next)
                continue;
            ASSERT_LT(*next, RoomCount());
            EXPECT_EQ(RoomTo(*next, row.opposite), room) << room << ' ' << row.word;
        }
    }
}

TEST(WorldMap, UsesAllTenDirections) {
    for (const DirectionRow& row : Directions()) {
        int uses = 0;
        for (int room = 0; room < RoomCount(); ++room)
            uses += RoomTo(room, row.direction) ? 1 : 0;
        EXPECT_GT(uses, 0) << row.word;
    }
}

// A step in each direction, as east, north and up.
constexpr std::array<std::array<int, 3>, 10> kSteps = {{
    {0, 1, 0},
    {1, 1, 0},
    {1, 0, 0},
    {1, -1, 0},
    {0, -1, 0},
    {-1, -1, 0},
    {-1, 0, 0},
    {-1, 1, 0},
    {0, 0, 1},
    {0, 0, -1},
}};

TEST(WorldMap, LiesFlatOnAGridAndIsWholeFromTheStart) {
    std::map<int, std::array<int, 3>> places = {{StartRoom, {0, 0, 0}}};
    std::vector<int> toVisit = {StartRoom};
    while (!toVisit.empty()) {
        const int room = toVisit.back();
        toVisit.pop_back();
        for (std::size_t way = 0; way < kSteps.size(); ++way) {
            const std::optional<int> next = RoomTo(room, static_cast<Direction>(way));
            if (!next)
                continue;
            std::array<int, 3> place = places[room];
            for (std::size_t axis = 0; axis < 3; ++axis)
                place[axis] += kSteps[way][axis];
            if (places.emplace(*next, place).second)
                toVisit.push_back(*next);
            EXPECT_EQ(places[*next], place) << "room " << *next << " is in two places";
        }
    }
    std::set<std::array<int, 3>> taken;
    for (const auto& [room, place] : places)
        EXPECT_TRUE(taken.insert(place).second) << "room " << room << " shares its place";
    EXPECT_EQ(places.size(), Rooms().size());
}

TEST(WorldMap, EveryRoomHasATitleOfItsOwnAndProseInPlainAscii) {
    std::set<std::string_view> titles;
    for (const Room& room : Rooms()) {
        EXPECT_TRUE(titles.insert(room.title).second) << room.title;
        EXPECT_GT(room.prose.size(), 100U) << room.title;
        EXPECT_EQ(Clean(room.prose.substr(0, MaxSpeech)),
                  room.prose.substr(0, Clean(room.prose).size()));
        for (const char c : room.prose)
            EXPECT_TRUE(c >= ' ' && c <= '~') << room.title;
    }
}

TEST(WorldMap, OneRoomHasBreadOneABellAndOneAPianoUnderARoof) {
    for (const auto feature : {&Features::bread, &Features::bell, &Features::piano})
        EXPECT_EQ(std::ranges::count_if(Rooms(),
                                        [feature](const Room& room) { return room.has.*feature; }),
                  1);
    for (const Room& room : Rooms())
        EXPECT_FALSE(room.has.piano && room.has.sky) << room.title;
}

TEST(WorldMap, TheWeatherHasMoreThanHalfTheTownAndNoCellar) {
    std::set<std::string_view> roofed;
    for (const Room& room : Rooms()) {
        if (!room.has.sky)
            roofed.insert(room.title);
    }
    EXPECT_EQ(roofed, (std::set<std::string_view>{"Archive Cellar", "Bakehouse", "Flour Loft",
                                                  "Old Drain", "Scribes' Hall"}));
}

TEST(WorldMap, EveryCreatureHasARoom) {
    ASSERT_FALSE(Kinds().empty());
    for (const Kind& kind : Kinds()) {
        EXPECT_LT(kind.room, RoomCount());
        EXPECT_NE(kind.room, StartRoom) << "one who faints wakes there";
    }
}

TEST(World, LookingShowsTitleProseCreaturesPeopleAndExitsInTheirColours) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.room = bob.room = Kinds()[0].room;
    LookAround(scene.world, ada);
    const std::string seen = Scene::Read(ada);
    const Room& room = Rooms()[static_cast<std::size_t>(ada.room)];
    EXPECT_TRUE(seen.starts_with(Line(TitleColour, room.title)));
    EXPECT_TRUE(Contains(seen, Prose(ProseColour, room.prose)));
    EXPECT_TRUE(Contains(seen, Line(CreatureColour, Kinds()[0].sight)));
    EXPECT_TRUE(Contains(seen, Line(PeopleColour, "Bob is here.")));
    EXPECT_FALSE(Contains(seen, "Ada is here."));
    EXPECT_TRUE(seen.ends_with(Line(ExitColour, "Exits: west, up.")));
    EXPECT_TRUE(EveryLineHasItsColour(seen));
}

TEST(World, ProseFollowsANarrowWindow) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.width = 40;
    LookAround(scene.world, ada);
    EXPECT_TRUE(Contains(Scene::Read(ada), Prose(ProseColour, Rooms()[0].prose, 40)));
}

TEST(World, EnteringIsSeenByThoseAtTheStartOnly) {
    Scene scene;
    Player& near = scene.Join("Near");
    Player& far = scene.Join("Far");
    far.room = 5;
    Player& atTheGate = scene.Connect();
    Player& ada = scene.Connect();
    ada.name = "Ada";
    Enter(scene.world, ada);
    EXPECT_EQ(Scene::Read(near), Line(PeopleColour, "Ada comes in off the road."));
    EXPECT_EQ(Scene::Read(far), "");
    EXPECT_EQ(Scene::Read(atTheGate), "");
}

TEST(World, LeavingIsSeenAndEndsTheFight) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.foe = &scene.world.creatures[0];
    Leave(scene.world, ada, "fades from sight.");
    EXPECT_EQ(Scene::Read(bob), Line(PeopleColour, "Ada fades from sight."));
    EXPECT_EQ(ada.stage, Stage::Gone);
    EXPECT_EQ(ada.foe, nullptr);
}

TEST(World, WalkingIsSeenInBothRooms) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& here = scene.Join("Here");
    Player& there = scene.Join("There");
    there.room = *RoomTo(StartRoom, Direction::North);
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
    bob.room = FlourLoft();
    ada.room = *RoomTo(bob.room, Direction::Down);
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
    Walk(scene.world, ada, Direction::Down);
    EXPECT_EQ(ada.room, StartRoom);
    EXPECT_EQ(Scene::Read(ada), Line(ProseColour, "There is no way down from here."));
    EXPECT_EQ(Scene::Read(bob), "");
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
