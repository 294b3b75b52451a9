#include "Talk.h"

#include "Scene.h"

#include <gtest/gtest.h>
#include <string>

namespace world {
namespace {

// Ada and Bob on the green, Far somewhere else, and one who is still at the gate.
struct Company : Scene {
    Player& ada = Join("Ada");
    Player& bob = Join("Bob");
    Player& far = Join("Far");
    Player& atTheGate = Connect();

    Company() { far.room = RoomNamed("bakehouse"); }
};

TEST(WorldTalk, SayReachesTheRoomAndNoOther) {
    Company company;
    EXPECT_EQ(company.Type(company.ada, "say Good  day, Bob!"),
              Line(SpeechColour, "You say: Good  day, Bob!"));
    EXPECT_EQ(Scene::Read(company.bob), Line(SpeechColour, "Ada says: Good  day, Bob!"));
    EXPECT_EQ(Scene::Read(company.far), "");
    EXPECT_EQ(Scene::Read(company.atTheGate), "");
}

TEST(WorldTalk, TellReachesOneAloneWhereverTheyAre) {
    Company company;
    EXPECT_EQ(company.Type(company.ada, "tell far Come  home."),
              Line(SpeechColour, "You tell Far: Come  home."));
    EXPECT_EQ(Scene::Read(company.far), Line(SpeechColour, "Ada tells you: Come  home."));
    EXPECT_EQ(Scene::Read(company.bob), "");
}

TEST(WorldTalk, AnEmoteIsReadByTheRoomAndByTheOneWhoDoesIt) {
    Company company;
    const std::string line = Line(PeopleColour, "Ada yawns at length.");
    EXPECT_EQ(company.Type(company.ada, "emote yawns at length."), line);
    EXPECT_EQ(Scene::Read(company.bob), line);
    EXPECT_EQ(Scene::Read(company.far), "");
}

struct NameCase {
    const char* name;
    const char* typed;
    bool reaches;
};

void PrintTo(const NameCase& row, std::ostream* out) { *out << row.name; }

class WorldTellNames : public ::testing::TestWithParam<NameCase> {};

TEST_P(WorldTellNames, ReachSomeoneOrNobody) {
    Company company;
    const std::string line = company.Type(company.ada, "tell " + std::string(GetParam().typed));
    EXPECT_EQ(Contains(line, "You tell Bob: hi"), GetParam().reaches);
    EXPECT_EQ(Scene::Read(company.bob),
              GetParam().reaches ? Line(SpeechColour, "Ada tells you: hi") : "");
}

const NameCase kNames[] = {
    {"AsItIsWritten", "Bob hi", true}, {"InSmallLetters", "bob hi", true},
    {"InCapitals", "BOB hi", true},    {"WithManyBlanksBehind", "bob    hi", true},
    {"HalfOfIt", "bo hi", false},      {"WithMoreBehind", "bobby hi", false},
    {"OfNobody", "zoe hi", false},     {"OfOneAtTheGate", "cy hi", false},
    {"WithoutWords", "bob", false},    {"WithBlanksForWords", "bob   ", false},
    {"NoneAtAll", "", false},          {"ThatIsNone", "b2 hi", false},
};

INSTANTIATE_TEST_SUITE_P(All, WorldTellNames, ::testing::ValuesIn(kNames),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldTalk, WhatCannotBeToldSaysWhy) {
    Company company;
    EXPECT_EQ(company.Type(company.ada, "tell zoe hi"),
              Line(ProseColour, "Nobody of that name is in the town."));
    EXPECT_EQ(company.Type(company.ada, "tell ada hi"),
              Line(ProseColour, "You tell yourself. You knew already."));
    for (const char* line : {"tell", "tell bob", "tell zoe"})
        EXPECT_EQ(company.Type(company.ada, line),
                  Line(ProseColour, "Tell whom what? \"tell ada good morning\" would do."))
            << line;
}

TEST(WorldTalk, OneWhoHasLeftIsToldNothing) {
    Company company;
    company.Type(company.bob, "quit");
    EXPECT_TRUE(Contains(company.Type(company.ada, "tell bob hi"), "Nobody of that name"));
    EXPECT_EQ(Scene::Read(company.bob), "");
}

TEST(WorldTalk, WithoutWordsNobodyHearsAnything) {
    Company company;
    EXPECT_EQ(company.Type(company.ada, "say "),
              Line(ProseColour, "You open your mouth and close it again."));
    EXPECT_EQ(company.Type(company.ada, "emote"),
              Line(ProseColour, "Do what? \"emote yawns\" would do."));
    EXPECT_EQ(Scene::Read(company.bob), "");
}

class WorldWaysToTalk : public ::testing::TestWithParam<const char*> {};

TEST_P(WorldWaysToTalk, StripWhatCouldSteerAnothersScreen) {
    Company company;
    company.Type(company.ada, std::string(GetParam()) + " a\x1b[0;31mb\x07\x7f\xff\xf9"
                                                        "c");
    const std::string heard = Scene::Read(company.bob);
    EXPECT_TRUE(heard.ends_with(" a[0;31mb\xf9"
                                "c\r\n"))
        << ::testing::PrintToString(heard);
    EXPECT_EQ(heard.rfind('\x1b'), 0U) << "the colour of the line alone";
}

TEST_P(WorldWaysToTalk, NeitherPlayNorStopASound) {
    for (const std::string words :
         {"!!SOUND(Off)!!MUSIC(Off)", "a!!SOUND(bell.wav )", "!\x07!SOUND(Off)"}) {
        Company company;
        const std::string echo = company.Type(company.ada, std::string(GetParam()) + ' ' + words);
        const std::string heard = Scene::Read(company.bob);
        EXPECT_TRUE(Contains(heard, "!SOUND(")) << heard;
        EXPECT_FALSE(Contains(heard, "!!")) << heard;
        EXPECT_FALSE(Contains(echo, "!!")) << "to the speaker neither: " << echo;
    }
}

TEST_P(WorldWaysToTalk, AreCutToTwoHundredCharacters) {
    Company company;
    company.Type(company.ada, std::string(GetParam()) + ' ' + std::string(500, 'x'));
    const std::string heard = Scene::Read(company.bob);
    EXPECT_TRUE(Contains(heard, std::string(150, 'x')));
    EXPECT_LE(heard.size(), Line(SpeechColour, "Ada tells you: ").size() + MaxSpeech);
}

INSTANTIATE_TEST_SUITE_P(All, WorldWaysToTalk, ::testing::Values("say", "tell bob", "emote"),
                         [](const auto& row) {
                             const std::string words = row.param;
                             return words.substr(0, words.find(' '));
                         });

TEST(WorldTalk, WhoListsThoseWhoPlayAndWhere) {
    Company company;
    company.atTheGate.name = "Cy";
    EXPECT_EQ(company.Type(company.ada, "who"), Line(NoticeColour, "In Quillmere at this hour:") +
                                                    Line(PeopleColour, "  Ada, Goose Green") +
                                                    Line(PeopleColour, "  Bob, Goose Green") +
                                                    Line(PeopleColour, "  Far, Bakehouse"));
}

} // namespace
} // namespace world
