#include "Life.h"

#include "Hamlet.h"
#include "Scene.h"

#include <gtest/gtest.h>
#include <string>

namespace world {
namespace {

// Ada fights the rat of the archive; Bob stands by.
struct Fight : Scene {
    Creature& rat = CreatureNamed("brown-rat");
    Player& ada = Join("Ada");
    Player& bob = Join("Bob");

    Fight() {
        ada.room = bob.room = rat.kind->room;
        Type(ada, "kill rat");
        bob.lines.clear();
    }

    // What Ada reads of one round.
    std::string NextRound() {
        ada.lines.clear();
        bob.lines.clear();
        Round(world);
        return ada.lines;
    }
};

struct TargetCase {
    const char* name;
    const char* line;
    bool begins;
};

void PrintTo(const TargetCase& row, std::ostream* out) { *out << row.name; }

class WorldTargets : public ::testing::TestWithParam<TargetCase> {};

TEST_P(WorldTargets, BeginAFightOrNot) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.room = scene.CreatureNamed("brown-rat").kind->room;
    scene.Type(ada, GetParam().line);
    EXPECT_EQ(ada.foe != nullptr, GetParam().begins);
    EXPECT_EQ(AnyoneFights(scene.world), GetParam().begins);
}

const TargetCase kTargets[] = {
    {"KillRat", "kill rat", true},      {"AttackRat", "attack rat", true},
    {"KillARat", "kill a rat", true},   {"KillTheBrownRat", "kill the brown RAT", true},
    {"KillNothing", "kill", false},     {"KillAGoose", "kill goose", false},
    {"KillHalfARat", "kill ra", false},
};

INSTANTIATE_TEST_SUITE_P(All, WorldTargets, ::testing::ValuesIn(kTargets),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldFight, ThereIsNoRatToFightAtTheStart) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_TRUE(Contains(scene.Type(ada, "kill rat"), "There is nothing like that"));
    EXPECT_FALSE(AnyoneFights(scene.world));
}

TEST(WorldFight, TheRoomSeesItBegin) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.room = bob.room = scene.CreatureNamed("brown-rat").kind->room;
    EXPECT_EQ(scene.Type(ada, "kill rat"), Line(NoticeColour, "You go for the brown rat!"));
    EXPECT_EQ(Scene::Read(bob), Line(PeopleColour, "Ada goes for the brown rat!"));
    EXPECT_TRUE(Contains(scene.Type(ada, "kill rat"), "fighting as hard as you can"));
}

TEST(WorldFight, BlowsThatLandTakeLifeOnBothSidesAndAreSeen) {
    Fight fight;
    EXPECT_EQ(fight.NextRound(), Line(NoticeColour, "You graze the brown rat.") +
                                     Line(CreatureColour, "The brown rat nips you."));
    EXPECT_EQ(Scene::Read(fight.bob), Line(PeopleColour, "Ada grazes the brown rat.") +
                                          Line(CreatureColour, "The brown rat nips Ada."));
    EXPECT_EQ(fight.rat.life, fight.rat.kind->life - 1);
    EXPECT_EQ(fight.ada.life, MaxLife - 1);
}

TEST(WorldFight, BlowsThatMissTakeNothingAndAreSeen) {
    Fight fight;
    fight.Luck(false);
    EXPECT_EQ(fight.NextRound(), Line(NoticeColour, "You swing at thin air beside the brown rat.") +
                                     Line(CreatureColour, "The brown rat snaps and misses you."));
    EXPECT_EQ(Scene::Read(fight.bob),
              Line(PeopleColour, "Ada misses the brown rat.") +
                  Line(CreatureColour, "The brown rat snaps and misses Ada."));
    EXPECT_EQ(fight.rat.life, fight.rat.kind->life);
    EXPECT_EQ(fight.ada.life, MaxLife);
}

TEST(WorldFight, HardBlowsHaveWordsOfTheirOwn) {
    Fight fight;
    fight.HardBlows();
    EXPECT_EQ(fight.NextRound(), Line(NoticeColour, "You land a fearful blow on the brown rat.") +
                                     Line(CreatureColour, "The brown rat bites you."));
}

TEST(WorldFight, IsWonWhenTheRatHasNoLifeLeft) {
    Fight fight;
    fight.HardBlows();
    fight.NextRound();
    const std::string last = fight.NextRound();
    EXPECT_TRUE(Contains(last, "You have beaten the brown rat!"));
    EXPECT_FALSE(Contains(last, "bites")) << "a beaten rat does not bite";
    EXPECT_TRUE(Contains(Scene::Read(fight.bob), "Ada has beaten the brown rat!"));
    EXPECT_EQ(fight.rat.life, 0);
    EXPECT_EQ(fight.ada.kills, 1);
    EXPECT_FALSE(AnyoneFights(fight.world));
    EXPECT_FALSE(Contains(fight.Type(fight.ada, "look"), fight.rat.kind->sight));
    EXPECT_TRUE(Contains(fight.Type(fight.ada, "kill rat"), "There is nothing like that"));
}

TEST(WorldFight, WhenOneOfTwoWinsTheOtherStopsToo) {
    Fight fight;
    fight.Type(fight.bob, "kill rat");
    fight.HardBlows();
    fight.NextRound();
    EXPECT_EQ(fight.rat.life, 0);
    EXPECT_EQ(fight.bob.kills, 1) << "the second blow of the round was the last";
    EXPECT_FALSE(AnyoneFights(fight.world));
    EXPECT_EQ(fight.NextRound(), "");
}

TEST(WorldFight, WalkingAwayEndsIt) {
    Fight fight;
    EXPECT_TRUE(Contains(fight.Type(fight.ada, "up"), "You turn your back on the fight"));
    EXPECT_FALSE(AnyoneFights(fight.world));
    EXPECT_EQ(fight.NextRound(), "");
}

TEST(WorldFight, AWeakPlayerIsTold) {
    Fight fight;
    fight.ada.life = WeakLife + 2;
    EXPECT_FALSE(Contains(fight.NextRound(), "You feel weak."));
    EXPECT_TRUE(Contains(fight.NextRound(), "You feel weak."));
    fight.Luck(false);
    EXPECT_FALSE(Contains(fight.NextRound(), "You feel weak."));
}

TEST(WorldFight, OneWhoFaintsWakesAtTheStartWithHalfTheLife) {
    Fight fight;
    Player& cy = fight.Join("Cy");
    fight.ada.life = 1;
    const std::string read = fight.NextRound();
    EXPECT_TRUE(Contains(read, "the world goes out like a candle"));
    EXPECT_TRUE(Contains(read, "You wake on grass."));
    EXPECT_TRUE(Contains(read, RoomAt(fight.world, StartRoom).title));
    EXPECT_TRUE(EveryLineHasItsColour(read));
    EXPECT_TRUE(Contains(Scene::Read(fight.bob), "Ada faints!"));
    EXPECT_TRUE(Contains(Scene::Read(cy), "Ada is carried in"));
    EXPECT_EQ(fight.ada.room, StartRoom);
    EXPECT_EQ(fight.ada.life, MaxLife / 2);
    EXPECT_FALSE(AnyoneFights(fight.world));
}

TEST(WorldFight, EveryCreatureOfTheTownCanBeBeaten) {
    for (const Kind& kind : Quillmere().kinds) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.room = kind.room;
        scene.HardBlows();
        scene.Type(ada, "kill " + std::string(LastWord(kind.name)));
        for (int round = 0; round < 20 && ada.foe; ++round) {
            ada.life = MaxLife;
            Round(scene.world);
        }
        EXPECT_EQ(ada.kills, 1) << kind.name;
    }
}

// Ada and Bob in the hamlet, whose dog attacks and whose hen does not.
struct Village : Scene {
    Player& ada = Join("Ada");
    Player& bob = Join("Bob");
    Creature& hen = CreatureNamed("hen");
    Creature& dog = CreatureNamed("dog");

    Village() : Scene(Hamlet()) {}

    // Everyone who strikes takes so much, or misses when it is nothing.
    void Blows(int taken) {
        world.roll = [taken](int sides) {
            const int luck = taken > 0 ? 0 : 99;
            return sides == 100 ? luck : taken - 1;
        };
    }
};

struct DeedCase {
    const char* name;
    int taken;
    const char* line;
};

void PrintTo(const DeedCase& row, std::ostream* out) { *out << row.name; }

class WorldDeeds : public ::testing::TestWithParam<DeedCase> {};

TEST_P(WorldDeeds, OfACreatureHaveTheWordsOfItsKind) {
    Village village;
    village.ada.room = village.bob.room = village.RoomNamed("shed");
    village.Blows(GetParam().taken);
    village.ada.foe = &village.dog;
    Round(village.world);
    const std::string line = "The wild dog " + std::string(GetParam().line) + ' ';
    EXPECT_TRUE(Scene::Read(village.ada).ends_with(Line(CreatureColour, line + "you.")));
    EXPECT_TRUE(Scene::Read(village.bob).ends_with(Line(CreatureColour, line + "Ada.")));
    EXPECT_EQ(village.ada.life, MaxLife - GetParam().taken);
}

const DeedCase kDeeds[] = {
    {"OfSix", 6, "mauls"}, {"OfFour", 4, "mauls"},    {"OfThree", 3, "bites"},
    {"OfTwo", 2, "bites"}, {"OfOne", 1, "scratches"}, {"ThatMiss", 0, "leaps past"},
};

INSTANTIATE_TEST_SUITE_P(All, WorldDeeds, ::testing::ValuesIn(kDeeds),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldGuard, TakesItsShareOfEveryBite) {
    Village village;
    village.ada.room = village.RoomNamed("shed");
    village.ada.worn = {village.ThingNamed("helm"), village.ThingNamed("apron")};
    village.ada.foe = &village.dog;
    village.Blows(6);
    Round(village.world);
    EXPECT_EQ(village.ada.life, MaxLife - 1);
    EXPECT_TRUE(Contains(Scene::Read(village.ada), "The wild dog scratches you."));
}

TEST(WorldGuard, ThatIsMoreThanTheBiteLetsNothingThrough) {
    Village village;
    village.ada.room = village.RoomNamed("shed");
    village.ada.worn = {village.ThingNamed("helm"), village.ThingNamed("apron")};
    village.ada.life = WeakLife;
    village.ada.foe = &village.dog;
    village.Blows(2);
    Round(village.world);
    EXPECT_EQ(village.ada.life, WeakLife) << "it does not heal either";
    const std::string read = Scene::Read(village.ada);
    EXPECT_TRUE(Contains(read, "The wild dog leaps past you."));
    EXPECT_FALSE(Contains(read, "You feel weak."));
}

TEST(WorldGuard, OfOneKeepsNobodyElseWhole) {
    Village village;
    village.ada.room = village.bob.room = village.RoomNamed("shed");
    village.ada.worn = {village.ThingNamed("apron")};
    village.ada.foe = village.bob.foe = &village.dog;
    village.Blows(3);
    Round(village.world);
    EXPECT_EQ(village.ada.life, MaxLife);
    EXPECT_EQ(village.bob.life, MaxLife - 3);
}

TEST(WorldMeeting, OneThatAttacksBeginsAtOnceWithWhoComesIn) {
    Village village;
    village.bob.room = village.RoomNamed("shed");
    const std::string read = village.Type(village.ada, "north");
    EXPECT_TRUE(
        read.ends_with("Exits: south.\r\n" + Line(CreatureColour, "The wild dog attacks you!")))
        << read;
    EXPECT_TRUE(
        Scene::Read(village.bob).ends_with(Line(CreatureColour, "The wild dog attacks Ada!")));
    EXPECT_EQ(village.ada.foe, &village.dog);
    EXPECT_EQ(village.bob.foe, nullptr);
    EXPECT_TRUE(Contains(village.Type(village.ada, "kill dog"), "fighting as hard as you can"));
}

TEST(WorldMeeting, OneThatDoesNotAttackWaitsToBeAsked) {
    Village village;
    village.ada.room = village.RoomNamed("shed");
    EXPECT_FALSE(Contains(village.Type(village.ada, "south"), "attacks"));
    EXPECT_EQ(village.ada.foe, nullptr);
}

TEST(WorldMeeting, OneThatIsBeatenAttacksNobody) {
    Village village;
    village.dog.life = 0;
    EXPECT_FALSE(Contains(village.Type(village.ada, "north"), "attacks"));
    EXPECT_FALSE(AnyoneFights(village.world));
}

TEST(WorldMeeting, OneWhoFightsAlreadyIsLeftToIt) {
    Village village;
    village.ada.room = village.RoomNamed("shed");
    village.ada.foe = &village.hen;
    MeetCreatures(village.world, village.ada);
    EXPECT_EQ(village.ada.foe, &village.hen);
    EXPECT_EQ(Scene::Read(village.ada), "");
}

TEST(WorldMeeting, OneThatComesBackAttacksEveryoneThere) {
    Village village;
    Player& atTheGate = village.Connect();
    village.ada.room = village.bob.room = atTheGate.room = village.RoomNamed("shed");
    Player& far = village.Join("Far");
    village.dog.life = 0;
    village.dog.beatsAway = 1;
    Beat(village.world);
    EXPECT_EQ(Scene::Read(village.ada),
              Line(CreatureColour, "The wild dog is back, and bears a grudge.") +
                  Line(CreatureColour, "The wild dog attacks you!") +
                  Line(CreatureColour, "The wild dog attacks Bob!"));
    EXPECT_EQ(village.bob.foe, &village.dog);
    EXPECT_EQ(atTheGate.foe, nullptr);
    EXPECT_EQ(far.foe, nullptr);
}

struct WayCase {
    const char* name;
    int rolled;
    const char* room;
};

void PrintTo(const WayCase& row, std::ostream* out) { *out << row.name; }

class WorldFlights : public ::testing::TestWithParam<WayCase> {};

// The green has its eight ways in the order of the directions, north first.
TEST_P(WorldFlights, LeadByTheWayThatTheDiceChoose) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.foe = &scene.CreatureNamed("brown-rat");
    int sides = 0;
    scene.world.roll = [&sides](int asked) {
        sides = asked;
        return GetParam().rolled;
    };
    const std::string read = scene.Type(ada, "flee");
    EXPECT_EQ(sides, 8);
    EXPECT_TRUE(read.starts_with(Line(ProseColour, "You turn your back on the fight and run.")));
    EXPECT_EQ(ada.room, scene.RoomNamed(GetParam().room));
    EXPECT_FALSE(AnyoneFights(scene.world));
}

const WayCase kWays[] = {
    {"TheFirst", 0, "gate"},
    {"TheSecond", 1, "rise"},
    {"TheFifth", 4, "hall"},
    {"TheLast", 7, "yard"},
};

INSTANTIATE_TEST_SUITE_P(All, WorldFlights, ::testing::ValuesIn(kWays),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldFlight, WithoutAFightGoesNowhere) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_EQ(scene.Type(ada, "flee"), Line(ProseColour, "From what? Nothing here is after you."));
    EXPECT_EQ(ada.room, StartRoom);
}

TEST(WorldFlight, FromADeadEndLeadsBackTheOnlyWay) {
    Village village;
    village.Type(village.ada, "north");
    village.Luck(false);
    village.Type(village.ada, "flee");
    EXPECT_EQ(village.ada.room, village.RoomNamed("yard"));
    EXPECT_EQ(village.ada.foe, nullptr);
}

TEST(WorldFlight, MayLeadToTheNextFight) {
    Village village;
    village.Type(village.ada, "kill hen");
    EXPECT_TRUE(village.Type(village.ada, "flee").ends_with("The wild dog attacks you!\r\n"));
    EXPECT_EQ(village.ada.foe, &village.dog);
}

TEST(WorldFlight, IsPossibleFromEveryRoomWithACreature) {
    for (const Kind& kind : Quillmere().kinds) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.room = kind.room;
        scene.Type(ada, "kill " + std::string(LastWord(kind.name)));
        scene.Type(ada, "flee");
        EXPECT_NE(ada.room, kind.room) << kind.name;
    }
}

TEST(WorldBeat, ABeatenRatComesBackToItsRoomAfterAWhile) {
    Fight fight;
    fight.HardBlows();
    fight.NextRound();
    fight.NextRound();
    for (int beat = 1; beat < BeatsUntilBack; ++beat)
        Beat(fight.world);
    EXPECT_EQ(fight.rat.life, 0);
    fight.bob.lines.clear();
    Beat(fight.world);
    EXPECT_EQ(fight.rat.life, fight.rat.kind->life);
    EXPECT_EQ(Scene::Read(fight.bob),
              Line(CreatureColour, "The brown rat is back, and bears a grudge."));
}

TEST(WorldBeat, ARatHealsOnlyWhenNobodyFightsIt) {
    Fight fight;
    fight.NextRound();
    Beat(fight.world);
    EXPECT_EQ(fight.rat.life, fight.rat.kind->life - 1);
    fight.Type(fight.ada, "up");
    Beat(fight.world);
    EXPECT_EQ(fight.rat.life, fight.rat.kind->life);
}

TEST(WorldBeat, HungerComesLateAndThenFromTimeToTime) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    std::string pangs;
    for (int beat = 1; beat <= BeatsUntilHungry + 2 * BeatsBetweenPangs; ++beat) {
        Beat(scene.world);
        const std::string read = Scene::Read(ada);
        EXPECT_TRUE(read.empty() || read == Line(HungerColour, "You are hungry."));
        pangs += read.empty() ? '-' : 'H';
    }
    EXPECT_EQ(pangs, "---H-H-H");
    ada.carried = {scene.ThingNamed("loaf")};
    scene.Type(ada, "eat bread");
    Beat(scene.world);
    EXPECT_EQ(Scene::Read(ada), "");
}

TEST(WorldBeat, OneWhoIsStillAtTheGateDoesNotHunger) {
    Scene scene;
    Player& player = scene.Connect();
    for (int beat = 0; beat < 10; ++beat)
        Beat(scene.world);
    EXPECT_EQ(player.lines, "");
    EXPECT_FALSE(AnyonePlays(scene.world));
}

// Ada outdoors and Bob in the cellar, neither of whom ever hungers.
struct Sky : Scene {
    Player& ada = Join("Ada");
    Player& bob = Join("Bob");

    Sky() { bob.room = RoomNamed("cellar"); }

    // What Ada reads of one beat.
    std::string NextBeat() {
        ada.beatsSinceMeal = bob.beatsSinceMeal = 0;
        Beat(world);
        return Read(ada);
    }

    std::string Beats(int count) {
        std::string read;
        for (int beat = 0; beat < count; ++beat)
            read += NextBeat();
        return read;
    }
};

TEST(WorldWeather, ComesAsRainAfterTenFairBeats) {
    Sky sky;
    EXPECT_EQ(sky.Beats(9), "");
    EXPECT_EQ(sky.NextBeat(), "\x1b[0;37mRain comes over the mere in long grey lines, and goes.\r\n"
                              "!!SOUND(rain.wav V=60 P=40 )\r\n");
    EXPECT_EQ(Scene::Read(sky.bob), "") << "no rain falls in a cellar";
}

TEST(WorldWeather, ComesAsThunderWhenTheDiceSaySo) {
    Sky sky;
    sky.world.soundRoot = "http://127.0.0.1:8080/sounds/";
    sky.world.roll = [](int sides) { return sides == WeatherSides ? 0 : sides - 1; };
    EXPECT_EQ(sky.Beats(10),
              "\x1b[0;37mFar out above the mere the thunder turns over in its bed.\r\n"
              "!!SOUND(thunder.wav V=80 P=60 U=http://127.0.0.1:8080/sounds/thunder.wav )\r\n");
}

TEST(WorldWeather, IsNeverNearerToTheLastThanTenBeats) {
    Sky sky;
    std::string calendar;
    for (int beat = 1; beat <= 40; ++beat)
        calendar += sky.NextBeat().empty() ? '-' : 'W';
    EXPECT_EQ(calendar, "---------W---------W---------W---------W");
}

TEST(WorldWeather, WaitsForTheDice) {
    Sky sky;
    sky.Luck(false);
    EXPECT_EQ(sky.Beats(100), "");
    sky.Luck(true);
    EXPECT_NE(sky.NextBeat(), "");
}

TEST(WorldWeather, IsTheSameForAllUnderTheSkyAndReachesNobodyAtTheGate) {
    Sky sky;
    Player& cy = sky.Join("Cy");
    Player& atTheGate = sky.Connect();
    sky.Beats(9);
    sky.bob.room = StartRoom;
    cy.lines.clear();
    cy.beatsSinceMeal = 0;
    const std::string read = sky.NextBeat();
    EXPECT_TRUE(Contains(read, "!!SOUND("));
    EXPECT_EQ(Scene::Read(sky.bob), read);
    EXPECT_EQ(Scene::Read(cy), read);
    EXPECT_EQ(Scene::Read(atTheGate), "");
}

TEST(WorldBeat, HealsThoseWhoAreFedAndAtPeace) {
    Fight fight;
    fight.ada.life = fight.bob.life = 10;
    Player& hungry = fight.Join("Cy");
    hungry.life = 10;
    hungry.beatsSinceMeal = BeatsUntilHungry;
    Player& whole = fight.Join("Di");
    Beat(fight.world);
    EXPECT_EQ(fight.ada.life, 10) << "who fights does not heal";
    EXPECT_EQ(fight.bob.life, 11);
    EXPECT_EQ(hungry.life, 10);
    EXPECT_EQ(whole.life, MaxLife);
}

} // namespace
} // namespace world
