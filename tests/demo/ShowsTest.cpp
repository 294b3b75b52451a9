#include "Shows.h"

#include "Hamlet.h"
#include "Scene.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace world {
namespace {

TEST(WorldColours, AreShownToTheByte) {
    Scene scene;
    EXPECT_EQ(
        scene.Type(scene.Join("Ada"), "colours"),
        "\x1b[0;1;37mEach code in the colour that your client gives it:\r\n"
        "\x1b[0;37m\x1b[0;30m0;30m      \x1b[0;0;30m0;0;30m    \x1b[0;5;30m0;5;30m    "
        "\x1b[0;1;30m0;1;30m    \x1b[1;5;30m1;5;30m    \x1b[1;30m1;30m      \r\n"
        "\x1b[0;37m\x1b[0;31m0;31m      \x1b[0;0;31m0;0;31m    \x1b[0;5;31m0;5;31m    "
        "\x1b[0;1;31m0;1;31m    \x1b[1;5;31m1;5;31m    \x1b[1;31m1;31m      \r\n"
        "\x1b[0;37m\x1b[0;32m0;32m      \x1b[0;0;32m0;0;32m    \x1b[0;5;32m0;5;32m    "
        "\x1b[0;1;32m0;1;32m    \x1b[1;5;32m1;5;32m    \x1b[1;32m1;32m      \r\n"
        "\x1b[0;37m\x1b[0;33m0;33m      \x1b[0;0;33m0;0;33m    \x1b[0;5;33m0;5;33m    "
        "\x1b[0;1;33m0;1;33m    \x1b[1;5;33m1;5;33m    \x1b[1;33m1;33m      \r\n"
        "\x1b[0;37m\x1b[0;34m0;34m      \x1b[0;0;34m0;0;34m    \x1b[0;5;34m0;5;34m    "
        "\x1b[0;1;34m0;1;34m    \x1b[1;5;34m1;5;34m    \x1b[1;34m1;34m      \r\n"
        "\x1b[0;37m\x1b[0;35m0;35m      \x1b[0;0;35m0;0;35m    \x1b[0;5;35m0;5;35m    "
        "\x1b[0;1;35m0;1;35m    \x1b[1;5;35m1;5;35m    \x1b[1;35m1;35m      \r\n"
        "\x1b[0;37m\x1b[0;36m0;36m      \x1b[0;0;36m0;0;36m    \x1b[0;5;36m0;5;36m    "
        "\x1b[0;1;36m0;1;36m    \x1b[1;5;36m1;5;36m    \x1b[1;36m1;36m      \r\n"
        "\x1b[0;37m\x1b[0;37m0;37m      \x1b[0;0;37m0;0;37m    \x1b[0;5;37m0;5;37m    "
        "\x1b[0;1;37m0;1;37m    \x1b[1;5;37m1;5;37m    \x1b[1;37m1;37m      \r\n"
        "\x1b[0;37m\x1b[0m0m         \x1b[30m30m        \r\n"
        "\x1b[0;37mAny other code is white, 1;30m among them. Black is there, if you select it."
        "\r\n");
}

TEST(WorldColours, HaveTwoSpellings) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_EQ(scene.Type(ada, "colors"), scene.Type(ada, "colours"));
}

TEST(WorldColours, EachStandsBeforeItsOwnName) {
    Scene scene;
    const std::string shown = scene.Type(scene.Join("Ada"), "colours");
    int cells = 0;
    for (std::size_t at = 0; (at = shown.find("\x1b[", at)) != std::string::npos;) {
        at += 2;
        const std::string code = shown.substr(at, shown.find('m', at) + 1 - at);
        cells += shown.compare(at + code.size(), code.size(), code) == 0 ? 1 : 0;
    }
    EXPECT_EQ(cells, 6 * 8 + 2);
}

struct OptionCase {
    const char* name;
    OptionState state;
    const char* word;
};

void PrintTo(const OptionCase& row, std::ostream* out) { *out << row.name; }

class WorldOptions : public ::testing::TestWithParam<OptionCase> {};

std::string OptionLines(const std::map<int, std::string>& words) {
    return Line(NoticeColour, "Between your client and the world:") +
           Line(ProseColour, "  the world hides what you type (ECHO): " + words.at(1)) +
           Line(ProseColour, "  your client tells its terminal (TTYPE): " + words.at(24)) +
           Line(ProseColour, "  your client tells its window's size (NAWS): " + words.at(31)) +
           Line(ProseColour, "  the world asks for sounds (MSP): " + words.at(90));
}

// One option in some state, the others off: a line that told of another option would show.
TEST_P(WorldOptions, HaveAWordForEachState) {
    for (const int option : {1, 24, 31, 90}) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.telnet = {};
        const bool isOurs = option == 1 || option == 90;
        const auto place = static_cast<std::size_t>(option);
        (isOurs ? ada.telnet.ours : ada.telnet.theirs)[place] = GetParam().state;
        std::map<int, std::string> words = {{1, "off"}, {24, "off"}, {31, "off"}, {90, "off"}};
        words[option] = GetParam().word;
        EXPECT_EQ(scene.Type(ada, "options"), OptionLines(words)) << option;
    }
}

const OptionCase kOptions[] = {
    {"Off", OptionState::Off, "off"},
    {"Asked", OptionState::Asked, "asked, no answer yet"},
    {"On", OptionState::On, "agreed"},
    {"Refused", OptionState::Refused, "refused"},
};

INSTANTIATE_TEST_SUITE_P(All, WorldOptions, ::testing::ValuesIn(kOptions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldOptionsShow, TellsTheTerminalAndTheWidthThatAreKnown) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string unknown = scene.Type(ada, "options");
    ada.telnet.terminal = "DEC-VT100";
    const std::string terminal = Line(ProseColour, "  Your terminal is a DEC-VT100.");
    EXPECT_EQ(scene.Type(ada, "options"), unknown + terminal);
    ada.telnet.columns = 132;
    const std::string width = Line(ProseColour, "  Your window is 132 columns wide.");
    EXPECT_EQ(scene.Type(ada, "options"), unknown + terminal + width);
}

TEST(WorldOptionsShow, FollowsTheTalkOfTheTwoEnds) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet = {};
    Opening(ada.telnet);
    const std::string asked = "asked, no answer yet";
    EXPECT_EQ(scene.Type(ada, "options"),
              OptionLines({{1, "off"}, {24, asked}, {31, asked}, {90, asked}}));
    Decode(ada.telnet, "\xff\xfb\x18\xff\xfc\x1f\xff\xfd\x5a");
    EXPECT_EQ(scene.Type(ada, "options"),
              OptionLines({{1, "off"}, {24, "agreed"}, {31, "refused"}, {90, "agreed"}}));
}

TEST(WorldProbe, IsAskedForWithAWordAndAnsweredByTheClientsName) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_EQ(scene.Type(ada, "probe"),
              Line(NoticeColour, "The porter asks your client for its name."));
    EXPECT_EQ(ada.probe, ProbeState::Wanted);
    ada.probe = ProbeState::Sent;
    EXPECT_EQ(scene.Type(ada, "SMWCLIENT"),
              Line(NoticeColour, "It answers: SMWCLIENT. It shows colours, then."));
    EXPECT_EQ(ada.probe, ProbeState::None);
}

constexpr std::string_view kUnknown = "The geese look blank.";

TEST(WorldProbe, AnAnswerThatWasNotAskedForIsAWordLikeOthers) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    for (const ProbeState state : {ProbeState::None, ProbeState::Wanted}) {
        ada.probe = state;
        EXPECT_TRUE(Contains(scene.Type(ada, "SMWCLIENT"), kUnknown));
        EXPECT_EQ(ada.probe, state);
    }
    ada.probe = ProbeState::Sent;
    scene.Type(ada, "SMWCLIENT");
    EXPECT_TRUE(Contains(scene.Type(ada, "SMWCLIENT"), kUnknown)) << "once asked, once answered";
}

TEST(WorldProbe, OtherLinesAreCarriedOutWhileTheAnswerIsOnItsWay) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.probe = ProbeState::Sent;
    for (const char* line : {"smwclient", "SMWCLIENT2", "say SMWCLIENT", "n"})
        EXPECT_FALSE(Contains(scene.Type(ada, line), "It answers")) << line;
    EXPECT_EQ(ada.room, scene.RoomNamed("gate"));
    EXPECT_EQ(ada.probe, ProbeState::Sent);
}

TEST(WorldProbe, AClientThatAnswersAtTheGateIsTakenForSomeoneWithThatName) {
    Scene scene;
    Player& player = scene.Connect();
    player.probe = ProbeState::Sent;
    scene.Type(player, "SMWCLIENT");
    EXPECT_EQ(player.name, "Smwclient");
}

struct FloodCase {
    const char* name;
    const char* typed;
    std::size_t bytes; // 0 when it is refused
};

void PrintTo(const FloodCase& row, std::ostream* out) { *out << row.name; }

class WorldFloods : public ::testing::TestWithParam<FloodCase> {};

TEST_P(WorldFloods, BeginOrNot) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string read = scene.Type(ada, GetParam().typed);
    EXPECT_EQ(ada.flood, GetParam().bytes);
    const std::string refusal =
        Line(ProseColour, "\"flood 100\" sends a hundred kilobytes; 1 to 100000 can be had.");
    EXPECT_EQ(read, GetParam().bytes == 0 ? refusal : "");
}

const FloodCase kFloods[] = {
    {"OfTheLeast", "flood 1", 1024},       {"OfTheMost", "flood 100000", 102400000},
    {"OfAHundred", "FLOOD  100 ", 102400}, {"WithZerosBefore", "flood 007", 7168},
    {"OfNothing", "flood 0", 0},           {"OfOneTooMany", "flood 100001", 0},
    {"BelowNothing", "flood -1", 0},       {"WithoutANumber", "flood", 0},
    {"InWords", "flood ten", 0},           {"WithAUnit", "flood 10k", 0},
    {"WithAPoint", "flood 1.5", 0},        {"WithASign", "flood +5", 0},
    {"OfTwoNumbers", "flood 1 2", 0},      {"BeyondAllNumbers", "flood 99999999999999999999", 0},
};

INSTANTIATE_TEST_SUITE_P(All, WorldFloods, ::testing::ValuesIn(kFloods),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldFlood, AsksForOneAloneAndMayBeAskedForAnew) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    scene.Type(ada, "flood 100");
    scene.Type(ada, "flood 2");
    EXPECT_EQ(ada.flood, 2048U);
    EXPECT_EQ(bob.flood, 0U);
    scene.Type(ada, "flood lots");
    EXPECT_EQ(ada.flood, 2048U) << "a bad number changes nothing";
}

constexpr std::string_view kEnd = "\x1b[0;1;37mThe flood is over.\r\n";

// All pieces of a flood in one, without its last line. Each but the last is as long as it should
// be.
std::string Drain(const Town& town, Player& player) {
    std::string flood;
    while (player.flood > 0) {
        const std::string piece = TakeFlood(town, player);
        const bool isLast = piece.ends_with(kEnd);
        EXPECT_EQ(isLast, player.flood == 0);
        EXPECT_TRUE(EveryLineHasItsColour(piece));
        EXPECT_LT(piece.size(), FloodPiece + 200);
        EXPECT_TRUE(isLast || piece.size() >= FloodPiece);
        flood += piece;
        if (piece.empty())
            break;
    }
    EXPECT_TRUE(flood.ends_with(kEnd));
    return flood.substr(0, flood.size() - std::min(flood.size(), kEnd.size()));
}

TEST(WorldFlood, HasTheWishedSizeUpToTheEndOfALine) {
    for (const std::size_t kilobytes : {1U, 15U, 16U, 17U, 100U, 1000U}) {
        Player player;
        player.flood = kilobytes * 1024;
        const std::string flood = Drain(Quillmere(), player);
        EXPECT_GE(flood.size(), kilobytes * 1024);
        EXPECT_LT(flood.size(), kilobytes * 1024 + 200);
    }
}

TEST(WorldFlood, IsMadeOfTheSentencesOfTheTownInManyColours) {
    Player player;
    player.flood = 64 * 1024;
    const std::string flood = Drain(Quillmere(), player);
    std::map<std::string, int> colours;
    std::map<std::string, int> sentences;
    for (std::size_t begin = 0; begin < flood.size();) {
        const std::size_t end = flood.find("\r\n", begin);
        const std::size_t text = flood.find('m', begin) + 1;
        ++colours[flood.substr(begin, text - begin)];
        ++sentences[flood.substr(text, end - text)];
        begin = end + 2;
    }
    EXPECT_GE(colours.size(), 3U);
    EXPECT_EQ(sentences.size(), LinesOf(Quillmere(), "flood").size());
    for (const std::string& line : LinesOf(Quillmere(), "flood"))
        EXPECT_TRUE(sentences.contains(line)) << line;
}

TEST(WorldFlood, OfATownWithOneShortSentenceEndsToo) {
    Player player;
    player.flood = 1;
    EXPECT_EQ(Drain(Hamlet(), player).substr(std::string(ProseColour).size() - 1, 1), "m");
    player.flood = 40 * 1024;
    EXPECT_GE(Drain(Hamlet(), player).size(), 40U * 1024);
}

TEST(WorldFlood, EndsWithTheOneWhoLeaves) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    scene.Type(ada, "flood 100");
    scene.Type(ada, "quit");
    EXPECT_EQ(ada.flood, 0U);
}

} // namespace
} // namespace world
