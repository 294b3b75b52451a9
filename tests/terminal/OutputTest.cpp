#include "terminal/Output.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"
#include "terminal/AutoLog.h"

#include <random>

namespace mw {
namespace {

using fakes::CallsOf;
using Strings = std::vector<std::string>;

void Show(std::string text) { AppendOutput(text); }

std::string Pending() { return std::string(View(PendingLine)); }

// Triggers of the current set; the first must not be empty, or none fires.
void React(std::vector<TriggerEntry> triggers) { CurrentSet().Triggers = std::move(triggers); }

class OutputView : public RuleTest {
protected:
    OutputView() { React({{"no such text", ""}}); }
};

TEST_F(OutputView, StartsInPlainWhiteThatIsNoSlot) {
    Palette.fill(0x112233);
    ResetOutput();
    EXPECT_EQ(CurrentColour, 0xffffff);
    EXPECT_EQ(Pending(), "");
    EXPECT_FALSE(ScrollBackActive);
    EXPECT_TRUE(OutputRedrawOn);
    Show("abc");
    EXPECT_EQ(fakes::Runs[0].Colour, 0xffffff);
}

TEST_F(OutputView, TextWithoutALineFeedIsPaintedAndWaits) {
    React({{"abc", "heard"}});
    Show("abc");
    EXPECT_EQ(fakes::Shown, "abc");
    EXPECT_EQ(Pending(), "abc");
    EXPECT_EQ(fakes::Sent(), "");
}

TEST_F(OutputView, ALineOfTwoPiecesIsCheckedWhole) {
    React({{"abcdef\n", "heard"}});
    Show("abc");
    Show("def\n");
    EXPECT_EQ(Pending(), "");
    EXPECT_EQ(fakes::Sent(), "heard\r");
    EXPECT_EQ(fakes::Shown, "abcdef\n");
}

TEST_F(OutputView, ALineEndsBehindItsFirstLineFeed) {
    React({{"one\n", "1"}, {"two", "2"}});
    Show("one\ntwo");
    EXPECT_EQ(fakes::Sent(), "1\r");
    EXPECT_EQ(Pending(), "two");
}

TEST_F(OutputView, HandsOnOneCompletedLineACallOnPurpose) {
    React({{"one", "1"}, {"two", "2"}, {"three", "3"}});
    Show("one\ntwo\nthree\n");
    EXPECT_EQ(fakes::Sent(), "1\r");
    EXPECT_EQ(Pending(), "two\nthree\n");
    Show("x");
    EXPECT_EQ(fakes::Sent(), "1\r2\r");
    Show("");
    EXPECT_EQ(fakes::Sent(), "1\r2\r3\r");
    EXPECT_EQ(Pending(), "x");
    Show("");
    EXPECT_EQ(fakes::Sent(), "1\r2\r3\r");
    EXPECT_EQ(fakes::Shown, "one\ntwo\nthree\nx");
}

TEST_F(OutputView, AnEmptyLineIsALine) {
    React({{"\n", "fed"}});
    Show("\n\n");
    EXPECT_EQ(fakes::Sent(), "fed\r");
    EXPECT_EQ(Pending(), "\n");
}

TEST_F(OutputView, AppendingWaitingLinesHandsOnAllThatAreComplete) {
    React({{"one", "1"}, {"two", "2"}, {"three", "3"}, {"four", "4"}});
    Show("one\ntwo\nthree\nfour");
    const std::size_t runs = fakes::Runs.size();
    AppendWaitingLines();
    EXPECT_EQ(fakes::Sent(), "1\r2\r3\r");
    EXPECT_EQ(Pending(), "four");
    EXPECT_EQ(fakes::Shown, "one\ntwo\nthree\nfour");
    EXPECT_EQ(fakes::Runs.size(), runs + 2);
    AppendWaitingLines();
    EXPECT_EQ(fakes::Runs.size(), runs + 2);
}

TEST_F(OutputView, CarriageReturnsAreRemovedFromTheCallersStringToo) {
    std::string text = "\ra\r\nb\r\r\nc\r";
    AppendOutput(text);
    EXPECT_EQ(text, "a\nb\nc");
    EXPECT_EQ(fakes::Shown, "a\nb\nc");
    EXPECT_EQ(fakes::Runs.back().Text, "a\nb\nc");
    EXPECT_EQ(Pending(), "b\nc");
}

TEST_F(OutputView, OnlyCarriageReturnsAreAnEmptyRun) {
    std::string text = "\r\r\r";
    AppendOutput(text);
    EXPECT_EQ(text, "");
    ASSERT_EQ(fakes::Runs.size(), 1u);
    EXPECT_EQ(fakes::Runs[0].Text, "");
}

TEST_F(OutputView, EveryOtherByteIsShownAsItCame) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r')
            bytes += static_cast<char>(byte);
    }
    Show(bytes);
    EXPECT_EQ(fakes::Shown, bytes);
}

TEST_F(OutputView, PaintsInTheCurrentColourAndTheOutputFont) {
    CurrentColour = 0x0a0b0c;
    OutputFontName = "Fixedsys";
    OutputFontSize = "12";
    Show("abc");
    CurrentColour = 0x010203;
    OutputFontName = "Terminal";
    OutputFontSize = "large";
    Show("def");
    ASSERT_EQ(fakes::Runs.size(), 2u);
    EXPECT_EQ(fakes::Runs[0].Text, "abc");
    EXPECT_EQ(fakes::Runs[0].Colour, 0x0a0b0c);
    EXPECT_EQ(fakes::Runs[0].FontName, "Fixedsys");
    EXPECT_EQ(fakes::Runs[0].FontSize, "12");
    EXPECT_EQ(fakes::Runs[1].Text, "def");
    EXPECT_EQ(fakes::Runs[1].Colour, 0x010203);
    EXPECT_EQ(fakes::Runs[1].FontName, "Terminal");
    EXPECT_EQ(fakes::Runs[1].FontSize, "large");
    EXPECT_EQ(CurrentColour, 0x010203);
}

TEST_F(OutputView, TheTriggerComesFirstThenTheTextTheScrollBarAndTheCaret) {
    React({{"abc", "x"}});
    fakes::Input = "look";
    Show("abc\n");
    EXPECT_EQ(fakes::Calls, (Strings{"Send x", "Send \r", "Append ffffff abc\n", "CaretToEnd",
                                     "ScrollMax 4", "Select 4 0"}));
}

TEST_F(OutputView, WithoutACurrentMacroSetACompletedLineRaisesSubscriptOutOfRange) {
    CurrentMacroSet = 5;
    EXPECT_NO_THROW(Show("no line yet"));
    EXPECT_EQ(ErrorOf([] { Show("\n"); }), SubscriptOutOfRange);
}

// The trim.

TEST_F(OutputView, FifteenThousandCharactersAreNotTrimmed) {
    fakes::Shown = std::string(15000, 'x');
    Show("abc");
    EXPECT_EQ(fakes::Shown.size(), 15003u);
    EXPECT_EQ(CallsOf("RedrawOff"), 0);
}

TEST_F(OutputView, OneCharacterMoreIsCutToTheLastEightThousandBeforeTheNextRun) {
    fakes::Shown = std::string(7001, 'x') + std::string(8000, 'y');
    Show("abc");
    EXPECT_EQ(fakes::Shown, std::string(8000, 'y') + "abc");
    EXPECT_EQ(CallsOf("RemoveFirst 7001"), 1);
}

TEST_F(OutputView, ATrimComesOneAppendLate) {
    fakes::Shown = std::string(15000, 'x');
    Show("a");
    EXPECT_EQ(fakes::Shown.size(), 15001u);
    Show("");
    EXPECT_EQ(fakes::Shown.size(), 8000u);
    EXPECT_EQ(fakes::Shown.back(), 'a');
}

TEST_F(OutputView, ATrimIsNotPaintedAndStandsBetweenTheTriggersAndTheText) {
    React({{"abc", "x"}});
    fakes::Shown = std::string(15001, 'x');
    Show("abc\n");
    EXPECT_EQ(fakes::Calls,
              (Strings{"Send x", "Send \r", "RedrawOff", "RemoveFirst 7001", "RedrawOn",
                       "Append ffffff abc\n", "CaretToEnd", "ScrollMax 8004", "Select 0 0"}));
    EXPECT_TRUE(OutputRedrawOn);
}

TEST_F(OutputView, AVeryLongRunIsShownWholeAndCutByTheNext) {
    Show(std::string(40000, 'x'));
    EXPECT_EQ(fakes::Shown.size(), 40000u);
    Show("y");
    EXPECT_EQ(fakes::Shown, std::string(8000, 'x') + "y");
}

// The scroll bar.

struct Steps {
    std::size_t Length;
    int Small;
    int Large;
};

TEST_F(OutputView, StepsAreRoundedHalfToEven) {
    for (const Steps& steps :
         {Steps{1, 10, 100}, Steps{499, 10, 100}, Steps{500, 10, 100}, Steps{501, 10, 50},
          Steps{505, 10, 50}, Steps{515, 10, 52}, Steps{524, 10, 52}, Steps{525, 10, 52},
          Steps{526, 11, 53}, Steps{535, 11, 54}, Steps{575, 12, 58}, Steps{625, 12, 62},
          Steps{675, 14, 68}, Steps{1000, 20, 100}, Steps{15000, 300, 1500}}) {
        fakes::Shown = std::string(steps.Length, 'x');
        Show("");
        EXPECT_EQ(fakes::ScrollMax, static_cast<int>(steps.Length));
        EXPECT_EQ(fakes::ScrollValue, static_cast<int>(steps.Length));
        EXPECT_EQ(fakes::SmallChange, steps.Small) << steps.Length;
        EXPECT_EQ(fakes::LargeChange, steps.Large) << steps.Length;
    }
}

TEST_F(OutputView, AnEmptyBoxHasAScrollBarOfNothing) {
    Show("");
    EXPECT_EQ(fakes::ScrollMax, 0);
    EXPECT_EQ(fakes::ScrollValue, 0);
    EXPECT_EQ(fakes::SmallChange, 10);
    EXPECT_EQ(fakes::LargeChange, 100);
}

TEST_F(OutputView, TheScrollBarCountsTheNewTextToo) {
    Show("abc");
    EXPECT_EQ(fakes::ScrollMax, 3);
    Show("de\r\n");
    EXPECT_EQ(fakes::ScrollMax, 6);
    EXPECT_EQ(fakes::ScrollValue, 6);
}

TEST_F(OutputView, TheScrollBarIsHeldAtItsLargestNumber) {
    Show(std::string(32767, 'x'));
    EXPECT_EQ(fakes::ScrollMax, 32767);
    fakes::Shown.clear();
    Show(std::string(40000, 'x'));
    EXPECT_EQ(fakes::ScrollMax, 32767);
    EXPECT_EQ(fakes::ScrollValue, 32767);
    EXPECT_EQ(fakes::SmallChange, 655);
    EXPECT_EQ(fakes::LargeChange, 3277);
}

// Scroll-back.

void Scroll(std::int16_t value) {
    fakes::ScrollValue = value;
    vslRTF_Change();
}

TEST_F(OutputView, ScrollingAwayFromTheEndShowsACopyOnce) {
    Show("some text");
    fakes::Calls.clear();
    Scroll(4);
    EXPECT_TRUE(ScrollBackActive);
    EXPECT_EQ(fakes::Calls, Strings{"ShowScrollBack"});
    Scroll(3);
    Scroll(0);
    EXPECT_TRUE(ScrollBackActive);
    EXPECT_EQ(fakes::Calls, Strings{"ShowScrollBack"});
}

TEST_F(OutputView, ScrollingToTheEndHidesTheCopy) {
    Show("some text");
    Scroll(4);
    fakes::Calls.clear();
    Scroll(9);
    EXPECT_FALSE(ScrollBackActive);
    EXPECT_EQ(fakes::Calls, Strings{"HideScrollBack"});
    Scroll(4);
    EXPECT_TRUE(ScrollBackActive);
    EXPECT_EQ(CallsOf("ShowScrollBack"), 1);
}

TEST_F(OutputView, WhileScrolledBackTextIsPaintedAndTheScrollBarLeftAlone) {
    Show("some text");
    Scroll(4);
    fakes::SmallChange = fakes::LargeChange = 7;
    fakes::Calls.clear();
    React({{"more", "x"}});
    Show(std::string(600, 'x') + "more\n");
    EXPECT_EQ(fakes::Shown.size(), 614u);
    EXPECT_EQ(fakes::ScrollMax, 9);
    EXPECT_EQ(fakes::ScrollValue, 4);
    EXPECT_EQ(fakes::SmallChange, 7);
    EXPECT_EQ(fakes::LargeChange, 7);
    EXPECT_EQ(CallsOf("ShowScrollBack"), 0);
    EXPECT_EQ(CallsOf("HideScrollBack"), 0);
    EXPECT_EQ(CallsOf("CaretToEnd"), 1);
    EXPECT_EQ(CallsOf("Select 0 0"), 1);
    EXPECT_EQ(fakes::Sent(), "x\r");
}

TEST_F(OutputView, WhileScrolledBackTheBoxIsStillTrimmed) {
    Show(std::string(15001, 'x'));
    Scroll(4);
    Show("y");
    EXPECT_EQ(fakes::Shown.size(), 8001u);
    EXPECT_TRUE(ScrollBackActive);
}

TEST_F(OutputView, AfterTheReturnTheScrollBarFollowsAgain) {
    Show("some text");
    Scroll(4);
    Show("more");
    Scroll(9);
    Show("!");
    EXPECT_EQ(fakes::ScrollMax, 14);
    EXPECT_EQ(fakes::ScrollValue, 14);
}

TEST_F(OutputView, AppendingNeverStartsScrollBack) {
    for (int i = 0; i < 50; ++i) {
        Show(std::string(1000, 'x'));
        ASSERT_FALSE(ScrollBackActive);
    }
    EXPECT_EQ(CallsOf("ShowScrollBack"), 0);
}

// The command line's caret.

TEST_F(OutputView, TheCommandLineIsSelectedOnlyWhenItWasKeptAndEnterCameLast) {
    for (const bool keep : {false, true}) {
        for (const bool enter : {false, true}) {
            KeepSentText = keep;
            LastKeyWasEnter = enter;
            fakes::Input = "go north";
            Show("abc");
            EXPECT_EQ(fakes::SelStart, keep && enter ? 0u : 8u) << keep << enter;
            EXPECT_EQ(fakes::SelLength, keep && enter ? 8u : 0u) << keep << enter;
            EXPECT_EQ(KeepSentText, keep);
            EXPECT_EQ(LastKeyWasEnter, enter);
        }
    }
}

TEST_F(OutputView, AnEmptyRunAppliesTheCaretRuleToo) {
    fakes::Input = "look";
    Show("");
    EXPECT_EQ(fakes::SelStart, 4u);
}

// Status lines.

TEST_F(OutputView, AStatusLineIsWhiteAndLeavesEverythingElse) {
    React({{"Closed", "x"}, {"abc", "y"}});
    Show("abc");
    CurrentColour = 0x010203;
    fakes::Calls.clear();
    AppendStatus("\nConnection Closed\n");
    EXPECT_EQ(fakes::Shown, "abc\nConnection Closed\n");
    EXPECT_EQ(fakes::Runs.back().Colour, 0xffffff);
    EXPECT_EQ(CurrentColour, 0x010203);
    EXPECT_EQ(Pending(), "abc");
    EXPECT_EQ(fakes::Sent(), "");
    EXPECT_EQ(CallsOf("Append ffffff \nConnection Closed\n"), 1);
}

TEST_F(OutputView, AStatusLineIsWhiteWhateverThePaletteSays) {
    Palette.fill(0x010203);
    AppendStatus("Connected");
    EXPECT_EQ(fakes::Runs.back().Colour, 0xffffff);
}

TEST_F(OutputView, AStatusLineHasTheOutputFont) {
    OutputFontName = "Fixedsys";
    OutputFontSize = "12";
    AppendStatus("Connected");
    EXPECT_EQ(fakes::Runs.back().FontName, "Fixedsys");
    EXPECT_EQ(fakes::Runs.back().FontSize, "12");
}

TEST_F(OutputView, AStatusLineTrimsNothing) {
    fakes::Shown = std::string(15001, 'x');
    AppendStatus("Connected");
    EXPECT_EQ(fakes::Shown.size(), 15010u);
    Show("");
    EXPECT_EQ(fakes::Shown.size(), 8000u);
}

TEST_F(OutputView, AStatusLineHandsNoWaitingLineOn) {
    React({{"two", "2"}});
    Show("one\ntwo\n");
    AppendStatus("Connected\n");
    EXPECT_EQ(Pending(), "two\n");
    EXPECT_EQ(fakes::Sent(), "");
}

// The bound of what waits, seen through the log: it holds what was handed on, line by line.

class WaitingLines : public RuleTest {
protected:
    WaitingLines() {
        LogFilePath = (Folder.Path / "lines.log").string();
        AutoLogOn = true;
        OpenLog();
    }

    ~WaitingLines() override { CloseLog(); }

    // The lines handed on so far.
    Strings HandedOn() const {
        const std::string text = Folder.ContentOf("lines.log");
        const std::string begin = "\"" + fakes::Date + ": ";
        const std::string end = "\"\r\n";
        Strings lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t close = text.find(end, at);
            EXPECT_TRUE(text.substr(at).starts_with(begin));
            lines.push_back(text.substr(at + begin.size(), close - at - begin.size()));
            at = close + end.size();
        }
        return lines;
    }

    FreshFolder Folder;
};

std::string X(std::size_t count) { return std::string(count, 'x'); }

TEST_F(WaitingLines, ALineWithoutEndWaitsUpToTheBound) {
    Show(X(65536));
    EXPECT_EQ(Pending().size(), 65536u);
    EXPECT_TRUE(HandedOn().empty());
}

TEST_F(WaitingLines, ALineWithoutEndBeyondTheBoundIsHandedOnWithoutItsLineFeed) {
    Show(X(65536));
    Show("y");
    EXPECT_EQ(HandedOn(), Strings{X(65536) + "y"});
    EXPECT_EQ(Pending(), "");
    Show("rest\n");
    EXPECT_EQ(HandedOn(), (Strings{X(65536) + "y", "rest\n"}));
}

TEST_F(WaitingLines, ALineWithoutEndBeyondTheBoundIsShownToTheTriggers) {
    React({{"xy", "heard"}});
    Show(X(65536) + "y");
    EXPECT_EQ(fakes::Sent(), "heard\r");
}

TEST_F(WaitingLines, ALongLineThatIsCompleteIsOneLine) {
    Show(X(70000) + "\nabc");
    EXPECT_EQ(HandedOn(), Strings{X(70000) + "\n"});
    EXPECT_EQ(Pending(), "abc");
}

TEST_F(WaitingLines, FurtherLinesAreHandedOnOldestFirstUntilTheRestFits) {
    std::string text;
    for (int i = 0; i < 10; ++i)
        text += static_cast<char>('0' + i) + X(9998) + "\n";
    Show(text);
    const Strings lines = HandedOn();
    ASSERT_EQ(lines.size(), 4u); // six of 10,000 fit
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i], text.substr(i * 10000, 10000));
    EXPECT_EQ(Pending(), text.substr(40000));
}

TEST_F(WaitingLines, OnlyOneIsHandedOnWhenTheRestFitsExactly) {
    Show("one\n" + X(65535) + "\n");
    EXPECT_EQ(HandedOn(), Strings{"one\n"});
    EXPECT_EQ(Pending().size(), 65536u);
}

TEST_F(WaitingLines, TheSecondIsHandedOnWhenTheRestIsOneCharacterTooLong) {
    Show("one\ntwo\n" + X(65533));
    EXPECT_EQ(HandedOn(), (Strings{"one\n", "two\n"}));
    EXPECT_EQ(Pending(), X(65533));
}

TEST_F(WaitingLines, CompletedLinesGoBeforeALineWithoutEnd) {
    Show("one\ntwo\nthree\n" + X(65537));
    EXPECT_EQ(HandedOn(), (Strings{"one\n", "two\n", "three\n", X(65537)}));
    EXPECT_EQ(Pending(), "");
}

TEST_F(WaitingLines, AStormOfLinesStaysBoundedAndLosesNone) {
    std::size_t sent = 0;
    for (int i = 0; i < 100; ++i) {
        std::string text;
        for (int line = 0; line < 100; ++line)
            text += std::to_string(sent++) + X(30) + "\n";
        Show(text);
        ASSERT_LE(Pending().size(), kLongestPendingLine);
    }
    AppendWaitingLines();
    const Strings lines = HandedOn();
    ASSERT_EQ(lines.size(), sent);
    for (std::size_t i = 0; i < sent; ++i)
        ASSERT_EQ(lines[i], std::to_string(i) + X(30) + "\n");
}

TEST_F(WaitingLines, RandomRunsAreHandedOnCompleteAndInOrder) {
    std::mt19937 random(2401);
    std::uniform_int_distribution<int> choice(0, 9);
    std::uniform_int_distribution<std::size_t> length(0, 12);
    std::string all;
    std::size_t expected = 0; // lines handed on: one a call while any waits
    std::size_t complete = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (std::size_t i = length(random); i > 0; --i) {
            const int c = choice(random);
            text += c == 0 ? '\n' : c == 1 ? '\r' : static_cast<char>('a' + c);
        }
        for (const char ch : text) {
            if (ch != '\r')
                all += ch;
            complete += ch == '\n' ? 1u : 0u;
        }
        Show(text);
        expected += expected < complete ? 1u : 0u;
    }
    const Strings lines = HandedOn();
    EXPECT_EQ(lines.size(), expected);
    std::string joined;
    for (const std::string& line : lines) {
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        joined += line;
    }
    EXPECT_EQ(joined + Pending(), all);
}

} // namespace
} // namespace mw
