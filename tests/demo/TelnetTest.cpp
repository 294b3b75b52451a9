#include "Telnet.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace world {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

// What a decoder made of all it was given.
struct Outcome {
    Lines lines;
    std::string replies;
    std::string terminal;
    int columns = 0;
    bool takesSounds = false;

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "lines " << ::testing::PrintToString(outcome.lines) << " replies "
         << ::testing::PrintToString(outcome.replies) << " terminal " << outcome.terminal
         << " columns " << outcome.columns << " sounds " << outcome.takesSounds;
}

Outcome DecodeInPieces(const Lines& pieces) {
    Telnet telnet;
    Opening(telnet);
    Outcome outcome;
    for (const std::string& piece : pieces) {
        TelnetInput input = Decode(telnet, piece);
        outcome.lines.insert(outcome.lines.end(), input.lines.begin(), input.lines.end());
        outcome.replies += input.replies;
    }
    outcome.terminal = telnet.terminal;
    outcome.columns = telnet.columns;
    outcome.takesSounds = TakesSounds(telnet);
    return outcome;
}

struct Case {
    const char* name;
    std::string bytes;
    Outcome outcome;
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.name; }

const std::string kSendTerminal = "\xff\xfa\x18\x01\xff\xf0"s;

const Case kCases[] = {
    {"NothingAtAll", "", {}},
    {"ALineEndedByCrAlone", "look\r", {{"look"}, "", "", 0}},
    {"ALineEndedByCrLf", "look\r\n", {{"look"}, "", "", 0}},
    {"ALineEndedByCrNul", "look\r\0"s, {{"look"}, "", "", 0}},
    {"ALineEndedByLf", "look\n", {{"look"}, "", "", 0}},
    {"TwoLinesEndedByCrAlone", "n\rs\r", {{"n", "s"}, "", "", 0}},
    {"TwoLinesEndedByCrLf", "n\r\ns\r\n", {{"n", "s"}, "", "", 0}},
    {"EmptyLines", "\r\r\n\n", {{"", "", ""}, "", "", 0}},
    {"ALineWithoutItsEnd", "loo", {}},
    {"ANulWithinALineIsDropped", "lo\0ok\r"s, {{"look"}, "", "", 0}},
    {"AnEscapedByte255IsData", "a\xff\xff"s + "b\r", {{"a\xff"s + "b"}, "", "", 0}},
    {"ACommandBetweenCrAndLfKeepsThemTogether", "a\r\xff\xf1\nb\r", {{"a", "b"}, "", "", 0}},
    {"NopAndGoAheadAreSilent", "\xff\xf1\xff\xf9x\r", {{"x"}, "", "", 0}},
    {"ATerminalTypeOfferIsFollowedByTheQuestion", "\xff\xfb\x18", {{}, kSendTerminal, "", 0}},
    {"ATerminalTypeOfferedTwiceIsAskedOnce",
     "\xff\xfb\x18\xff\xfb\x18",
     {{}, kSendTerminal, "", 0}},
    {"ATerminalTypeRefused", "\xff\xfc\x18", {}},
    {"ATerminalTypeOfferedAgainAfterARefusal",
     "\xff\xfc\x18\xff\xfb\x18",
     {{}, "\xff\xfd\x18" + kSendTerminal, "", 0}},
    {"ATerminalTypeTakenBackIsAgreedTo",
     "\xff\xfb\x18\xff\xfc\x18",
     {{}, kSendTerminal + "\xff\xfe\x18", "", 0}},
    {"TheTerminalWithoutItsOptionByte", "\xff\xfa\0DEC-VT100\xff\xf0"s, {{}, "", "DEC-VT100", 0}},
    {"TheTerminalInTheStandardForm", "\xff\xfa\x18\0XTERM\xff\xf0"s, {{}, "", "XTERM", 0}},
    {"TheTerminalAmidALine", "lo\xff\xfa\0VT\xff\xf0ok\r"s, {{"look"}, "", "VT", 0}},
    {"AControlCharacterInATerminalNameIsDropped", "\xff\xfa\0V\x1b[T\xff\xf0"s, {{}, "", "V[T", 0}},
    {"AWindowSizeOfferIsTaken", "\xff\xfb\x1f", {}},
    {"AWindowSize", "\xff\xfa\x1f\x01\x02\0\x18\xff\xf0"s, {{}, "", "", 258}},
    {"AWindowSizeWithAnEscapedByte", "\xff\xfa\x1f\0\xff\xff\0\x18\xff\xf0"s, {{}, "", "", 255}},
    {"AWindowSizeThatIsTooShort", "\xff\xfa\x1f\x01\xff\xf0"s, {}},
    {"AnEmptySubnegotiation", "\xff\xfa\xff\xf0y\r", {{"y"}, "", "", 0}},
    {"AnUnknownSubnegotiation", "\xff\xfa\x2a\x01z\xff\xf0y\r", {{"y"}, "", "", 0}},
    {"ASubnegotiationCutShortByACommand",
     "\xff\xfa\x18\0X\xff\xfb\x03y\r"s,
     {{"y"}, "\xff\xfe\x03", "", 0}},
    {"ASubnegotiationEndWithoutABeginning", "\xff\xf0y\r", {{"y"}, "", "", 0}},
    {"AnUnknownDoIsRefused", "\xff\xfd\x03", {{}, "\xff\xfc\x03", "", 0}},
    {"AnUnknownDoIsRefusedOnce",
     "\xff\xfd\x03\xff\xfd\x03\xff\xfd\x03",
     {{}, "\xff\xfc\x03", "", 0}},
    {"AnUnknownDoIsRefusedAgainAfterADont",
     "\xff\xfd\x03\xff\xfe\x03\xff\xfd\x03",
     {{}, "\xff\xfc\x03\xff\xfc\x03", "", 0}},
    {"AnUnknownWillIsRefused", "\xff\xfb\x03", {{}, "\xff\xfe\x03", "", 0}},
    {"AnUnknownWillIsRefusedOnce", "\xff\xfb\x03\xff\xfb\x03", {{}, "\xff\xfe\x03", "", 0}},
    {"ADontOfWhatIsOffIsSilent", "\xff\xfe\x03", {}},
    {"AWontOfWhatIsOffIsSilent", "\xff\xfc\x03", {}},
    {"SoundsThatAreAgreedToNeedNoWord", "\xff\xfd\x5a", {{}, "", "", 0, true}},
    {"SoundsThatAreAgreedToTwice", "\xff\xfd\x5a\xff\xfd\x5a", {{}, "", "", 0, true}},
    {"SoundsThatAreRefused", "\xff\xfe\x5a", {}},
    {"SoundsThatAreTakenBack", "\xff\xfd\x5a\xff\xfe\x5a", {{}, "\xff\xfc\x5a", "", 0}},
    {"SoundsThatTheOtherEndWouldAskForAreRefused", "\xff\xfb\x5a", {{}, "\xff\xfe\x5a", "", 0}},
    {"AnAnswerToAnotherOptionAgreesToNoSounds", "\xff\xfd\x59", {{}, "\xff\xfc\x59", "", 0}},
    {"OptionNumber255", "\xff\xfd\xff", {{}, "\xff\xfc\xff", "", 0}},
};

class WorldTelnetCases : public ::testing::TestWithParam<Case> {};

TEST_P(WorldTelnetCases, DecodesInOnePiece) {
    EXPECT_EQ(DecodeInPieces({GetParam().bytes}), GetParam().outcome);
}

TEST_P(WorldTelnetCases, DecodesTheSameCutAtEveryByte) {
    const std::string& bytes = GetParam().bytes;
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut)
        EXPECT_EQ(DecodeInPieces({bytes.substr(0, cut), bytes.substr(cut)}), GetParam().outcome)
            << "cut at " << cut;
}

TEST_P(WorldTelnetCases, DecodesTheSameByteByByte) {
    Lines pieces;
    for (const char byte : GetParam().bytes)
        pieces.emplace_back(1, byte);
    EXPECT_EQ(DecodeInPieces(pieces), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(All, WorldTelnetCases, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldTelnet, OpensWithTerminalTypeWindowSizeAndSounds) {
    Telnet telnet;
    EXPECT_EQ(Opening(telnet), "\xff\xfd\x18\xff\xfd\x1f\xff\xfb\x5a");
    EXPECT_FALSE(TakesSounds(telnet)) << "asked is not agreed";
}

TEST(WorldTelnet, TakesNoSoundsFromAnEndThatWasNeverAsked) {
    Telnet telnet;
    EXPECT_EQ(Decode(telnet, "\xff\xfd\x5a").replies, "\xff\xfc\x5a");
    EXPECT_FALSE(TakesSounds(telnet));
}

TEST(WorldTelnet, AnswersDoEchoWithWontWhenItIsUnknown) {
    Telnet telnet;
    EXPECT_EQ(Decode(telnet, "\xff\xfd\x01").replies, "\xff\xfc\x01");
}

TEST(WorldTelnet, TakesDoEchoInSilenceWhenItWasOffered) {
    Telnet telnet;
    EXPECT_EQ(HideTyping(telnet, true), "\xff\xfb\x01");
    EXPECT_EQ(Decode(telnet, "\xff\xfd\x01").replies, "");
    EXPECT_EQ(Decode(telnet, "\xff\xfd\x01").replies, "");
}

TEST(WorldTelnet, HidesTypingOnceAndShowsItOnce) {
    Telnet telnet;
    EXPECT_EQ(HideTyping(telnet, false), "");
    EXPECT_EQ(HideTyping(telnet, true), "\xff\xfb\x01");
    EXPECT_EQ(HideTyping(telnet, true), "");
    EXPECT_EQ(HideTyping(telnet, false), "\xff\xfc\x01");
    EXPECT_EQ(HideTyping(telnet, false), "");
}

TEST(WorldTelnet, OffersEchoOnlyOnceToAnEndThatRefuses) {
    Telnet telnet;
    HideTyping(telnet, true);
    EXPECT_EQ(Decode(telnet, "\xff\xfe\x01").replies, "");
    EXPECT_EQ(HideTyping(telnet, true), "");
    EXPECT_EQ(HideTyping(telnet, false), "") << "there is nothing to take back";
}

TEST(WorldTelnet, AgreesWhenEchoIsStoppedByTheOtherEnd) {
    Telnet telnet;
    HideTyping(telnet, true);
    Decode(telnet, "\xff\xfd\x01");
    EXPECT_EQ(Decode(telnet, "\xff\xfe\x01").replies, "\xff\xfc\x01");
    EXPECT_EQ(Decode(telnet, "\xff\xfe\x01").replies, "");
}

TEST(WorldTelnet, KeepsALineOf512BytesAndDropsTheRestUpToItsEnd) {
    for (const char* const rest : {"", "b", "bcd"}) {
        Telnet telnet;
        const Lines lines = Decode(telnet, std::string(512, 'a') + rest + "\rnext\r").lines;
        EXPECT_EQ(lines, (Lines{std::string(512, 'a'), "next"})) << rest;
    }
}

TEST(WorldTelnet, ALineWithoutEndTakesNoMoreMemory) {
    Telnet telnet;
    for (int i = 0; i < 1000; ++i)
        Decode(telnet, std::string(1000, 'x'));
    EXPECT_EQ(telnet.line.size(), MaxLine);
}

TEST(WorldTelnet, ASubnegotiationWithoutEndTakesNoMoreMemory) {
    Telnet telnet;
    Decode(telnet, "\xff\xfa\x18");
    for (int i = 0; i < 1000; ++i)
        Decode(telnet, std::string(1000, 'x'));
    EXPECT_EQ(telnet.sub.size(), MaxSubnegotiation);
    EXPECT_EQ(Decode(telnet, "\xff\xf0still here\r").lines, Lines{"still here"});
}

TEST(WorldTelnet, KeepsSixtyFourBytesOfASubnegotiation) {
    Telnet telnet;
    Decode(telnet, "\xff\xfa" + std::string(63, 'x'));
    EXPECT_EQ(telnet.sub, std::string(63, 'x'));
    Decode(telnet, "y");
    EXPECT_EQ(telnet.sub, std::string(63, 'x') + "y");
    Decode(telnet, "z");
    EXPECT_EQ(telnet.sub, std::string(63, 'x') + "y");
}

TEST(WorldTelnet, ATerminalNameIsKeptToFortyCharacters) {
    for (const std::size_t length : {40U, 41U, 60U}) {
        Telnet telnet;
        Decode(telnet, "\xff\xfa\0"s + std::string(length, 'T') + "\xff\xf0");
        EXPECT_EQ(telnet.terminal, std::string(40, 'T')) << length;
    }
}

TEST(WorldTelnet, TwoDecodersThatTalkToEachOtherFallSilent) {
    Telnet one;
    Telnet other;
    std::string toOther = Opening(one) + HideTyping(one, true);
    std::string toOne = Opening(other) + HideTyping(other, true);
    int exchanges = 0;
    while ((!toOne.empty() || !toOther.empty()) && exchanges < 20) {
        const std::string fromOne = Decode(one, toOne).replies;
        toOne = Decode(other, toOther).replies;
        toOther = fromOne;
        ++exchanges;
    }
    EXPECT_LT(exchanges, 5);
}

} // namespace
} // namespace world
