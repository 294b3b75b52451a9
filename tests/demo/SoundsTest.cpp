#include "Sounds.h"

#include "Scene.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace world {
namespace {

constexpr std::string_view kRoot = "http://127.0.0.1:8080/sounds/";

struct TriggerCase {
    const char* name;
    Cue cue;
    std::string_view root;
    const char* line;
};

void PrintTo(const TriggerCase& row, std::ostream* out) { *out << row.name; }

class SoundTriggers : public ::testing::TestWithParam<TriggerCase> {};

TEST_P(SoundTriggers, AreWrittenToTheByte) {
    EXPECT_EQ(Trigger(GetParam().cue, GetParam().root), GetParam().line);
}

const TriggerCase kTriggers[] = {
    {"WithEverything",
     {Sound::Thunder, 80, 60},
     kRoot,
     "!!SOUND(thunder.wav V=80 P=60 U=http://127.0.0.1:8080/sounds/thunder.wav )\r\n"},
    {"OfMusicWithEverything",
     {Sound::Tune, 100, 1},
     kRoot,
     "!!MUSIC(tune.mid V=100 P=1 U=http://127.0.0.1:8080/sounds/tune.mid )\r\n"},
    {"WithAnAddressAlone",
     {Sound::Rain},
     kRoot,
     "!!SOUND(rain.wav U=http://127.0.0.1:8080/sounds/rain.wav )\r\n"},
    {"WithAVolumeAlone", {Sound::Bell, 30, 0, false}, kRoot, "!!SOUND(bell.wav V=30 )\r\n"},
    {"WithAPriorityAlone", {Sound::Bell, 0, 7, false}, kRoot, "!!SOUND(bell.wav P=7 )\r\n"},
    {"WithANameAlone", {Sound::Bell, 0, 0, false}, kRoot, "!!SOUND(bell.wav )\r\n"},
    {"WithoutARoot", {Sound::Thunder, 80, 60}, "", "!!SOUND(thunder.wav V=80 P=60 )\r\n"},
    {"OfMusicWithoutARoot", {Sound::Tune}, "", "!!MUSIC(tune.mid )\r\n"},
};

INSTANTIATE_TEST_SUITE_P(All, SoundTriggers, ::testing::ValuesIn(kTriggers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SoundFileTable, StandsInTheOrderOfTheSoundsWithANameForEach) {
    std::set<std::string_view> names;
    ASSERT_EQ(SoundFiles().size(), 4U);
    for (std::size_t i = 0; i < SoundFiles().size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(SoundFiles()[i].sound), i);
        EXPECT_TRUE(names.insert(SoundFiles()[i].name).second) << SoundFiles()[i].name;
    }
}

TEST(SoundFileTable, HasNamesThatAClientReadsWhole) {
    for (const SoundFile& file : SoundFiles()) {
        EXPECT_EQ(file.name.find_first_of("VLPTU =)\r\n"), std::string_view::npos) << file.name;
        const bool isMusic = file.name.ends_with(".mid");
        EXPECT_TRUE(isMusic || file.name.ends_with(".wav")) << file.name;
        EXPECT_EQ(file.word, isMusic ? "!!MUSIC(" : "!!SOUND(") << file.name;
    }
    EXPECT_EQ(SoundPath.find_first_of("VLPTU =)\r\n"), std::string_view::npos);
}

TEST(Sounds, ComeAfterTheLineThatTellsOfThem) {
    Scene scene;
    scene.world.soundRoot = kRoot;
    Player& ada = scene.Join("Ada");
    TellWithSound(scene.world, ada, NoticeColour, "Ding.", {Sound::Bell, 50});
    EXPECT_EQ(Scene::Read(ada),
              "\x1b[0;1;37mDing.\r\n"
              "!!SOUND(bell.wav V=50 U=http://127.0.0.1:8080/sounds/bell.wav )\r\n");
}

TEST(Sounds, AreNotAskedForOfAClientThatHasNotAgreed) {
    for (const OptionState state : {OptionState::Off, OptionState::Asked, OptionState::Refused}) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.telnet.ours[SoundOption] = state;
        TellWithSound(scene.world, ada, NoticeColour, "Ding.", {Sound::Bell, 50});
        EXPECT_EQ(Scene::Read(ada), Line(NoticeColour, "Ding."));
    }
}

TEST(Sounds, AreNotShownToAClientThatHasNotAgreedAndItIsSaidWhy) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet = {};
    ShowSounds(scene.world, ada);
    EXPECT_EQ(
        Scene::Read(ada),
        Line(NoticeColour, "Some lines here are not for the eye: they name a sound to play.") +
            Line(ProseColour, "Your client has not agreed to that, so there are none for you."));
}

TEST(Sounds, AreStoppedByTheWordsThatDoSoBehindTheText) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Hush(ada);
    EXPECT_EQ(Scene::Read(ada), "\x1b[0;1;37mYou ask for silence, and get it."
                                "!!SOUND(Off)!!MUSIC(Off)\r\n");
}

TEST(Sounds, AreNotStoppedForAClientThatWouldShowTheWords) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet = {};
    Hush(ada);
    EXPECT_EQ(Scene::Read(ada), Line(NoticeColour, "You ask for silence, and get it."));
}

std::string ShownSounds(std::string_view root) {
    Scene scene;
    scene.world.soundRoot = root;
    Player& ada = scene.Join("Ada");
    ShowSounds(scene.world, ada);
    return Scene::Read(ada);
}

TEST(Sounds, AreShownInEveryFormToTheByte) {
    EXPECT_EQ(ShownSounds(kRoot),
              "\x1b[0;1;37mSome lines here are not for the eye: they name a sound to play.\r\n"
              "\x1b[0;37mA client that has the file plays it. One that has not may fetch it from "
              "the\r\n"
              "\x1b[0;37maddress, and plays it the next time.\r\n"
              "\x1b[0;36mMusic, with a volume, a priority and its address:\r\n"
              "!!MUSIC(tune.mid V=70 P=50 U=http://127.0.0.1:8080/sounds/tune.mid )\r\n"
              "\x1b[0;36mA bell, with a volume, a priority and its address:\r\n"
              "!!SOUND(bell.wav V=90 P=60 U=http://127.0.0.1:8080/sounds/bell.wav )\r\n"
              "\x1b[0;36mThunder, with a volume and its address:\r\n"
              "!!SOUND(thunder.wav V=80 U=http://127.0.0.1:8080/sounds/thunder.wav )\r\n"
              "\x1b[0;36mRain, with its address alone:\r\n"
              "!!SOUND(rain.wav U=http://127.0.0.1:8080/sounds/rain.wav )\r\n"
              "\x1b[0;36mThe bell again, softly, without an address:\r\n"
              "!!SOUND(bell.wav V=30 )\r\n"
              "\x1b[0;36mAnd once more, by its name alone:\r\n"
              "!!SOUND(bell.wav )\r\n");
}

TEST(Sounds, AreShownWithoutAddressesWhenNoneAreServedAndItIsSaidWhy) {
    const std::string shown = ShownSounds("");
    EXPECT_TRUE(Contains(shown, "Nothing can be fetched today, so no line has an address."));
    EXPECT_FALSE(Contains(ShownSounds(kRoot), "Nothing can be fetched"));
    EXPECT_EQ(AddressesIn(shown).size(), 0U);
    EXPECT_EQ(AddressesIn(ShownSounds(kRoot)).size(), 4U);
}

TEST(Sounds, AreShownSoThatAClientTakesEachForWhatItIs) {
    for (const std::string_view root : {kRoot, std::string_view()}) {
        const std::string shown = ShownSounds(root);
        EXPECT_TRUE(EveryLineHasItsColour(shown)) << "no trigger directly follows another";
        EXPECT_LT(shown.rfind(".mid"), shown.find("!!SOUND(")) << "music behind a wave";
        EXPECT_EQ(WithoutMistakableWaves(shown), shown);
    }
}

TEST(Sounds, AreFetchedOnceEachByOneShow) {
    const std::vector<std::string> addresses = AddressesIn(ShownSounds(kRoot));
    std::set<std::string> expected;
    for (const SoundFile& file : SoundFiles())
        expected.insert(std::string(kRoot) + std::string(file.name));
    EXPECT_EQ(std::set<std::string>(addresses.begin(), addresses.end()), expected);
    EXPECT_EQ(addresses.size(), expected.size());
}

struct MessageCase {
    const char* name;
    const char* lines;
    const char* left;
};

void PrintTo(const MessageCase& row, std::ostream* out) { *out << row.name; }

class MistakableWaves : public ::testing::TestWithParam<MessageCase> {};

TEST_P(MistakableWaves, AreLeftOut) {
    EXPECT_EQ(WithoutMistakableWaves(GetParam().lines), GetParam().left);
}

const MessageCase kMessages[] = {
    {"NotInAnEmptyMessage", "", ""},
    {"NotInText", "a\r\nb\r\n", "a\r\nb\r\n"},
    {"NotBeforeOtherText", "a\r\n!!SOUND(b.wav )\r\nc\r\n", "a\r\n!!SOUND(b.wav )\r\nc\r\n"},
    {"NotBehindMusic", "a\r\n!!MUSIC(b.mid )\r\nc\r\n!!SOUND(d.wav )\r\n",
     "a\r\n!!MUSIC(b.mid )\r\nc\r\n!!SOUND(d.wav )\r\n"},
    {"BeforeMusic", "a\r\n!!SOUND(b.wav )\r\nc\r\n!!MUSIC(d.mid )\r\n",
     "a\r\nc\r\n!!MUSIC(d.mid )\r\n"},
    {"BeforeSpeechWithTheMark", "a\r\n!!SOUND(b.wav )\r\nc.middle\r\n", "a\r\nc.middle\r\n"},
    {"BeforeTheLastMarkAll",
     "a\r\n!!SOUND(b.wav )\r\n.mid\r\n!!SOUND(c.wav )\r\nd\r\n.mid\r\n!!SOUND(e.wav )\r\n",
     "a\r\n.mid\r\nd\r\n.mid\r\n!!SOUND(e.wav )\r\n"},
    {"BeforeTheMarkInCapitalsNot", "!!SOUND(b.wav )\r\n.MID\r\n", "!!SOUND(b.wav )\r\n.MID\r\n"},
    {"AtTheFront", "!!SOUND(b.wav )\r\n.mid\r\n", ".mid\r\n"},
    {"WithinALineNot", "see !!SOUND(b.wav )\r\n.mid\r\n", "see !!SOUND(b.wav )\r\n.mid\r\n"},
    {"WithoutALineEndNot", "a\r\n!!SOUND(b.mid )", "a\r\n!!SOUND(b.mid )"},
    {"ThatHoldTheMarkThemselves", "!!SOUND(b.mid )\r\n", ""},
    {"ThatHoldTheMarkThemselvesAlone", "!!SOUND(b.mid )\r\n!!SOUND(c.wav )\r\n",
     "!!SOUND(c.wav )\r\n"},
};

INSTANTIATE_TEST_SUITE_P(All, MistakableWaves, ::testing::ValuesIn(kMessages),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
