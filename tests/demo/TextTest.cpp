#include "Text.h"

#include <gtest/gtest.h>
#include <string>

namespace world {
namespace {

TEST(WorldText, ALineIsItsColourItsTextAndItsEnd) {
    EXPECT_EQ(Line(ExitColour, "Exits: up."), "\x1b[0;36mExits: up.\r\n");
}

TEST(WorldText, ProseBreaksAtBlanksAndColoursEveryLine) {
    EXPECT_EQ(Prose(ProseColour, "one two three four", 9),
              "\x1b[0;37mone two\r\n\x1b[0;37mthree\r\n\x1b[0;37mfour\r\n");
}

TEST(WorldText, ProseFillsALineToItsLastColumn) {
    EXPECT_EQ(Prose(ProseColour, "abc def ghi", 7), "\x1b[0;37mabc def\r\n\x1b[0;37mghi\r\n");
}

TEST(WorldText, ProseLeavesAWordThatIsTooLongWhole) {
    EXPECT_EQ(Prose(ProseColour, "abcdefghij kl", 4), "\x1b[0;37mabcdefghij\r\n\x1b[0;37mkl\r\n");
    EXPECT_EQ(Prose(ProseColour, "abcdefghij", 4), "\x1b[0;37mabcdefghij\r\n");
}

TEST(WorldText, AnEmptyProseIsOneEmptyLine) { EXPECT_EQ(Prose(ProseColour, ""), "\x1b[0;37m\r\n"); }

TEST(WorldText, CleanTakesOutEveryByteThatCouldSteerATerminal) {
    for (int value = 0; value < 256; ++value) {
        const std::string typed = std::string("a") + static_cast<char>(value) + "b";
        const bool isShown = value >= 32 && value != 127 && value != 255;
        EXPECT_EQ(Clean(typed), isShown ? typed : "ab") << "byte " << value;
    }
}

TEST(WorldText, CleanCutsBlanksAtBothEndsAndKeepsThoseBetween) {
    EXPECT_EQ(Clean("  a  b  "), "a  b");
    EXPECT_EQ(Clean(" \x1b \t "), "");
}

TEST(WorldText, CleanKeepsOneOfTheExclamationMarksInARow) {
    EXPECT_EQ(Clean("Ho!"), "Ho!");
    EXPECT_EQ(Clean("!!SOUND(Off)!!MUSIC(Off)"), "!SOUND(Off)!MUSIC(Off)");
    EXPECT_EQ(Clean("Ho!!! Ho! ! Ho!"), "Ho! Ho! ! Ho!");
    EXPECT_EQ(Clean("!\x07!\xff!"), "!") << "what is left out between does not count";
}

TEST(WorldText, CleanKeepsTwoHundredCharacters) {
    EXPECT_EQ(Clean(std::string(199, 'x')).size(), 199U);
    EXPECT_EQ(Clean(std::string(200, 'x')).size(), 200U);
    EXPECT_EQ(Clean(std::string(201, 'x')).size(), 200U);
}

TEST(WorldText, LowerLeavesOtherBytesAlone) { EXPECT_EQ(Lower("AZaz[@`{\xc4"), "azaz[@`{\xc4"); }

TEST(WorldText, ACapitalIsMadeOfASmallLetterAtTheFrontAlone) {
    EXPECT_EQ(Capital("the brown rat"), "The brown rat");
    EXPECT_EQ(Capital("z"), "Z");
    for (const char* text : {"", "The rat", "1 rat", " rat", "`rat", "{rat", "\xe4rat"})
        EXPECT_EQ(Capital(text), text);
}

TEST(WorldText, TheLastWordStandsBehindTheLastBlank) {
    EXPECT_EQ(LastWord("the brown rat"), "rat");
    EXPECT_EQ(LastWord("rat"), "rat");
    EXPECT_EQ(LastWord("rat "), "");
    EXPECT_EQ(LastWord(""), "");
}

TEST(WorldText, AMessageBeginsWithALineBreakAndEndsWithAByteToLose) {
    EXPECT_EQ(Message({"", "\x1b[0;37mHello\r\n", "> ", true, ""}),
              "\r\n\x1b[0;37mHello\r\n\x1b[0;32m> \x1b[0;37m\xff\xf9\r");
}

TEST(WorldText, AMessageOfAPromptAloneIsFramedAlike) {
    EXPECT_EQ(Message({"", "", "> ", true, ""}), "\r\n\x1b[0;32m> \x1b[0;37m\xff\xf9\r");
}

TEST(WorldText, AMessageWithoutAPromptBringsOutItsLastLineBreakByAColour) {
    EXPECT_EQ(Message({"", "\x1b[0;37mBye\r\n", "", true, ""}),
              "\r\n\x1b[0;37mBye\r\n\x1b[0;37m\r");
}

TEST(WorldText, NegotiationAloneHasNoLineBreakButAByteToLose) {
    EXPECT_EQ(Message({"\xff\xfc\x03", "", "", true, ""}), "\xff\xfc\x03\r");
}

TEST(WorldText, NegotiationStandsBeforeTheTextItIsFor) {
    EXPECT_EQ(Message({"\xff\xfb\x01", "", "Password: ", true, ""}),
              "\r\n\xff\xfb\x01\x1b[0;32mPassword: \x1b[0;37m\xff\xf9\r");
}

TEST(WorldText, AMessageThatGoesOnAfterTextBeginsWithoutALineBreak) {
    EXPECT_EQ(Message({"", "\x1b[0;37mMore\r\n", "", false, ""}), "\x1b[0;37mMore\r\n\x1b[0;37m\r");
    EXPECT_EQ(Message({"", "", "> ", false, ""}), "\x1b[0;32m> \x1b[0;37m\xff\xf9\r");
}

TEST(WorldText, AProbeIsTheLastThatAMessageSays) {
    EXPECT_EQ(Message({"", "\x1b[0;37mWho?\r\n", "", true, "\x1b[2K"}),
              "\r\n\x1b[0;37mWho?\r\n\x1b[2K\r");
    EXPECT_EQ(Message({"", "", "", true, "\x1b[2K"}), "\x1b[2K\r");
}

struct PartCase {
    const char* name;
    Outgoing outgoing;
    bool isEmpty;
};

void PrintTo(const PartCase& row, std::ostream* out) { *out << row.name; }

class WorldMessages : public ::testing::TestWithParam<PartCase> {};

TEST_P(WorldMessages, AreEmptyWithoutAnyPart) {
    EXPECT_EQ(IsEmpty(GetParam().outgoing), GetParam().isEmpty);
}

const PartCase kParts[] = {
    {"WithNothing", {"", "", "", true, ""}, true},
    {"WithNothingAfterText", {"", "", "", false, ""}, true},
    {"WithNegotiation", {"\xff\xfc\x03", "", "", true, ""}, false},
    {"WithLines", {"", "\x1b[0;37m\r\n", "", true, ""}, false},
    {"WithAPrompt", {"", "", "> ", true, ""}, false},
    {"WithAProbe", {"", "", "", true, "\x1b[2K"}, false},
};

INSTANTIATE_TEST_SUITE_P(All, WorldMessages, ::testing::ValuesIn(kParts),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
