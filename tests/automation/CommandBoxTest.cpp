#include "automation/CommandBox.h"

#include "automation/CommandLine.h"
#include "base/Globals.h"
#include "fakes/Fakes.h"
#include "net/Connection.h"

namespace mw {
namespace {

using Lines = std::vector<std::string>;

class CommandBoxTest : public RuleTest {
protected:
    static void Type(const std::string& text) {
        fakes::Input = text;
        cboInput_Change();
    }

    static void PressEnter(const std::string& line) {
        Connected = true;
        Type(line);
        cboInput_KeyDown(kEnterKey);
    }

    static std::string Up() {
        RecallOlder();
        return fakes::Input;
    }

    static std::string Down() {
        RecallNewer();
        return fakes::Input;
    }

    static Lines Numbers(int from, int to) {
        Lines lines;
        for (int i = from; i <= to; ++i)
            lines.push_back("line " + std::to_string(i));
        return lines;
    }
};

class CommandHistory : public CommandBoxTest {};

TEST_F(CommandHistory, StartsEmpty) {
    EXPECT_TRUE(History.empty());
    EXPECT_EQ(HistoryIndex, -1);
}

TEST_F(CommandHistory, HoldsTheLinesOldestFirstUnsorted) {
    for (const char* line : {"west", "east", "north"})
        PressEnter(line);
    EXPECT_EQ(History, (Lines{"west", "east", "north"}));
    EXPECT_EQ(fakes::Items, History);
}

TEST_F(CommandHistory, HoldsTheSameLineTwice) {
    PressEnter("look");
    PressEnter("look");
    EXPECT_EQ(History, (Lines{"look", "look"}));
    EXPECT_EQ(fakes::Items, History);
}

TEST_F(CommandHistory, HoldsTwentyFive) {
    for (const std::string& line : Numbers(1, 25))
        PressEnter(line);
    EXPECT_EQ(History, Numbers(1, 25));
    EXPECT_EQ(fakes::Items, Numbers(1, 25));
}

TEST_F(CommandHistory, LosesTheOldestToTheTwentySixth) {
    for (const std::string& line : Numbers(1, 26))
        PressEnter(line);
    EXPECT_EQ(History, Numbers(2, 26));
    EXPECT_EQ(fakes::Items, Numbers(2, 26));
}

TEST_F(CommandHistory, LosesAnOldDuplicateToANewOne) {
    for (int i = 0; i < 30; ++i)
        PressEnter("look");
    EXPECT_EQ(History, Lines(25, "look"));
    EXPECT_EQ(fakes::Items, Lines(25, "look"));
}

TEST_F(CommandHistory, NeverHoldsAnEmptyLine) {
    PressEnter("");
    PressEnter("look");
    PressEnter("");
    EXPECT_EQ(History, Lines{"look"});
}

TEST_F(CommandHistory, HoldsALineOfBlanks) {
    PressEnter(" ");
    EXPECT_EQ(History, Lines{" "});
}

TEST_F(CommandHistory, LosesTheOldestAndSelectsTheNewestWithKeptText) {
    KeepSentText = true;
    for (const std::string& line : Numbers(1, 26))
        PressEnter(line);
    EXPECT_EQ(HistoryIndex, 24);
    EXPECT_EQ(fakes::Input, "line 26");
}

TEST_F(CommandHistory, PutsASelectedEntryIntoTheField) {
    AddToHistory("a");
    AddToHistory("b");
    SelectHistory(0);
    EXPECT_EQ(HistoryIndex, 0);
    EXPECT_EQ(fakes::Input, "a");
    SelectHistory(1);
    EXPECT_EQ(fakes::Input, "b");
}

TEST_F(CommandHistory, LeavesTheTextWhenNoneIsSelected) {
    AddToHistory("a");
    Type("typed");
    SelectHistory(-1);
    EXPECT_EQ(HistoryIndex, -1);
    EXPECT_EQ(fakes::Input, "typed");
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(CommandHistory, HasNoEntrySelectedOnceTheLineIsCleared) {
    AddToHistory("a");
    SelectHistory(0);
    ClearCommand();
    EXPECT_EQ(HistoryIndex, -1);
    EXPECT_EQ(fakes::Input, "");
    EXPECT_EQ(History, Lines{"a"});
}

TEST_F(CommandHistory, HasNoEntrySelectedOnceTheTextIsEdited) {
    AddToHistory("a");
    SelectHistory(0);
    cboInput_Change();
    EXPECT_EQ(HistoryIndex, -1);
    EXPECT_EQ(fakes::Input, "a");
}

class Recalling : public CommandBoxTest {
protected:
    Recalling() {
        for (const char* line : {"one", "two", "three"})
            PressEnter(line);
    }
};

TEST_F(Recalling, GoesUpFromTheNewestAndStaysAtTheOldest) {
    EXPECT_EQ(Up(), "three");
    EXPECT_EQ(Up(), "two");
    EXPECT_EQ(Up(), "one");
    EXPECT_EQ(Up(), "one");
    EXPECT_EQ(HistoryIndex, 0);
}

TEST_F(Recalling, GoesDownToWhatWasTyped) {
    Type("half");
    Up();
    Up();
    EXPECT_EQ(Down(), "three");
    EXPECT_EQ(Down(), "half");
    EXPECT_EQ(HistoryIndex, -1);
    EXPECT_EQ(Down(), "half");
}

TEST_F(Recalling, GoesNowhereDownFromTheTypedText) {
    Type("half");
    EXPECT_EQ(Down(), "half");
    EXPECT_EQ(HistoryIndex, -1);
}

TEST_F(Recalling, BeginsAtTheNewestAgainAfterAnEdit) {
    Up();
    Up();
    Type("two!");
    EXPECT_EQ(Up(), "three");
    EXPECT_EQ(Down(), "two!");
}

TEST_F(Recalling, SendsTheRecalledLineAsANewEntry) {
    Up();
    Up();
    fakes::Sends.clear();
    cboInput_KeyDown(kEnterKey);
    EXPECT_EQ(fakes::Sent(), "two\r");
    EXPECT_EQ(History, (Lines{"one", "two", "three", "two"}));
    EXPECT_EQ(Up(), "two");
    EXPECT_EQ(Up(), "three");
}

TEST_F(Recalling, ForgetsTheTypedTextOnceALineIsSentAndKept) {
    KeepSentText = true;
    Type("half");
    Up();
    cboInput_KeyDown(kEnterKey);
    EXPECT_EQ(fakes::Input, "three");
    EXPECT_EQ(Down(), "");
}

TEST_F(Recalling, ForgetsTheTypedTextOnceALineIsSent) {
    Type("half");
    Up();
    cboInput_KeyDown(kEnterKey);
    Up();
    EXPECT_EQ(Down(), "");
}

TEST_F(Recalling, InAnEmptyHistoryLeavesTheText) {
    ResetCommandBox();
    Type("half");
    EXPECT_EQ(Up(), "half");
    EXPECT_EQ(Down(), "half");
    EXPECT_EQ(HistoryIndex, -1);
}

TEST_F(Recalling, GoesUpFromTheKeptLine) {
    KeepSentText = true;
    PressEnter("four");
    EXPECT_EQ(HistoryIndex, 3);
    EXPECT_EQ(Up(), "three");
}

class CaretRule : public CommandBoxTest {};

TEST_F(CaretRule, PutsTheCaretToTheEndUnlessTheSentTextIsKeptAndEnterWasLast) {
    for (const bool keep : {false, true}) {
        for (const bool enter : {false, true}) {
            KeepSentText = keep;
            LastKeyWasEnter = enter;
            fakes::Input = "look";
            fakes::SelStart = fakes::SelLength = 1;
            AfterOutputAppend();
            EXPECT_EQ(fakes::SelStart, keep && enter ? 0u : 4u) << keep << enter;
            EXPECT_EQ(fakes::SelLength, keep && enter ? 4u : 0u) << keep << enter;
            EXPECT_EQ(fakes::Input, "look");
        }
    }
}

TEST_F(CaretRule, SelectsNothingInAnEmptyLine) {
    KeepSentText = LastKeyWasEnter = true;
    AfterOutputAppend();
    EXPECT_EQ(fakes::SelStart, 0u);
    EXPECT_EQ(fakes::SelLength, 0u);
}

} // namespace
} // namespace mw
