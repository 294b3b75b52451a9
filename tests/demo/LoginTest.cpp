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
    Scene scene;
    Player& player = scene.Connect();
    Greet(scene.world, player);
    std::string expected = Line(TitleColour, "Q U I L L M E R E");
    for (const std::string& line : LinesOf(Quillmere(), "greeting"))
        expected += Line(ProseColour, line);
    EXPECT_EQ(player.lines, expected);
}

TEST(WorldLogin, ANewNameSetsItsPasswordAndEnters) {
    Scene scene;
    Player& player = scene.Connect();
    const std::string notice = scene.Type(player, "ada");
    EXPECT_TRUE(Contains(notice, "A new name."));
    EXPECT_TRUE(Contains(notice, "take one you use nowhere else."));
    EXPECT_EQ(player.stage, Stage::Password);
    const std::string welcome = scene.Type(player, "secret");
    EXPECT_TRUE(Contains(welcome, "Welcome to Quillmere, Ada."));
    for (const std::string& line : LinesOf(Quillmere(), "welcome"))
        EXPECT_TRUE(Contains(welcome, line)) << line;
    EXPECT_TRUE(Contains(welcome, RoomAt(scene.world, StartRoom).title));
    EXPECT_TRUE(EveryLineHasItsColour(welcome));
    EXPECT_EQ(player.stage, Stage::Playing);
    EXPECT_TRUE(IsPassword(scene.world.book.at("Ada"), "secret"));
    EXPECT_TRUE(scene.world.isBookChanged);
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
    scene.world.book["Ada"] = NewAccount("secret", 1);
    Player& player = scene.Connect();
    EXPECT_TRUE(Contains(scene.Type(player, "Ada"), "The book knows you, Ada."));
    EXPECT_TRUE(Contains(scene.Type(player, "Secret"), "That is not the word."));
    EXPECT_EQ(player.stage, Stage::Password);
    scene.Type(player, "secret");
    EXPECT_EQ(player.stage, Stage::Playing);
}

TEST(WorldLogin, ThreeWrongPasswordsCloseTheGate) {
    Scene scene;
    scene.world.book["Ada"] = NewAccount("secret", 1);
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
    EXPECT_FALSE(scene.world.book.contains("Ada"));
    EXPECT_FALSE(scene.world.isBookChanged);
}

TEST(WorldLogin, AnOlderConnectionOfTheSamePlayerGivesWay) {
    Scene scene;
    Player& older = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    scene.world.book["Ada"] = NewAccount("secret", 1);
    Player& newer = scene.Connect();
    scene.Type(newer, "ada");
    scene.Type(newer, "secret");
    EXPECT_EQ(older.stage, Stage::Gone);
    EXPECT_TRUE(Contains(Scene::Read(older), "by another door"));
    EXPECT_EQ(newer.stage, Stage::Playing);
    EXPECT_EQ(FindPlaying(scene.world, "Ada"), &newer);
    EXPECT_TRUE(Contains(Scene::Read(bob), "Ada flickers and is gone."));
}

TEST(WorldLogin, AKnownNameComesBackWithWhatItHad) {
    Scene scene;
    Player& first = scene.Connect();
    scene.Type(first, "ada");
    scene.Type(first, "secret");
    first.life = 7;
    first.carried = {scene.ThingNamed("apple")};
    scene.Type(first, "quit");
    Player& second = scene.Connect();
    scene.Type(second, "ada");
    EXPECT_EQ(second.life, MaxLife) << "a name without its password gets nothing";
    scene.Type(second, "secret");
    EXPECT_EQ(second.life, 7);
    EXPECT_EQ(second.carried, first.carried);
}

TEST(WorldLogin, OneWhoTakesAPlaceOverHasWhatThatOneHad) {
    Scene scene;
    Player& older = scene.Connect();
    scene.Type(older, "ada");
    scene.Type(older, "secret");
    older.kills = 3;
    older.worn = {scene.ThingNamed("hat")};
    Player& newer = scene.Connect();
    scene.Type(newer, "ada");
    scene.Type(newer, "secret");
    EXPECT_EQ(newer.kills, 3);
    EXPECT_EQ(newer.worn, older.worn);
}

TEST(WorldLogin, TwoWhoChooseTheSameNewNameAtOnceDoNotShareIt) {
    Scene scene;
    Player& quick = scene.Connect();
    Player& slow = scene.Connect();
    scene.Type(quick, "ada");
    scene.Type(slow, "ada");
    scene.Type(quick, "first");
    EXPECT_TRUE(Contains(scene.Type(slow, "second"), "That is not the word."));
    EXPECT_EQ(slow.stage, Stage::Password);
    EXPECT_EQ(quick.stage, Stage::Playing);
}

TEST(WorldLogin, ThePasswordIsTakenAsItIsTyped) {
    Scene scene;
    Player& player = scene.Connect();
    scene.Type(player, "ada");
    scene.Type(player, " Se cret ");
    const Account& account = scene.world.book.at("Ada");
    EXPECT_TRUE(IsPassword(account, " Se cret "));
    EXPECT_FALSE(IsPassword(account, "Se cret"));
}

struct TryCase {
    const char* name;
    Stage stage;
    const char* line;
    bool isTry;
};

void PrintTo(const TryCase& row, std::ostream* out) { *out << row.name; }

class WorldPasswordTries : public ::testing::TestWithParam<TryCase> {};

TEST_P(WorldPasswordTries, AreTheLinesThatAreHashed) {
    Player player;
    player.stage = GetParam().stage;
    EXPECT_EQ(IsPasswordTry(player, GetParam().line), GetParam().isTry);
}

const TryCase kTries[] = {
    {"AtThePassword", Stage::Password, "secret", true},
    {"OfBlanks", Stage::Password, "  ", true},
    {"WithoutAWordNot", Stage::Password, "", false},
    {"AtTheNameNot", Stage::Name, "ada", false},
    {"InTheTownNot", Stage::Playing, "look", false},
    {"AfterTheEndNot", Stage::Gone, "secret", false},
};

INSTANTIATE_TEST_SUITE_P(All, WorldPasswordTries, ::testing::ValuesIn(kTries),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldLogin, NewNamesAreHashedInTheRoundsOfTheWorld) {
    Scene scene;
    scene.world.hashRounds = 3;
    Player& player = scene.Connect();
    scene.Type(player, "ada");
    scene.Type(player, "secret");
    EXPECT_EQ(scene.world.book.at("Ada").rounds, 3);
    EXPECT_EQ(World().hashRounds, HashRounds);
}

TEST(WorldLogin, TheBookHoldsAThousandNames) {
    Scene scene;
    const Account account = NewAccount("x", 1);
    for (int i = 0; i < 999; ++i)
        scene.world.book[NameOf(i)] = account;
    ASSERT_EQ(scene.world.book.size(), 999U);
    Player& last = scene.Connect();
    Player& late = scene.Connect();
    scene.Type(last, "lastone");
    scene.Type(late, "lateone");
    scene.Type(last, "pw");
    EXPECT_EQ(last.stage, Stage::Playing);
    EXPECT_TRUE(Contains(scene.Type(late, "pw"), "The book at the gate is full."));
    EXPECT_EQ(late.stage, Stage::Name);
    EXPECT_TRUE(Contains(scene.Type(late, "another"), "The book at the gate is full."));
    EXPECT_EQ(scene.world.book.size(), MaxNames);
    scene.Type(late, NameOf(0));
    scene.Type(late, "x");
    EXPECT_EQ(late.stage, Stage::Playing) << "a name in the book still passes";
}

} // namespace
} // namespace world
