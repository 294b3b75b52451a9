#include "Login.h"

#include "Scene.h"

#include <gtest/gtest.h>
#include <string>

namespace world {
namespace {

std::string NameOf(int number) {
    std::string name = "Na";
    for (; number > 0; number /= 26)
        name += static_cast<char>('a' + number % 26);
    return name + "x";
}

TEST(WorldLogin, GreetsInColour) {
    Player player;
    Greet(player);
    EXPECT_TRUE(Contains(player.lines, "Q U I L L M E R E"));
    EXPECT_TRUE(EveryLineHasItsColour(player.lines));
}

TEST(WorldLogin, ANewNameSetsItsPasswordAndEnters) {
    Scene scene;
    Player& player = scene.Connect();
    EXPECT_TRUE(Contains(scene.Type(player, "ada"), "A new name."));
    EXPECT_EQ(player.stage, Stage::Password);
    const std::string welcome = scene.Type(player, "secret");
    EXPECT_TRUE(Contains(welcome, "Welcome to Quillmere, Ada."));
    EXPECT_TRUE(Contains(welcome, Rooms()[StartRoom].title));
    EXPECT_TRUE(EveryLineHasItsColour(welcome));
    EXPECT_EQ(player.stage, Stage::Playing);
    EXPECT_EQ(scene.world.passwords.at("Ada"), "secret");
}

TEST(WorldLogin, AnEmptyLineOnlyAsksForTheNameAgain) {
    Scene scene;
    Player& player = scene.Connect();
    player.wantsPrompt = false;
    EXPECT_EQ(scene.Type(player, ""), "");
    EXPECT_TRUE(player.wantsPrompt);
    EXPECT_EQ(player.stage, Stage::Name);
}

struct NameCase {
    const char* name;
    std::string typed;
    std::string taken; // empty when refused
};

void PrintTo(const NameCase& row, std::ostream* out) { *out << row.name; }

class WorldNames : public ::testing::TestWithParam<NameCase> {};

TEST_P(WorldNames, AreTakenOrRefused) {
    Scene scene;
    Player& player = scene.Connect();
    scene.Type(player, GetParam().typed);
    EXPECT_EQ(player.name, GetParam().taken);
    EXPECT_EQ(player.stage, GetParam().taken.empty() ? Stage::Name : Stage::Password);
}

const NameCase kNames[] = {
    {"InSmallLetters", "ada", "Ada"},
    {"InCapitals", "ADA", "Ada"},
    {"WithBlanksAround", "  ada ", "Ada"},
    {"OfTwoLetters", "jo", "Jo"},
    {"OfSixteenLetters", "abcdefghijklmnop", "Abcdefghijklmnop"},
    {"OfOneLetter", "a", ""},
    {"OfSeventeenLetters", "abcdefghijklmnopq", ""},
    {"WithADigit", "ada2", ""},
    {"OfTwoWords", "ada bob", ""},
    {"WithAnAccent", "ad\xe1", ""},
    {"OfControlCharactersOnly", "\x1b\x07", ""},
};

INSTANTIATE_TEST_SUITE_P(All, WorldNames, ::testing::ValuesIn(kNames),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldLogin, AKnownNameNeedsItsPassword) {
    Scene scene;
    scene.world.passwords["Ada"] = "secret";
    Player& player = scene.Connect();
    EXPECT_TRUE(Contains(scene.Type(player, "Ada"), "The book knows you, Ada."));
    EXPECT_TRUE(Contains(scene.Type(player, "Secret"), "That is not the word."));
    EXPECT_EQ(player.stage, Stage::Password);
    scene.Type(player, "secret");
    EXPECT_EQ(player.stage, Stage::Playing);
}

TEST(WorldLogin, ThreeWrongPasswordsCloseTheGate) {
    Scene scene;
    scene.world.passwords["Ada"] = "secret";
    Player& player = scene.Connect();
    scene.Type(player, "ada");
    scene.Type(player, "one");
    scene.Type(player, "two");
    EXPECT_EQ(player.stage, Stage::Password);
    EXPECT_TRUE(Contains(scene.Type(player, "three"), "The gate stays shut."));
    EXPECT_EQ(player.stage, Stage::Gone);
    EXPECT_EQ(scene.Type(player, "secret"), "") << "one who is gone is not heard";
}

TEST(WorldLogin, AnEmptyPasswordNeitherCountsNorSets) {
    Scene scene;
    Player& player = scene.Connect();
    scene.Type(player, "ada");
    for (int i = 0; i < 5; ++i)
        scene.Type(player, "");
    EXPECT_EQ(player.stage, Stage::Password);
    EXPECT_FALSE(scene.world.passwords.contains("Ada"));
}

TEST(WorldLogin, AnOlderConnectionOfTheSamePlayerGivesWay) {
    Scene scene;
    Player& older = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    scene.world.passwords["Ada"] = "secret";
    Player& newer = scene.Connect();
    scene.Type(newer, "ada");
    scene.Type(newer, "secret");
    EXPECT_EQ(older.stage, Stage::Gone);
    EXPECT_TRUE(Contains(Scene::Read(older), "by another door"));
    EXPECT_EQ(newer.stage, Stage::Playing);
    EXPECT_EQ(FindPlaying(scene.world, "Ada"), &newer);
    EXPECT_TRUE(Contains(Scene::Read(bob), "Ada flickers and is gone."));
}

TEST(WorldLogin, TheBookHoldsTwoHundredNames) {
    Scene scene;
    for (int i = 0; i < 199; ++i)
        scene.world.passwords[NameOf(i)] = "x";
    ASSERT_EQ(scene.world.passwords.size(), 199U);
    Player& last = scene.Connect();
    Player& late = scene.Connect();
    scene.Type(last, "lastone");
    scene.Type(late, "lateone");
    scene.Type(last, "pw");
    EXPECT_EQ(last.stage, Stage::Playing);
    EXPECT_TRUE(Contains(scene.Type(late, "pw"), "The book at the gate is full."));
    EXPECT_EQ(late.stage, Stage::Name);
    EXPECT_TRUE(Contains(scene.Type(late, "another"), "The book at the gate is full."));
    EXPECT_EQ(scene.world.passwords.size(), MaxNames);
    scene.Type(late, NameOf(0));
    scene.Type(late, "x");
    EXPECT_EQ(late.stage, Stage::Playing) << "a name in the book still passes";
}

} // namespace
} // namespace world
