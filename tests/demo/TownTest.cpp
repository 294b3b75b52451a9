#include "Town.h"

#include <array>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace world {
namespace {

TEST(WorldDirections, StandInTheirOrderAndOpposeEachOther) {
    ASSERT_EQ(Directions().size(), DirectionCount);
    for (std::size_t i = 0; i < Directions().size(); ++i) {
        const DirectionRow& row = Directions()[i];
        EXPECT_EQ(static_cast<std::size_t>(row.direction), i) << row.word;
        EXPECT_EQ(&RowOf(row.direction), &row) << row.word;
        EXPECT_EQ(RowOf(row.opposite).opposite, row.direction) << row.word;
        EXPECT_NE(row.opposite, row.direction) << row.word;
    }
}

TEST(WorldDirections, HaveWordsLettersAndOriginsOfTheirOwn) {
    std::set<std::string_view> typed;
    std::set<std::string_view> origins;
    for (const DirectionRow& row : Directions()) {
        EXPECT_TRUE(typed.insert(row.word).second) << row.word;
        EXPECT_TRUE(typed.insert(row.letters).second) << row.letters;
        EXPECT_TRUE(origins.insert(row.whence).second) << row.whence;
    }
}

int WayFrom(const Room& room, Direction way) { return room.ways[static_cast<std::size_t>(way)]; }

// The directions that lead out of a room.
std::vector<Direction> WaysOut(const Room& room) {
    std::vector<Direction> ways;
    for (const DirectionRow& row : Directions()) {
        if (WayFrom(room, row.direction) != Nowhere)
            ways.push_back(row.direction);
    }
    return ways;
}

TEST(TownFile, ReadsARoom) {
    const Town town = ReadTown("[room green]\n"
                               "title: Goose Green\n"
                               "prose: Geese.\n"
                               "sky\n"
                               "bell\n"
                               "piano\n");
    ASSERT_EQ(town.rooms.size(), 1U);
    const Room& room = town.rooms[0];
    EXPECT_EQ(room.id, "green");
    EXPECT_EQ(room.title, "Goose Green");
    EXPECT_EQ(room.prose, "Geese.");
    EXPECT_TRUE(room.sky && room.bell && room.piano);
    EXPECT_EQ(WaysOut(room), std::vector<Direction>{});
}

TEST(TownFile, ReadsARoomOfWhichNothingIsTold) {
    const Room room = ReadTown("[room green]\n").rooms.at(0);
    EXPECT_EQ(room.title + room.prose, "");
    EXPECT_FALSE(room.sky || room.bell || room.piano);
}

TEST(TownFile, ReadsAWayInEachDirectionBackToo) {
    for (const DirectionRow& row : Directions()) {
        const Town town = ReadTown("[room a]\n" + std::string(row.word) + ": b\n[room b]\n");
        EXPECT_EQ(WaysOut(town.rooms[0]), std::vector<Direction>{row.direction}) << row.word;
        EXPECT_EQ(WaysOut(town.rooms[1]), std::vector<Direction>{row.opposite}) << row.word;
        EXPECT_EQ(WayFrom(town.rooms[0], row.direction), 1);
        EXPECT_EQ(WayFrom(town.rooms[1], row.opposite), 0);
    }
}

TEST(TownFile, ReadsAWayToARoomThatIsToldOfBefore) {
    const Town town = ReadTown("[room a]\n[room b]\nup: a\n");
    EXPECT_EQ(WayFrom(town.rooms[1], Direction::Up), 0);
    EXPECT_EQ(WayFrom(town.rooms[0], Direction::Down), 1);
}

TEST(TownFile, ReadsACreature) {
    const Town town = ReadTown("[room a]\n"
                               "[room b]\n"
                               "[creature rat]\n"
                               "name: the rat\n"
                               "sight: A rat sits.\n"
                               "room: b\n"
                               "life: 8\n"
                               "aim: 45\n"
                               "bite: 3\n"
                               "attacks\n"
                               "worst: mauls\n"
                               "blow: bites\n"
                               "graze: nips\n"
                               "miss: misses\n");
    ASSERT_EQ(town.kinds.size(), 1U);
    const Kind& rat = town.kinds[0];
    EXPECT_EQ(rat.id, "rat");
    EXPECT_EQ(rat.name, "the rat");
    EXPECT_EQ(rat.sight, "A rat sits.");
    EXPECT_EQ(rat.room, 1);
    EXPECT_EQ(rat.life, 8);
    EXPECT_EQ(rat.aim, 45);
    EXPECT_EQ(rat.bite, 3);
    EXPECT_TRUE(rat.attacks);
    EXPECT_EQ(rat.blows, (std::array<std::string, BlowCount>{"mauls", "bites", "nips", "misses"}));
}

TEST(TownFile, ReadsACreatureThatWaitsToBeAsked) {
    EXPECT_FALSE(ReadTown("[room a]\n[creature rat]\nroom: a\n").kinds.at(0).attacks);
}

TEST(TownFile, ReadsAThing) {
    const Town town = ReadTown("[room a]\n"
                               "[thing coat]\n"
                               "name: a coat\n"
                               "sight: A coat hangs.\n"
                               "look: Stiff.\n"
                               "home: a\n"
                               "endless\n"
                               "food: 5\n"
                               "eaten: You eat it.\n"
                               "worn: on your back\n"
                               "guard: 2\n");
    ASSERT_EQ(town.things.size(), 1U);
    const Thing& coat = town.things[0];
    EXPECT_EQ(coat.id, "coat");
    EXPECT_EQ(coat.name, "a coat");
    EXPECT_EQ(coat.sight, "A coat hangs.");
    EXPECT_EQ(coat.look, "Stiff.");
    EXPECT_EQ(coat.home, 0);
    EXPECT_TRUE(coat.endless);
    EXPECT_EQ(coat.food, 5);
    EXPECT_EQ(coat.eaten, "You eat it.");
    EXPECT_EQ(coat.worn, "on your back");
    EXPECT_EQ(coat.guard, 2);
}

TEST(TownFile, ReadsAThingThatIsGoodForNothing) {
    const Thing stone = ReadTown("[room a]\n[thing stone]\nhome: a\n").things.at(0);
    EXPECT_FALSE(stone.endless);
    EXPECT_EQ(stone.food, 0);
    EXPECT_EQ(stone.worn, "");
    EXPECT_EQ(stone.guard, 0);
}

TEST(TownFile, ReadsATopicWithItsParagraphs) {
    const Town town = ReadTown("[room a]\n"
                               "[help keypad]\n"
                               "about: walking\n"
                               "says: One.\n"
                               "says: Two: or three.\n");
    ASSERT_EQ(town.topics.size(), 1U);
    EXPECT_EQ(town.topics[0].word, "keypad");
    EXPECT_EQ(town.topics[0].about, "walking");
    EXPECT_EQ(town.topics[0].paragraphs, (std::vector<std::string>{"One.", "Two: or three."}));
}

TEST(TownFile, KeepsTheLinesOfATextAsTheyStand) {
    const Town town = ReadTown("[room a]\n"
                               "[text map]\n"
                               "|  a--b  \n"
                               "|\n"
                               "|# no remark: and no [head]\n"
                               "||\n");
    EXPECT_EQ(LinesOf(town, "map"),
              (std::vector<std::string>{"  a--b  ", "", "# no remark: and no [head]", "|"}));
}

TEST(TownFile, JoinsTextsOfTheSameName) {
    const Town town = ReadTown("[text map]\n|one\n[room a]\n[text map]\n|two\n");
    EXPECT_EQ(LinesOf(town, "map"), (std::vector<std::string>{"one", "two"}));
}

TEST(TownFile, HasNoTextThatIsNotInIt) {
    const Town town = ReadTown("[room a]\n[text map]\n|x\n");
    for (const char* name : {"", "Map", "ma", "flood"})
        EXPECT_THROW(LinesOf(town, name), std::out_of_range) << name;
}

struct ValueCase {
    const char* name;
    const char* lines;
    const char* prose;
};

void PrintTo(const ValueCase& row, std::ostream* out) { *out << row.name; }

class TownValues : public ::testing::TestWithParam<ValueCase> {};

TEST_P(TownValues, AreReadFromTheirLines) {
    const Town town = ReadTown("[room a]\n" + std::string(GetParam().lines));
    EXPECT_EQ(town.rooms.at(0).prose, GetParam().prose);
}

const ValueCase kValues[] = {
    {"OfOneLine", "prose: one two\n", "one two"},
    {"WithoutTheLastLineEnd", "prose: one two", "one two"},
    {"OfThreeLines", "prose: one\n two\n three\n", "one two three"},
    {"BrokenInTwoByARemark", "prose: one\n# a remark\n two\n", "one two"},
    {"BrokenInTwoByAnEmptyLine", "prose: one\n\n two\n", "one two"},
    {"WithBlanksAround", "prose:   one two   \n    three  \n", "one two three"},
    {"WithoutABlankBehindTheColon", "prose:one\n", "one"},
    {"WithMoreColons", "prose: one: two: three\n", "one: two: three"},
    {"WithBrackets", "prose: one\n [two]\n", "one [two]"},
    {"WithABarAndACross", "prose: one | #two\n |three\n", "one | #two |three"},
    {"OfNothing", "prose:\n", ""},
    {"OfBlanksAlone", "prose:    \n", ""},
    {"WithoutAColon", "prose\n", ""},
    {"ToldTwice", "prose: one\nprose: two\n", "two"},
    {"BeginningOnTheLineBelow", "prose:\n one\n", " one"},
};

INSTANTIATE_TEST_SUITE_P(All, TownValues, ::testing::ValuesIn(kValues),
                         [](const auto& row) { return std::string(row.param.name); });

std::string WhyRefused(std::string_view text) {
    try {
        ReadTown(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "taken";
}

struct RefusalCase {
    const char* name;
    const char* text;
    const char* why;
};

void PrintTo(const RefusalCase& row, std::ostream* out) { *out << row.name; }

class TownRefusals : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(TownRefusals, NameTheLineAndSayWhy) {
    EXPECT_EQ(WhyRefused(GetParam().text), GetParam().why);
}

const RefusalCase kRefusals[] = {
    {"OfNothing", "", "there is no room"},
    {"OfRemarksAlone", "# one\n\n# two\n", "there is no room"},
    {"OfATextAlone", "[text map]\n|x\n", "there is no room"},
    {"OfAFieldBeforeTheFirstHead", "# one\ntitle: A\n", "line 2: stands before the first head"},
    {"OfATextBeforeTheFirstHead", "|a\n[room a]\n", "line 1: stands before the first head"},
    {"OfAValueBeforeTheFirstHead", " a\n[room a]\n", "line 1: stands before the first head"},
    {"OfAHeadWithoutAName", "[room]\n", "line 1: a head is [kind name]"},
    {"OfAHeadWithoutAnEnd", "[room a]\n[room b\n", "line 2: a head is [kind name]"},
    {"OfAHeadWithMoreBehind", "[room a] b\n", "line 1: a head is [kind name]"},
    {"OfAHeadWithABlankBehind", "[room a] \n", "line 1: a head is [kind name]"},
    {"OfAnEmptyHead", "[]\n", "line 1: a head is [kind name]"},
    {"OfABracketAlone", "[\n", "line 1: a head is [kind name]"},
    {"OfAnUnknownKind", "[room a]\n\n[goose b]\n", "line 3: there is no kind goose"},
    {"OfAKindInCapitals", "[Room a]\n", "line 1: there is no kind Room"},
    {"OfAnEmptyKind", "[ room a]\n", "line 1: there is no kind "},
    {"OfAValueThatGoesOnWithNothing", "[room a]\n b\n", "line 2: goes on with nothing"},
    {"OfAnUnknownKeyOfARoom", "[room a]\ntitle: A\ncolour: red\n", "line 3: a room has no colour"},
    {"OfAKeyInCapitals", "[room a]\nTitle: A\n", "line 2: a room has no Title"},
    {"OfAKeyWithABlank", "[room a]\ntitle : A\n", "line 2: a room has no title "},
    {"OfAKeyBehindATab", "[room a]\n\ttitle: A\n", "line 2: a room has no \ttitle"},
    {"OfALetterForADirection", "[room a]\nn: b\n[room b]\n", "line 2: a room has no n"},
    {"OfATextLineInARoom", "[room a]\n|x\n", "line 2: a room has no "},
    {"OfACreaturesKeyInARoom", "[room a]\nbite: 3\n", "line 2: a room has no bite"},
    {"OfAWayOfACreature", "[room a]\n[creature b]\nnorth: a\n", "line 3: a creature has no north"},
    {"OfAnUnknownKeyOfACreature", "[room a]\n[creature b]\nhome: a\n",
     "line 3: a creature has no home"},
    {"OfAnUnknownKeyOfAThing", "[room a]\n[thing b]\nroom: a\n", "line 3: a thing has no room"},
    {"OfAnUnknownKeyOfATopic", "[room a]\n[help b]\ntitle: B\n", "line 3: a help has no title"},
    {"OfAFieldInAText", "[room a]\n[text b]\n|x\nabout: y\n",
     "line 4: each line of a text begins with |"},
    {"OfAWayToNoRoom", "[room a]\nnorth: b\n", "line 2: there is no room b"},
    {"OfAWayToARoomInCapitals", "[room a]\nnorth: B\n[room b]\n", "line 2: there is no room B"},
    {"OfAWayWithoutARoom", "[room a]\nnorth\n", "line 2: there is no room "},
    {"OfAWayThatIsTakenAlready", "[room a]\nnorth: b\nnorth: c\n[room b]\n[room c]\n",
     "line 3: there is a way already"},
    {"OfAWayThatIsToldFromBothEnds", "[room a]\nnorth: b\n[room b]\nsouth: a\n",
     "line 4: there is a way already"},
    {"OfAWayBackThatIsTakenAlready", "[room a]\nnorth: b\n[room c]\nnorth: b\n[room b]\n",
     "line 4: there is a way already"},
    {"OfACreatureInNoRoom", "[room a]\n[creature b]\nroom: c\n", "line 3: there is no room c"},
    {"OfAThingAtNoHome", "[room a]\n[thing b]\nhome:\n", "line 3: there is no room "},
    {"OfALifeInWords", "[room a]\n[creature b]\nlife: ten\n", "line 3: life takes a number"},
    {"OfALifeWithoutANumber", "[room a]\n[creature b]\nlife\n", "line 3: life takes a number"},
    {"OfANumberBelowZero", "[room a]\n[creature b]\naim: -1\n", "line 3: aim takes a number"},
    {"OfANumberWithMoreBehind", "[room a]\n[creature b]\nbite: 3 of 4\n",
     "line 3: bite takes a number"},
    {"OfANumberWithAPoint", "[room a]\n[thing b]\nfood: 1.5\n", "line 3: food takes a number"},
    {"OfANumberWithASign", "[room a]\n[thing b]\nguard: +1\n", "line 3: guard takes a number"},
    {"OfANumberBeyondAll", "[room a]\n[thing b]\nfood: 99999999999\n",
     "line 3: food takes a number"},
};

INSTANTIATE_TEST_SUITE_P(All, TownRefusals, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TownRefusals, CountTheLinesOfValuesRemarksAndTexts) {
    EXPECT_EQ(WhyRefused("# one\n\n[text map]\n|x\n[room a]\nprose: one\n two\ngoose\n"),
              "line 8: a room has no goose");
}

} // namespace
} // namespace world
