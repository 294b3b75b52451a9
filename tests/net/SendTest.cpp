#include "net/Send.h"

#include "base/Globals.h"
#include "fakes/Fakes.h"

#include <ostream>

using namespace std::string_literals;

namespace mw {
namespace {

using Pieces = std::vector<std::string>;

struct Line {
    const char* Name;
    const char* Separator;
    std::string Text;
    Pieces Sends;
};

void PrintTo(const Line& line, std::ostream* out) { *out << line.Name; }

const Line kLines[] = {
    {"AnEmptyLineIsABareCr", ";", "", {"\r"}},
    {"EachCharacterIsASendOfItsOwn", ";", "look", {"l", "o", "o", "k", "\r"}},
    {"TheEscapeCharacterBecomesACr", ";", "n;s", {"n", "\r", "s", "\r"}},
    {"ALineOfTheEscapeCharacterIsTwoCrs", ";", ";", {"\r", "\r"}},
    {"EscapeCharactersInARowAreCrsInARow", ";", "n;;s", {"n", "\r", "\r", "s", "\r"}},
    {"AnEscapeCharacterAtTheEndAddsACr", ";", "n;", {"n", "\r", "\r"}},
    {"AnotherEscapeCharacterIsHeeded", "|", "n|s;e", {"n", "\r", "s", ";", "e", "\r"}},
    {"AnEscapeCharacterAboveAsciiIsHeeded", "\xa7", "n\xa7s", {"n", "\r", "s", "\r"}},
    {"AnEmptyEscapeCharSplitsNothing", "", "n;s", {"n", ";", "s", "\r"}},
    {"AnEscapeCharOfTwoSplitsNothing", "||", "n||s|", {"n", "|", "|", "s", "|", "\r"}},
    {"BlanksAreSent", ";", " a ", {" ", "a", " ", "\r"}},
    {"HighCharactersAreSingleBytes", ";", "\xe4\xff\x80", {"\xe4", "\xff", "\x80", "\r"}},
    {"ANulIsACharacter", ";", "a\0b"s, {"a", "\0"s, "b", "\r"}},
    {"LineBreaksAreSentAsTheyAre", ";", "a\r\nb", {"a", "\r", "\n", "b", "\r"}},
};

class SentLine : public RuleTest, public testing::WithParamInterface<Line> {};

TEST_P(SentLine, GoesOutCharacterByCharacter) {
    EscapeChar = GetParam().Separator;
    SendLine(GetParam().Text);
    EXPECT_EQ(fakes::Sends, GetParam().Sends);
}

INSTANTIATE_TEST_SUITE_P(Lines, SentLine, testing::ValuesIn(kLines),
                         [](const auto& row) { return row.param.Name; });

class Sending : public RuleTest {};

TEST_F(Sending, ACharacterIsRememberedAndSent) {
    SendChar('x');
    EXPECT_EQ(LastSentChar, 120);
    EXPECT_EQ(fakes::Sends, Pieces{"x"});
}

TEST_F(Sending, AHighCharacterIsRememberedByItsCode) {
    SendChar(228);
    EXPECT_EQ(LastSentChar, 228);
    EXPECT_EQ(fakes::Sends, Pieces{"\xe4"});
    SendLine("\xff");
    EXPECT_EQ(LastSentChar, 255);
}

TEST_F(Sending, CodeZeroIsACharacter) {
    LastSentChar = 5;
    SendChar(0);
    EXPECT_EQ(LastSentChar, 0);
    EXPECT_EQ(fakes::Sends, Pieces{"\0"s});
}

TEST_F(Sending, ACharacterNeedsAConnectedSocket) {
    for (std::int16_t state = 0; state <= 9; ++state) {
        if (state == SocketConnected)
            continue;
        fakes::SocketState = state;
        SendChar('x');
        EXPECT_TRUE(fakes::Sends.empty()) << "state " << state;
        EXPECT_EQ(LastSentChar, 0) << "state " << state;
    }
}

TEST_F(Sending, TheCrsAreHandedOverWhateverTheSocketsStateIsMeant) {
    for (const std::int16_t state : {SocketClosed, SocketConnecting, SocketClosing, SocketError}) {
        fakes::SocketState = state;
        fakes::Sends.clear();
        SendLine("n;s");
        EXPECT_EQ(fakes::Sends, (Pieces{"\r", "\r"})) << "state " << state;
    }
}

TEST_F(Sending, CrsAreNotRememberedAsTheLastCharacter) {
    SendLine("ab;");
    EXPECT_EQ(LastSentChar, 'b');
    SendLine("");
    EXPECT_EQ(LastSentChar, 'b');
}

TEST_F(Sending, LinesEndWithCrAloneNeverWithALineFeed) {
    SendLine("a;b");
    SendLine("c");
    EXPECT_EQ(fakes::Sent(), "a\rb\rc\r");
}

TEST_F(Sending, ChangesNothingButTheSocket) {
    SendLine("look");
    EXPECT_EQ(fakes::Calls, (Pieces{"Send l", "Send o", "Send o", "Send k", "Send \r"}));
}

} // namespace
} // namespace mw
