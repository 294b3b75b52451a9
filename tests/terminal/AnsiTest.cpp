#include "terminal/Ansi.h"

#include "base/Globals.h"
#include "fakes/Fakes.h"
#include "terminal/IncomingBuffer.h"
#include "terminal/Output.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <random>

namespace mw {
namespace {

constexpr std::int32_t kColourBefore = 0x123456;
constexpr std::int32_t kFixedBlue = 16711680;

// Slots are told apart by their colours: none of these is the fixed blue or the colour before.
void PaintSlotsApart() {
    std::iota(Palette.begin(), Palette.end(), 0x0a0a00);
    CurrentColour = kColourBefore;
}

std::string Rest() { return std::string(View(IncomingBuffer)); }

void Hold(std::string_view text) {
    TakeFront(IncomingBuffer, View(IncomingBuffer).size());
    Append(IncomingBuffer, text);
}

// Decodes what stands at the front of text; the answer is what is left of it.
std::string Decode(std::string_view text) {
    Hold(text);
    DecodeAnsi();
    return Rest();
}

struct Row {
    const char* Name;
    std::string_view Code;
    Slot Colour;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.Name << " " << row.Code; }

const Row kRows[] = {
    {"NormalBlack", "0;30m", MwBlack},
    {"NormalRed", "0;31m", MwLRed},
    {"NormalGreen", "0;32m", MwLGreen},
    {"NormalOrange", "0;33m", MwOrange},
    {"NormalBlue", "0;34m", MwLBlue},
    {"NormalPurple", "0;35m", MwLPurple},
    {"NormalCyan", "0;36m", MwLCyan},
    {"NormalGrey", "0;37m", MwLGrey},
    {"TwiceResetBlack", "0;0;30m", MwBlack},
    {"TwiceResetRed", "0;0;31m", MwLRed},
    {"TwiceResetGreen", "0;0;32m", MwLGreen},
    {"TwiceResetOrange", "0;0;33m", MwOrange},
    {"TwiceResetBlue", "0;0;34m", MwLBlue},
    {"TwiceResetPurple", "0;0;35m", MwLPurple},
    {"TwiceResetCyan", "0;0;36m", MwLCyan},
    {"TwiceResetGrey", "0;0;37m", MwLGrey},
    {"BlinkingBlack", "0;5;30m", MwBlack},
    {"BlinkingRed", "0;5;31m", MwLRed},
    {"BlinkingGreen", "0;5;32m", MwLGreen},
    {"BlinkingOrange", "0;5;33m", MwOrange},
    {"BlinkingBlue", "0;5;34m", MwLBlue},
    {"BlinkingPurple", "0;5;35m", MwLPurple},
    {"BlinkingCyan", "0;5;36m", MwLCyan},
    {"BlinkingGrey", "0;5;37m", MwLGrey},
    {"BrightBlack", "0;1;30m", MwGrey},
    {"BrightRed", "0;1;31m", MwBRed},
    {"BrightGreen", "0;1;32m", MwBGreen},
    {"BrightOrange", "0;1;33m", MwYellow},
    {"BrightBlue", "0;1;34m", MwBBlue},
    {"BrightPurple", "0;1;35m", MwBPurple},
    {"BrightCyan", "0;1;36m", MwBCyan},
    {"BrightGrey", "0;1;37m", MwWhite},
    {"BrightBlinkingBlack", "1;5;30m", MwGrey},
    {"BrightBlinkingRed", "1;5;31m", MwBRed},
    {"BrightBlinkingGreen", "1;5;32m", MwBGreen},
    {"BrightBlinkingOrange", "1;5;33m", MwYellow},
    {"BrightBlinkingBlueIsNormalBlueOnPurpose", "1;5;34m", MwLBlue},
    {"BrightBlinkingPurple", "1;5;35m", MwBPurple},
    {"BrightBlinkingCyan", "1;5;36m", MwBCyan},
    {"BrightBlinkingGrey", "1;5;37m", MwWhite},
    {"BoldRedIsGreyOnPurpose", "1;31m", MwGrey},
    {"BoldGreen", "1;32m", MwBGreen},
    {"BoldOrange", "1;33m", MwYellow},
    {"BoldBlueIsNormalBlueOnPurpose", "1;34m", MwLBlue},
    {"BoldPurple", "1;35m", MwBPurple},
    {"BoldCyan", "1;36m", MwBCyan},
    {"BoldGrey", "1;37m", MwWhite},
    {"Reset", "0m", MwWhite},
    {"BlackByItself", "30m", MwBlack},
    {"ProbeIsWhite", "2K", MwWhite},
};

// Codes that no row has. All of them are white.
const Row kOtherCodes[] = {
    {"BoldBlackIsMissingOnPurpose", "1;30m", MwWhite},
    {"RedByItself", "31m", MwWhite},
    {"GreenByItself", "32m", MwWhite},
    {"OrangeByItself", "33m", MwWhite},
    {"BlueByItself", "34m", MwWhite},
    {"PurpleByItself", "35m", MwWhite},
    {"CyanByItself", "36m", MwWhite},
    {"GreyByItself", "37m", MwWhite},
    {"BoldByItself", "1m", MwWhite},
    {"UnderlineByItself", "4m", MwWhite},
    {"BlinkByItself", "5m", MwWhite},
    {"InverseByItself", "7m", MwWhite},
    {"DefaultForeground", "39m", MwWhite},
    {"BlackBackground", "40m", MwWhite},
    {"RedBackground", "41m", MwWhite},
    {"GreenBackground", "42m", MwWhite},
    {"OrangeBackground", "43m", MwWhite},
    {"BlueBackground", "44m", MwWhite},
    {"PurpleBackground", "45m", MwWhite},
    {"CyanBackground", "46m", MwWhite},
    {"GreyBackground", "47m", MwWhite},
    {"ResetThenBackground", "0;41m", MwWhite},
    {"BrightBackground", "1;44m", MwWhite},
    {"RedOnBlue", "0;31;44m", MwWhite},
    {"BlueBeforeRed", "44;0;31m", MwWhite},
    {"OneColourTooMany", "0;38m", MwWhite},
    {"BrightOneColourTooMany", "0;1;38m", MwWhite},
    {"OneOfManyColours", "38;5;196m", MwWhite},
    {"AixtermRed", "91m", MwWhite},
    {"NothingAtAll", "m", MwWhite},
    {"OnlyASeparator", ";m", MwWhite},
    {"TwoZeros", "00m", MwWhite},
    {"ZeroZero", "0;0m", MwWhite},
    {"ResetAndBold", "0;1m", MwWhite},
    {"LeadingZeros", "00;31m", MwWhite},
    {"LeadingZeroOfBold", "01;31m", MwWhite},
    {"EmptyFirstParameter", ";31m", MwWhite},
    {"EmptyLastParameter", "0;31;m", MwWhite},
    {"ColourFirst", "31;1m", MwWhite},
    {"BlinkWithoutReset", "5;31m", MwWhite},
    {"BoldThenReset", "1;0;31m", MwWhite},
    {"BoldTwice", "1;1;31m", MwWhite},
    {"BlinkThenBold", "5;1;31m", MwWhite},
    {"ResetBoldBlink", "0;1;5;31m", MwWhite},
    {"ResetThrice", "0;0;0;31m", MwWhite},
    {"BlankInFront", " 0;31m", MwWhite},
    {"BlankBehind", "0;31 m", MwWhite},
    {"PrivateMarker", "?0m", MwWhite},
    {"SecondBracket", "[0;31m", MwWhite},
    {"CommaForSemicolon", "0,31m", MwWhite},
    {"CursorMoveBeforeIt", "2J\x1b[0;31m", MwWhite},
    {"EraseToEndOfLine", "K", MwWhite},
    {"EraseToEndOfLineByNumber", "0K", MwWhite},
    {"EraseToStartOfLine", "1K", MwWhite},
    {"EraseNoLine", "3K", MwWhite},
    {"EraseTwentyTwo", "22K", MwWhite},
    {"ProbeWithLeadingZero", "02K", MwWhite},
    {"ProbeWithReset", "0;2K", MwWhite},
    {"PrivateProbe", "?2K", MwWhite},
    {"CursorMoveBeforeProbe", "H\x1b[2K", MwWhite},
};

class AnsiTable : public RuleTest, public testing::WithParamInterface<Row> {
protected:
    AnsiTable() { PaintSlotsApart(); }
};

TEST_P(AnsiTable, SetsTheColourAndTakesTheSequenceOnly) {
    EXPECT_EQ(Decode("\x1b[" + std::string(GetParam().Code) + "rest"), "rest");
    EXPECT_EQ(CurrentColour, Palette[GetParam().Colour]);
}

TEST_P(AnsiTable, DecodesTheSameWhenItComesByteByByte) {
    const std::string sequence = "\x1b[" + std::string(GetParam().Code);
    const std::size_t end = std::min(sequence.find('m'), sequence.find('K'));
    ASSERT_EQ(end, sequence.size() - 1);
    for (std::size_t cut = 1; cut <= end; ++cut) {
        CurrentColour = kColourBefore;
        EXPECT_EQ(Decode(sequence.substr(0, cut)), sequence.substr(0, cut));
        EXPECT_EQ(CurrentColour, Palette[MwWhite]) << "while it waits, cut at " << cut;
        Append(IncomingBuffer, sequence.substr(cut));
        DecodeAnsi();
        EXPECT_EQ(Rest(), "") << "cut at " << cut;
        EXPECT_EQ(CurrentColour, Palette[GetParam().Colour]) << "cut at " << cut;
    }
}

TEST_P(AnsiTable, TheSecondIntroducerIsNotLookedAt) {
    for (const char introducer : {'(', ']', ' ', '\0', '\n', '\x1b', '\xff', '0'}) {
        CurrentColour = kColourBefore;
        const std::string sequence = {'\x1b', introducer};
        EXPECT_EQ(Decode(sequence + std::string(GetParam().Code)), "");
        EXPECT_EQ(CurrentColour, Palette[GetParam().Colour]) << static_cast<int>(introducer);
    }
}

TEST_P(AnsiTable, OnlyTheProbeIsAnswered) {
    Decode("\x1b[" + std::string(GetParam().Code));
    if (GetParam().Code == "2K")
        EXPECT_EQ(fakes::Sends, std::vector<std::string>{"SMWCLIENT\r"});
    else
        EXPECT_TRUE(fakes::Sends.empty());
}

const auto kName = [](const testing::TestParamInfo<Row>& info) { return info.param.Name; };

INSTANTIATE_TEST_SUITE_P(Rows, AnsiTable, testing::ValuesIn(kRows), kName);
INSTANTIATE_TEST_SUITE_P(OtherCodes, AnsiTable, testing::ValuesIn(kOtherCodes), kName);

class Ansi : public RuleTest {
protected:
    Ansi() { PaintSlotsApart(); }
};

TEST_F(Ansi, TheTableHasFiftyRowsAndNoCodeTwice) {
    EXPECT_EQ(std::size(kRows), 50u);
    for (const Row& row : kRows)
        EXPECT_EQ(std::count_if(std::begin(kRows), std::end(kRows),
                                [&row](const Row& other) { return other.Code == row.Code; }),
                  1)
            << row.Code;
}

// Every list of up to three of the parameters that games send: only the rows have a colour.
TEST_F(Ansi, EveryOtherListOfParametersIsWhite) {
    const std::vector<std::string> parameters = {
        "",   "0",  "1",  "2",  "4",  "5",  "7",  "22", "30", "31", "32", "33", "34", "35", "36",
        "37", "38", "39", "40", "41", "42", "43", "44", "45", "46", "47", "00", "01", "90", "97"};
    std::vector<std::string> codes;
    for (const std::string& first : parameters) {
        codes.push_back(first + "m");
        for (const std::string& second : parameters) {
            codes.push_back(first + ";" + second + "m");
            for (const std::string& third : parameters)
                codes.push_back(first + ";" + second + ";" + third + "m");
        }
    }
    std::size_t coloured = 0;
    for (const std::string& code : codes) {
        CurrentColour = kColourBefore;
        ASSERT_EQ(Decode("\x1b[" + code), "") << code;
        const auto* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                             [&code](const Row& r) { return r.Code == code; });
        coloured += row != std::end(kRows) ? 1u : 0u;
        ASSERT_EQ(CurrentColour, Palette[row == std::end(kRows) ? MwWhite : row->Colour]) << code;
    }
    EXPECT_EQ(coloured, 49u); // all but the probe
}

TEST_F(Ansi, ColoursComeFromThePaletteAsItIsNow) {
    Palette[MwLGreen] = 0x010203;
    Decode("\x1b[0;32m");
    EXPECT_EQ(CurrentColour, 0x010203);
    Palette[MwLGreen] = 0x040506;
    EXPECT_EQ(CurrentColour, 0x010203);
    Decode("\x1b[0;32m");
    EXPECT_EQ(CurrentColour, 0x040506);
}

TEST_F(Ansi, ThePaletteIsOnlyRead) {
    const PaletteTable before = Palette;
    for (const Row& row : kRows)
        Decode("\x1b[" + std::string(row.Code));
    EXPECT_EQ(Palette, before);
}

TEST_F(Ansi, TextBehindTheSequenceStays) {
    EXPECT_EQ(Decode("\x1b[0;32mgo north"), "go north");
    EXPECT_EQ(CurrentColour, Palette[MwLGreen]);
}

TEST_F(Ansi, OneCallTakesOneSequence) {
    EXPECT_EQ(Decode("\x1b[0;32m\x1b[0;31mx"), "\x1b[0;31mx");
    EXPECT_EQ(CurrentColour, Palette[MwLGreen]);
}

TEST_F(Ansi, EscMAloneIsWhiteAndTaken) {
    EXPECT_EQ(Decode("\x1bm"), "");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    EXPECT_EQ(Decode("\x1bmap"), "ap");
}

TEST_F(Ansi, EscKAloneIsWhiteAndTaken) {
    EXPECT_EQ(Decode("\x1bK"), "");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    EXPECT_TRUE(fakes::Sends.empty());
}

TEST_F(Ansi, LettersAreToldByCase) {
    EXPECT_EQ(Decode("\x1b[0;31M"), "\x1b[0;31M");
    EXPECT_EQ(Decode("\x1b[2k"), "\x1b[2k");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    EXPECT_TRUE(fakes::Sends.empty());
}

TEST_F(Ansi, WithoutAnEndNothingIsTakenAndTheColourIsWhite) {
    for (const std::string_view text : {"\x1b", "\x1b[", "\x1b[H", "\x1b[0;3", "\x1b[2J hello\r\n",
                                        "\x1b\x1b\x1b", "\x1b[0;31 no end in sight"}) {
        CurrentColour = kColourBefore;
        EXPECT_EQ(Decode(text), text);
        EXPECT_EQ(CurrentColour, Palette[MwWhite]) << text;
    }
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(Ansi, TheEndMayArriveLater) {
    EXPECT_EQ(Decode("\x1b[0;3"), "\x1b[0;3");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    Append(IncomingBuffer, "1mX");
    DecodeAnsi();
    EXPECT_EQ(Rest(), "X");
    EXPECT_EQ(CurrentColour, Palette[MwLRed]);
}

TEST_F(Ansi, AnMFarAwayEndsTheSequenceOnPurpose) {
    EXPECT_EQ(Decode("\x1b[H" + std::string(20000, 'x') + "my"), "y");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
}

TEST_F(Ansi, AnMFarAwaySwallowsAKSequenceOnPurpose) {
    EXPECT_EQ(Decode("\x1b[2KWelcome"), "e");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
    EXPECT_TRUE(fakes::Sends.empty());
}

TEST_F(Ansi, AnMFarAwaySwallowsTheSequenceBetweenOnPurpose) {
    EXPECT_EQ(Decode("\x1b[2J text \x1b[0;31mred"), "red");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
}

TEST_F(Ansi, TheFirstMEndsTheSequenceWhereverAKStands) {
    EXPECT_EQ(Decode("\x1b[0;31mK"), "K");
    EXPECT_EQ(CurrentColour, Palette[MwLRed]);
    EXPECT_EQ(Decode("\x1b[K0;31m"), "");
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
}

TEST_F(Ansi, WithoutAnMTheFirstKEndsTheSequence) {
    EXPECT_EQ(Decode("\x1b[2KKing"), "King");
    EXPECT_EQ(fakes::Sent(), "SMWCLIENT\r");
}

TEST_F(Ansi, TheProbeIsAnsweredInOnePiece) {
    EXPECT_EQ(Decode("\x1b[2KAutodetecting"), "Autodetecting");
    EXPECT_EQ(fakes::Sends, std::vector<std::string>{"SMWCLIENT\r"});
    EXPECT_EQ(CurrentColour, Palette[MwWhite]);
}

TEST_F(Ansi, TheAnswerKnowsNoCommandSeparator) {
    EscapeChar = "W";
    Decode("\x1b[2K");
    EXPECT_EQ(fakes::Sent(), "SMWCLIENT\r");
}

TEST_F(Ansi, EveryProbeIsAnswered) {
    Hold("\x1b[2K\x1b[2K\x1b[2K");
    for (int i = 0; i < 3; ++i)
        DecodeAnsi();
    EXPECT_EQ(Rest(), "");
    EXPECT_EQ(fakes::Sends.size(), 3u);
}

TEST_F(Ansi, AnyCodeOfRandomBytesIsTakenUpToTheLetterAndWhite) {
    std::mt19937 random(2301);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(6, 40);
    for (int round = 0; round < 2000; ++round) {
        std::string text = "\x1b";
        for (std::size_t i = length(random); i > 0; --i)
            text += static_cast<char>(byte(random));
        text += "~~~~~~~m"; // no row is as long
        CurrentColour = kColourBefore;
        const std::size_t end = text.find('m');
        const std::string_view code = std::string_view(text).substr(2, end - 1);
        if (end < 8)
            continue; // might be a row
        ASSERT_EQ(Decode(text), text.substr(end + 1));
        ASSERT_EQ(CurrentColour, Palette[MwWhite]) << code;
    }
}

// A sequence read parameter by parameter.
struct ParameterCase {
    const char* Name;
    std::string_view Text;
    std::int32_t Colour; // a slot, or one of the two below
    std::string_view Rest = "";
    bool Answered = false;
};

constexpr std::int32_t kUnchanged = -1;
constexpr std::int32_t kBlue = -2;

void PrintTo(const ParameterCase& c, std::ostream* out) { *out << c.Name << " " << c.Text; }

const ParameterCase kParameterCases[] = {
    {"BlackIsGreyOnPurpose", "30m", MwGrey},
    {"Red", "31m", MwLRed},
    {"Green", "32m", MwLGreen},
    {"Orange", "33m", MwOrange},
    {"Blue", "34m", MwLBlue},
    {"Purple", "35m", MwLPurple},
    {"Cyan", "36m", MwLCyan},
    {"GreyIsTheDefaultSlot", "37m", MwDefault},
    {"BoldBlackIsGrey", "1;30m", MwGrey},
    {"BoldRed", "1;31m", MwBRed},
    {"BoldGreen", "1;32m", MwBGreen},
    {"BoldYellow", "1;33m", MwYellow},
    {"BoldBlue", "1;34m", MwBBlue},
    {"BoldPurple", "1;35m", MwBPurple},
    {"BoldCyan", "1;36m", MwBCyan},
    {"BoldWhite", "1;37m", MwWhite},
    {"BlinkDoesNothing", "5m", kUnchanged},
    {"BoldByItselfDoesNothing", "1m", kUnchanged},
    {"BlinkKeepsBold", "1;5;31m", MwBRed},
    {"ZeroIsTheFixedBlueOnPurpose", "0m", kBlue},
    {"ZeroDoesNotEndBold", "1;0;32m", MwBGreen},
    {"BoldBehindTheColourComesTooLate", "31;1m", MwLRed},
    {"TheLastColourCounts", "31;1;32;33m", MwYellow},
    {"ABackgroundIsTheFixedBlue", "31;44m", kBlue},
    {"NoParameterIsTheFixedBlue", "m", kBlue},
    {"AnEmptyParameterIsTheFixedBlue", "31;m", kBlue},
    {"LeadingZerosAreAnotherValue", "031m", kBlue},
    {"BlanksAreAnotherValue", " 31m", kBlue},
    {"ColourThenBlink", "32;5m", MwLGreen},
    {"TextBehindStays", "32mgo north", MwLGreen, "go north"},
    {"EscAndIntroducerBelongToTheFirstParameterOnPurpose", "\x1b[31m", kBlue},
    {"TheFirstOfTwoIsSpoiltByTheIntroducer", "\x1b[1;31mx", MwLRed, "x"},
    {"BlinkIsSpoiltByTheIntroducer", "\x1b[5m", kBlue},
    {"BoldFromTheSecondParameterOn", "\x1b[0;1;31m", MwBRed},
    {"ACapitalEndsWithoutAColour", "31Hx", kUnchanged, "x"},
    {"ACapitalAEnds", "Ax", kUnchanged, "x"},
    {"ACapitalZEnds", "Zx", kUnchanged, "x"},
    {"AnAtSignDoesNotEnd", "@31m", kBlue},
    {"AnOpeningBracketDoesNotEnd", "[31m", kBlue},
    {"AnUnfinishedParameterIsNotProcessed", "31;44", MwLRed},
    {"ASmallLetterIsPartOfTheParameter", "3x1m", kBlue},
    {"ACapitalEndsAfterTheColour", "31;2Jx", MwLRed, "x"},
    {"TheProbe", "2KAutodetecting", kUnchanged, "Autodetecting", true},
    {"TheProbeWithIntroducer", "\x1b[2KAutodetecting...", kUnchanged, "Autodetecting...", true},
    {"TheProbeWithoutNumber", "KAutodetecting", kUnchanged, "Autodetecting", true},
    {"TheProbeInOtherCaseIsNone", "2Kautodetecting", kUnchanged, "autodetecting"},
    {"HalfAProbeIsNone", "2KAutodetectin", kUnchanged, "Autodetectin"},
    {"ABlankBeforeTheProbeWordIsNone", "2K Autodetecting", kUnchanged, " Autodetecting"},
    {"AnotherCapitalIsNoProbe", "2JAutodetecting", kUnchanged, "Autodetecting"},
    {"EraseLineByItself", "2K", kUnchanged},
    {"TheBufferRunsEmpty", "31", kUnchanged},
    {"TheBufferRunsEmptyBehindAColour", "31;", MwLRed},
    {"EscAlone", "\x1b", kUnchanged},
};

class AnsiParameters : public Ansi, public testing::WithParamInterface<ParameterCase> {
protected:
    AnsiParameters() { WholeSequenceMode = false; }
};

TEST_P(AnsiParameters, AreReadOneByOne) {
    const ParameterCase& c = GetParam();
    EXPECT_EQ(Decode(c.Text), c.Rest);
    if (c.Colour == kUnchanged)
        EXPECT_EQ(CurrentColour, kColourBefore);
    else if (c.Colour == kBlue)
        EXPECT_EQ(CurrentColour, kFixedBlue);
    else
        EXPECT_EQ(CurrentColour, Palette[static_cast<std::size_t>(c.Colour)]);
    EXPECT_EQ(fakes::Sends,
              c.Answered ? std::vector<std::string>{"SMWCLIENT\r"} : std::vector<std::string>{});
}

const auto kParameterCaseName = [](const testing::TestParamInfo<ParameterCase>& info) {
    return info.param.Name;
};

INSTANTIATE_TEST_SUITE_P(Cases, AnsiParameters, testing::ValuesIn(kParameterCases),
                         kParameterCaseName);

class AnsiParameterWalk : public Ansi {
protected:
    AnsiParameterWalk() { WholeSequenceMode = false; }
};

TEST_F(AnsiParameterWalk, BoldLivesForOneCallOnly) {
    Hold("1;31m32m");
    DecodeAnsi();
    EXPECT_EQ(CurrentColour, Palette[MwBRed]);
    DecodeAnsi();
    EXPECT_EQ(CurrentColour, Palette[MwLGreen]);
}

TEST_F(AnsiParameterWalk, AParameterLivesForOneCallOnly) {
    Decode("3");
    Decode("1m");
    EXPECT_EQ(CurrentColour, kColourBefore);
}

TEST_F(AnsiParameterWalk, StopsAfterAHundredCharacters) {
    EXPECT_EQ(Decode(std::string(100, 'x') + "31m"), "31m");
    EXPECT_EQ(CurrentColour, kColourBefore);
    EXPECT_EQ(Decode(std::string(98, '0') + ";my"), "y");
    EXPECT_EQ(CurrentColour, kFixedBlue);
    CurrentColour = kColourBefore;
    EXPECT_EQ(Decode(std::string(250, 'x')).size(), 150u);
    EXPECT_EQ(CurrentColour, kColourBefore);
}

TEST_F(AnsiParameterWalk, TheHundredthCharacterStillCounts) {
    EXPECT_EQ(Decode(std::string(96, 'x') + ";31;32m"), "32m");
    EXPECT_EQ(CurrentColour, Palette[MwLRed]);
    EXPECT_EQ(Decode(std::string(97, 'x') + ";31;32m"), ";32m");
    EXPECT_EQ(CurrentColour, kFixedBlue);
}

TEST_F(AnsiParameterWalk, AnEmptyBufferIsLeftAlone) {
    EXPECT_EQ(Decode(""), "");
    EXPECT_EQ(CurrentColour, kColourBefore);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(AnsiParameterWalk, RandomBytesTakeAtMostAHundredAndAtLeastOne) {
    std::mt19937 random(2302);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<std::size_t> length(1, 300);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (std::size_t i = length(random); i > 0; --i)
            text += static_cast<char>(byte(random));
        const std::size_t left = Decode(text).size();
        ASSERT_LT(left, text.size());
        ASSERT_LE(text.size() - left, 100u);
        ASSERT_EQ(Rest(), text.substr(text.size() - left));
    }
}

} // namespace
} // namespace mw
