#include "net/Telnet.h"

#include "base/Error.h"
#include "support/ErrorOf.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace mw {
namespace {

// What one arrival leaves as text, and the answers it got, send by send.
struct Scanned {
    std::string Text;
    std::vector<std::string> Answers;

    bool operator==(const Scanned&) const = default;
};

void PrintTo(const Scanned& scanned, std::ostream* out) {
    *out << testing::PrintToString(scanned.Text) << ", answers "
         << testing::PrintToString(scanned.Answers);
}

Scanned Receive(std::string_view chunk) {
    Scanned scanned;
    scanned.Text = ScanTelnet(
        chunk, [&scanned](std::string_view bytes) { scanned.Answers.emplace_back(bytes); });
    return scanned;
}

// What the stream leaves when it comes in two arrivals, the first of that many bytes.
Scanned ReceiveInTwo(std::string_view stream, std::size_t first) {
    Scanned both = Receive(stream.substr(0, first));
    const Scanned second = Receive(stream.substr(first));
    both.Text += second.Text;
    both.Answers.insert(both.Answers.end(), second.Answers.begin(), second.Answers.end());
    return both;
}

// A byte behind what matters: it is the last one and is lost.
const std::string kLost = "\r";

const std::string kTerminalTypeReply = "\xff\xfa\0DEC-VT100\xff\xf0"s;

std::string Command(int command, int option) {
    return {'\xff', static_cast<char>(command), static_cast<char>(option)};
}

struct Case {
    const char* Name;
    std::string Chunk;
    Scanned Expected;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.Name; }

std::string NameOf(const testing::TestParamInfo<Case>& info) { return info.param.Name; }

class TelnetScan : public testing::TestWithParam<Case> {};

TEST_P(TelnetScan, LeavesTheTextAndAnswers) {
    EXPECT_EQ(Receive(GetParam().Chunk), GetParam().Expected);
}

const Case kText[] = {
    {"AnEmptyChunkGivesNothing", "", {"", {}}},
    {"AChunkOfOneIsLost", "a", {"", {}}},
    {"AChunkOfOneIacIsLost", "\xff", {"", {}}},
    {"TheLastByteIsLostOnPurpose", "abc", {"ab", {}}},
    {"ControlCharactersAreText", "\0\a\t\r\n\x1b[0m\x7f."s, {"\0\a\t\r\n\x1b[0m\x7f"s, {}}},
    {"HighBytesBelowIacAreText", "\x80\xf0\xf9\xfa\xfd\xfe.", {"\x80\xf0\xf9\xfa\xfd\xfe", {}}},
    {"ADoubledIacIsOneCharacter", "a\xff\xff"s + "b.", {"a\xff"s + "b", {}}},
    {"TwoDoubledIacsAreTwoCharacters", "\xff\xff\xff\xff.", {"\xff\xff", {}}},
    {"AnEscapedIacStartsNoCommand", "\xff\xff\xfd\x01.", {"\xff\xfd\x01", {}}},
    {"GoAheadLeavesNoTrace", "a\xff\xf9"s + "b.", {"ab", {}}},
    {"EndOfSubnegotiationAloneLeavesNoTrace", "a\xff\xf0"s + "b.", {"ab", {}}},
    {"AnyOtherCommandIsDroppedWithItsIac", "a\xff\x01"s + "b\xff\0c."s, {"abc", {}}},
    {"TheCommandBelowSubnegotiationIsDropped", "\xff\xf9x.", {"x", {}}},
};

INSTANTIATE_TEST_SUITE_P(Text, TelnetScan, testing::ValuesIn(kText), NameOf);

const Case kEnds[] = {
    {"IacLast", "ab\xff", {"ab", {}}},
    {"IacAndCommandLast", "ab\xff\xfd", {"ab", {}}},
    {"IacAndCommandAlone", "\xff\xfd", {"", {}}},
    {"EscapedIacAlone", "\xff\xff", {"\xff", {}}},
    {"EscapedIacLast", "ab\xff\xff", {"ab\xff", {}}},
    {"GoAheadLast", "ab\xff\xf9", {"ab", {}}},
    {"AWholeChunkDoEchoIsAnswered", "\xff\xfd\x01", {"", {"\xff\xfb\x01"}}},
    {"DoEchoLastIsAnswered", "ab\xff\xfd\x01", {"ab", {"\xff\xfb\x01"}}},
    {"WillLast", "\xff\xfb", {"", {}}},
    {"DontLast", "ab\xff\xfe", {"ab", {}}},
    {"WontLast", "ab\xff\xfc", {"ab", {}}},
    {"SubnegotiationLast", "ab\xff\xfa", {"ab", {}}},
    {"SubnegotiationCutBeforeItsSubCommand", "ab\xff\xfa\x18", {"ab", {}}},
    {"SubnegotiationCutBehindItsSubCommand", "ab\xff\xfa\x18\x01", {"ab", {kTerminalTypeReply}}},
    {"SubnegotiationCutBeforeItsEnd", "\xff\xfa\x18\x01\xff", {"", {kTerminalTypeReply}}},
    {"TextBehindTheLastCommandIsLost", "\xff\xfd\x01x", {"", {"\xff\xfb\x01"}}},
};

INSTANTIATE_TEST_SUITE_P(TheEndOfAChunk, TelnetScan, testing::ValuesIn(kEnds), NameOf);

const Case kSubnegotiations[] = {
    {"TerminalTypeIsAnsweredAndLeavesNothing",
     "\xff\xfa\x18\x01\xff\xf0",
     {"", {kTerminalTypeReply}}},
    {"TheSubCommandIsIgnored", "\xff\xfa\x18\x07\xff\xf0.", {"", {kTerminalTypeReply}}},
    {"AnIacAsSubCommandIsReadAndIgnored",
     "\xff\xfa\x18\xff\xf0"s + "a.",
     {"\xf0"s + "a", {kTerminalTypeReply}}},
    {"AnIacAsOptionIsAnOption", "\xff\xfa\xff\x01"s + "a.", {"a", {}}},
    {"OtherOptionsAreIgnored", "\xff\xfa\x1f\x01\xff\xf0.", {"", {}}},
    {"AgreedOptionsAreIgnoredToo", "\xff\xfa\x01\x01\xff\xf0\xff\xfa\0\x01\xff\xf0."s, {"", {}}},
    {"TheSoundProtocolIsIgnored", "\xff\xfa\x5a\x01\xff\xf0.", {"", {}}},
    {"TheRestUpToTheEndIsTextOnPurpose",
     "\xff\xfa\x18\x01rest\xff\xf0 more.",
     {"rest more", {kTerminalTypeReply}}},
    {"AnEmptySubnegotiationTakesItsEndForOptionAndSubCommand",
     "\xff\xfa\xff\xf0"s + "a.",
     {"a", {}}},
    {"AnotherSubnegotiationInsideIsRead",
     "\xff\xfa\x1f\x01\xff\xfa\x18\x01\xff\xf0.",
     {"", {kTerminalTypeReply}}},
};

INSTANTIATE_TEST_SUITE_P(Subnegotiation, TelnetScan, testing::ValuesIn(kSubnegotiations), NameOf);

TEST(TerminalTypeReply, IsFourteenBytesWithoutItsOptionOnPurpose) {
    const Scanned scanned = Receive("\xff\xfa\x18\x01\xff\xf0");
    ASSERT_EQ(scanned.Answers.size(), 1u);
    std::vector<int> bytes;
    for (const char c : scanned.Answers[0])
        bytes.push_back(static_cast<unsigned char>(c));
    EXPECT_EQ(bytes, (std::vector<int>{255, 250, 0, 'D', 'E', 'C', '-', 'V', 'T', '1', '0', '0',
                                       255, 240}));
}

// The answers to DO, WILL, WONT and DONT; 0 for none.
struct Negotiation {
    const char* Name;
    int Command;
    int AnswerWhenAgreed;
    int AnswerWhenNot;
};

void PrintTo(const Negotiation& n, std::ostream* out) { *out << n.Name; }

const Negotiation kNegotiations[] = {
    {"Do", 253, 251, 252},
    {"Will", 251, 253, 254},
    {"Wont", 252, 0, 0},
    {"Dont", 254, 0, 0},
};

class TelnetAnswers : public testing::TestWithParam<Negotiation> {};

TEST_P(TelnetAnswers, AgreeToFourOptionsAndRefuseAllOthers) {
    const Negotiation& n = GetParam();
    for (int option = 0; option < 256; ++option) {
        const bool agreed = option == 0 || option == 1 || option == 24 || option == 90;
        const int answer = agreed ? n.AnswerWhenAgreed : n.AnswerWhenNot;
        Scanned expected{"ab", {}};
        if (answer != 0)
            expected.Answers = {Command(answer, option)};
        EXPECT_EQ(Receive("a" + Command(n.Command, option) + "b" + kLost), expected)
            << "option " << option;
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, TelnetAnswers, testing::ValuesIn(kNegotiations),
                         [](const auto& row) { return row.param.Name; });

TEST(TelnetAnswer, ToDoWindowSizeIsWont) {
    EXPECT_EQ(Receive("\xff\xfd\x1f.").Answers, std::vector<std::string>{"\xff\xfc\x1f"});
}

TEST(TelnetAnswer, ToWillSuppressGoAheadIsDont) {
    EXPECT_EQ(Receive("\xff\xfb\x03.").Answers, std::vector<std::string>{"\xff\xfe\x03"});
}

TEST(TelnetAnswer, IsTheSameEachTimeTheRequestArrives) {
    const std::string request = "\xff\xfd\x01";
    const std::string answer = "\xff\xfb\x01";
    EXPECT_EQ(Receive(request + request + request + kLost).Answers,
              (std::vector<std::string>{answer, answer, answer}));
    EXPECT_EQ(Receive(request + kLost).Answers, std::vector<std::string>{answer});
}

TEST(TelnetAnswer, IsASendOfItsOwnInTheOrderOfTheRequests) {
    EXPECT_EQ(
        Receive("\xff\xfd\x18login\xff\xfb\x01\xff\xfa\x18\x01\xff\xf0\xff\xfd\x1f."),
        (Scanned{"login", {"\xff\xfb\x18", "\xff\xfd\x01", kTerminalTypeReply, "\xff\xfc\x1f"}}));
}

// Something to cut: text, an option request, an escaped IAC and a go ahead. Each row gives what
// becomes of it when it comes in two arrivals, the first of that many bytes.
const std::string kStream = "a\xff\xfd\x01"s + "b\xff\xff"s + "c\xff\xf9"s + "d.";

struct Cut {
    std::size_t First;
    const char* What;
    Scanned Expected;
};

const std::string kWillEcho = "\xff\xfb\x01";

const Cut kCuts[] = {
    {0, "uncut", {"ab\xff"s + "cd", {kWillEcho}}},
    {1, "text loses its last byte", {"b\xff"s + "cd", {kWillEcho}}},
    {2, "the IAC is lost, the rest of the command is text", {"a\xfd\x01"s + "b\xff"s + "cd", {}}},
    {3, "the command is dropped, its option is text", {"a\x01"s + "b\xff"s + "cd", {}}},
    {4, "the last byte is read by the command", {"ab\xff"s + "cd", {kWillEcho}}},
    {5, "text loses its last byte", {"a\xff"s + "cd", {kWillEcho}}},
    {6, "the first IAC of two is lost, the second takes the text", {"abd", {kWillEcho}}},
    {7, "the last byte is read by the IAC", {"ab\xff"s + "cd", {kWillEcho}}},
    {8, "text loses its last byte", {"ab\xff"s + "d", {kWillEcho}}},
    {9, "the IAC is lost, its command is text", {"ab\xff"s + "c\xf9"s + "d", {kWillEcho}}},
    {10, "the last byte is read by the IAC", {"ab\xff"s + "cd", {kWillEcho}}},
    {11, "text loses its last byte", {"ab\xff"s + "c", {kWillEcho}}},
    {12, "uncut", {"ab\xff"s + "cd", {kWillEcho}}},
};

TEST(TelnetCut, AtEveryByteLosesWhatStandsBeforeIt) {
    ASSERT_EQ(std::size(kCuts), kStream.size() + 1);
    for (const Cut& cut : kCuts) {
        EXPECT_EQ(ReceiveInTwo(kStream, cut.First), cut.Expected)
            << "after " << cut.First << ": " << cut.What;
    }
}

struct SubnegotiationCut {
    std::size_t First;
    Scanned Expected;
};

TEST(TelnetCut, InsideASubnegotiationLeavesItsRestAsText) {
    const std::string stream = "\xff\xfa\x18\x01\xff\xf0";
    const SubnegotiationCut cuts[] = {
        {1, {"\xfa\x18\x01", {}}},       {2, {"\x18\x01", {}}},           {3, {"\x01", {}}},
        {4, {"", {kTerminalTypeReply}}}, {5, {"", {kTerminalTypeReply}}},
    };
    for (const SubnegotiationCut& cut : cuts) {
        EXPECT_EQ(ReceiveInTwo(stream, cut.First), cut.Expected) << "after " << cut.First;
    }
}

TEST(TelnetChunk, MayBe32767BytesLong) {
    const Scanned scanned = Receive(std::string(32764, 'x') + "\xff\xfd\x01");
    EXPECT_EQ(scanned, (Scanned{std::string(32764, 'x'), {"\xff\xfb\x01"}}));
}

TEST(TelnetChunk, OverflowsBeforeAnythingIsSentWhenTheChunkIsLonger) {
    int sends = 0;
    const std::string chunk = "\xff\xfd\x01" + std::string(32765, 'x');
    EXPECT_EQ(ErrorOf([&] { ScanTelnet(chunk, [&sends](std::string_view) { ++sends; }); }),
              Overflow);
    EXPECT_EQ(sends, 0);
}

TEST(TelnetChunk, MayHoldAnyBytes) {
    std::minstd_rand random(7);
    constexpr unsigned char kTelling[] = {255, 255, 250, 251, 252, 253, 254, 240, 249, 24, 1, 0};
    for (int round = 0; round < 2000; ++round) {
        std::string chunk(random() % 24, '\0');
        for (char& c : chunk)
            c = static_cast<char>(random() % 3 == 0 ? random() % 256
                                                    : kTelling[random() % std::size(kTelling)]);
        const Scanned scanned = Receive(chunk);
        EXPECT_LT(scanned.Text.size(), std::max<std::size_t>(chunk.size(), 1));
        EXPECT_LE(scanned.Answers.size(), chunk.size() / 3);
        for (const std::string& answer : scanned.Answers) {
            EXPECT_EQ(answer[0], '\xff');
            EXPECT_TRUE(answer.size() == 3 || answer == kTerminalTypeReply)
                << testing::PrintToString(chunk);
        }
        EXPECT_EQ(Receive(chunk), scanned) << testing::PrintToString(chunk);
    }
}

} // namespace
} // namespace mw
