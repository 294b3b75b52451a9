#include "automation/CommandLine.h"

#include "automation/CommandBox.h"
#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "fakes/Fakes.h"
#include "net/Connection.h"
#include "support/ErrorOf.h"
#include "terminal/Output.h"

namespace mw {
namespace {

using Steps = std::vector<std::string>;

constexpr std::int16_t kF1 = 112;
constexpr std::int16_t kKeypad8 = 104;
constexpr std::int16_t kLetterX = 'X';

class CommandLineTest : public RuleTest {
protected:
    CommandLineTest() { Connected = true; }

    static void Type(const std::string& line) {
        fakes::Input = line;
        fakes::SelStart = line.size();
        fakes::SelLength = 0;
    }

    static void PressEnter(const std::string& line) {
        Type(line);
        cboInput_KeyDown(kEnterKey);
    }

    // What the game's next text does to the command line.
    static void ReceiveLine(std::string text) { AppendOutput(text); }
};

class Enter : public CommandLineTest {};

TEST_F(Enter, GoesStepByStep) {
    EchoOn = true;
    CurrentSet().Aliases = {{"g", "go;", true}};
    PressEnter("gn");
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Send g",
                                "Send o",
                                "Send \r",
                                "Send n",
                                "Send \r",
                                "Append ffffff \n",
                                "CaretToEnd",
                                "ScrollMax 1",
                                "Select 2 0",
                                "Input gn",
                                "Input ",
                                "Append ffffff go;n\n",
                                "CaretToEnd",
                                "ScrollMax 6",
                                "Select 0 0",
                            }));
    EXPECT_EQ(History, Steps{"gn"});
    EXPECT_TRUE(LastKeyWasEnter);
}

TEST_F(Enter, SendsTheLineAndACr) {
    PressEnter("look");
    EXPECT_EQ(fakes::Sent(), "look\r");
}

TEST_F(Enter, SendsSeveralCommandsInOneLine) {
    PressEnter("n;s;e");
    EXPECT_EQ(fakes::Sent(), "n\rs\re\r");
    EXPECT_EQ(History, Steps{"n;s;e"});
}

TEST_F(Enter, ExpandsOnlyTheStartOfALineOfSeveralCommands) {
    CurrentSet().Aliases = {{"k", "kill", true}};
    PressEnter("k;k");
    EXPECT_EQ(fakes::Sent(), "kill\rk\r");
}

TEST_F(Enter, SplitsNothingWithAnEscapeCharOfNoneOrTwoCharacters) {
    EscapeChar = "";
    PressEnter("n;s");
    EXPECT_EQ(fakes::Sent(), "n;s\r");
    EscapeChar = "||";
    PressEnter("n||s");
    EXPECT_EQ(fakes::Sent(), "n;s\rn||s\r");
}

TEST_F(Enter, EndsThePromptsLineWithEchoOrWithout) {
    ReceiveLine("> ");
    PressEnter("look");
    EXPECT_EQ(fakes::Shown, "> \n");
    EchoOn = true;
    PressEnter("look");
    EXPECT_EQ(fakes::Shown, "> \n\nlook\n");
}

TEST_F(Enter, EchoesTheExpandedLineWithItsEscapeCharacters) {
    EchoOn = true;
    CurrentSet().Aliases = {{"rest", "sit;sleep", true}};
    PressEnter("rest");
    EXPECT_EQ(fakes::Shown, "\nsit;sleep\n");
    EXPECT_EQ(History, Steps{"rest"});
}

TEST_F(Enter, EchoesInTheColourOfTheOutput) {
    EchoOn = true;
    CurrentColour = Rgb(1, 2, 3);
    PressEnter("look");
    EXPECT_EQ(fakes::Runs.back().Colour, Rgb(1, 2, 3));
}

TEST_F(Enter, LetsTheEchoFireTriggers) {
    CurrentSet().Triggers = {{"hungry", "eat"}};
    PressEnter("say hungry");
    EXPECT_EQ(fakes::Sent(), "say hungry\r");
    EchoOn = true;
    PressEnter("say hungry");
    EXPECT_EQ(fakes::Sent(), "say hungry\rsay hungry\reat\r");
}

TEST_F(Enter, LetsTheLineBreakCompleteThePromptForTheTriggers) {
    CurrentSet().Triggers = {{"Password:", "secret"}};
    ReceiveLine("Password:");
    EXPECT_EQ(fakes::Sent(), "");
    PressEnter("x");
    EXPECT_EQ(fakes::Sent(), "x\rsecret\r");
}

TEST_F(Enter, OnAnEmptyLineSendsABareCr) {
    EchoOn = true;
    PressEnter("");
    EXPECT_EQ(fakes::Sends, Steps{"\r"});
    EXPECT_EQ(fakes::Shown, "\n\n");
    EXPECT_TRUE(History.empty());
    EXPECT_TRUE(fakes::Items.empty());
    EXPECT_EQ(HistoryIndex, -1);
    EXPECT_TRUE(LastKeyWasEnter);
}

TEST_F(Enter, OnAnEmptyLineLeavesTheHistoryAsItIs) {
    PressEnter("look");
    PressEnter("");
    EXPECT_EQ(History, Steps{"look"});
    EXPECT_EQ(fakes::Input, "");
}

TEST_F(Enter, OnAnEmptyLineWithKeptTextBringsTheLastEntryIsMeant) {
    KeepSentText = true;
    PressEnter("look");
    PressEnter("");
    EXPECT_EQ(fakes::Sent(), "look\r\r");
    EXPECT_EQ(fakes::Input, "look");
    EXPECT_EQ(HistoryIndex, 0);
    ReceiveLine("You see nothing.");
    EXPECT_EQ(fakes::SelStart, 0u);
    EXPECT_EQ(fakes::SelLength, 4u);
}

TEST_F(Enter, ClearsTheLineAndSelectsNothing) {
    PressEnter("look");
    EXPECT_EQ(fakes::Input, "");
    EXPECT_EQ(fakes::SelLength, 0u);
    EXPECT_EQ(HistoryIndex, -1);
    ReceiveLine("You see nothing.");
    EXPECT_EQ(fakes::SelLength, 0u);
}

TEST_F(Enter, ThatClearedTheLineLetsTheFirstUpRecallTheNewest) {
    PressEnter("north");
    PressEnter("look");
    RecallOlder();
    EXPECT_EQ(fakes::Input, "look");
}

TEST_F(Enter, KeepsTheTypedTextNotTheExpandedOne) {
    KeepSentText = true;
    CurrentSet().Aliases = {{"k", "kill", true}};
    PressEnter("k orc");
    EXPECT_EQ(fakes::Input, "k orc");
    EXPECT_EQ(HistoryIndex, 0);
}

TEST_F(Enter, HasTheKeptTextSelectedByTheNextOutput) {
    KeepSentText = true;
    PressEnter("look");
    EXPECT_EQ(fakes::SelLength, 0u);
    ReceiveLine("You see nothing.");
    EXPECT_EQ(fakes::SelStart, 0u);
    EXPECT_EQ(fakes::SelLength, 4u);
}

TEST_F(Enter, LeavesLastKeyWasEnterOldWhileTheEchoIsAppendedIsMeant) {
    KeepSentText = EchoOn = true;
    PressEnter("look");
    EXPECT_EQ(fakes::CallsOf("Select 4 0"), 2);
    EXPECT_EQ(fakes::CallsOf("Select 0 4"), 0);
    fakes::Calls.clear();
    PressEnter("look");
    EXPECT_EQ(fakes::CallsOf("Select 0 4"), 2);
    EXPECT_EQ(fakes::CallsOf("Select 4 0"), 0);
}

TEST_F(Enter, AfterAnotherKeyFindsLastKeyWasEnterFalseAgain) {
    KeepSentText = EchoOn = true;
    PressEnter("look");
    cboInput_KeyDown(kLetterX);
    fakes::Calls.clear();
    PressEnter("look");
    EXPECT_EQ(fakes::CallsOf("Select 0 4"), 0);
    EXPECT_TRUE(LastKeyWasEnter);
}

TEST_F(Enter, SendsWhatItsMacroHasTyped) {
    SetKeyText(MacroSets[0].NormKey, kEnterKey, "first;score");
    PressEnter("look");
    EXPECT_EQ(fakes::Sent(), "first\rscore\r");
    EXPECT_EQ(History, Steps{"score"});
}

TEST_F(Enter, SendsWithModifiersHeldToo) {
    cboInput_KeyDown(kCtrlKey);
    PressEnter("look");
    EXPECT_EQ(fakes::Sent(), "look\r");
}

TEST_F(Enter, FailsWithoutACurrentMacroSetBeforeAnythingIsSent) {
    CurrentMacroSet = 1;
    EXPECT_EQ(ErrorOf([] { PressEnter("look"); }), SubscriptOutOfRange);
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_TRUE(History.empty());
    EXPECT_FALSE(LastKeyWasEnter);
}

TEST_F(Enter, AfterASocketErrorStillHandsOverItsCrs) {
    fakes::SocketState = SocketClosed;
    PressEnter("n;s");
    EXPECT_EQ(fakes::Sends, (Steps{"\r", "\r"}));
    EXPECT_TRUE(fakes::Messages.empty());
    EXPECT_EQ(History, Steps{"n;s"});
}

class EnterWhileNotConnected : public CommandLineTest {
protected:
    EnterWhileNotConnected() { Connected = false; }
};

TEST_F(EnterWhileNotConnected, ShowsAMessageAndClearsTheLine) {
    PressEnter("look");
    EXPECT_EQ(fakes::Calls, (Steps{"Message You need to connect to a mud first", "Input "}));
    EXPECT_EQ(fakes::Input, "");
}

TEST_F(EnterWhileNotConnected, LeavesTheHistory) {
    AddToHistory("north");
    PressEnter("look");
    EXPECT_EQ(History, Steps{"north"});
    EXPECT_EQ(fakes::Items, Steps{"north"});
}

TEST_F(EnterWhileNotConnected, LeavesLastKeyWasEnter) {
    PressEnter("look");
    EXPECT_FALSE(LastKeyWasEnter);
    LastKeyWasEnter = true;
    PressEnter("look");
    EXPECT_TRUE(LastKeyWasEnter);
}

TEST_F(EnterWhileNotConnected, ClearsTheLineWithKeptTextToo) {
    KeepSentText = true;
    PressEnter("look");
    EXPECT_EQ(fakes::Input, "");
}

TEST_F(EnterWhileNotConnected, ShowsTheMessageOnAnEmptyLineToo) {
    PressEnter("");
    EXPECT_EQ(fakes::Messages, Steps{"You need to connect to a mud first"});
}

TEST_F(EnterWhileNotConnected, NeedsNoCurrentMacroSet) {
    CurrentMacroSet = 1;
    EXPECT_EQ(ErrorOf([] { PressEnter("look"); }), 0);
}

TEST_F(EnterWhileNotConnected, PlaysItsMacroFirst) {
    SetKeyText(MacroSets[0].NormKey, kEnterKey, "score");
    PressEnter("look");
    EXPECT_EQ(fakes::Calls, (Steps{"Input score", "Select 5 0",
                                   "Message You need to connect to a mud first", "Input "}));
}

class KeysInBothWindows : public CommandLineTest, public testing::WithParamInterface<bool> {
protected:
    static bool InCommandLine() { return GetParam(); }

    static void KeyDown(std::int16_t keyCode) {
        InCommandLine() ? cboInput_KeyDown(keyCode) : frmOutput_KeyDown(keyCode);
    }

    static void KeyUp(std::int16_t keyCode) {
        InCommandLine() ? cboInput_KeyUp(keyCode) : frmOutput_KeyUp(keyCode);
    }

    // What becomes of the character.
    static std::int16_t KeyPress(std::int16_t character) {
        InCommandLine() ? cboInput_KeyPress(character) : frmOutput_KeyPress(character);
        return character;
    }
};

TEST_P(KeysInBothWindows, SetAndClearTheModifiers) {
    KeyDown(kCtrlKey);
    EXPECT_TRUE(CtrlDown && !AltDown && !ShiftDown);
    KeyDown(kAltKey);
    EXPECT_TRUE(CtrlDown && AltDown && !ShiftDown);
    KeyDown(kShiftKey);
    EXPECT_TRUE(CtrlDown && AltDown && ShiftDown);
    KeyUp(kCtrlKey);
    EXPECT_TRUE(!CtrlDown && AltDown && ShiftDown);
    KeyUp(kAltKey);
    EXPECT_TRUE(!CtrlDown && !AltDown && ShiftDown);
    KeyUp(kShiftKey);
    EXPECT_TRUE(!CtrlDown && !AltDown && !ShiftDown);
}

TEST_P(KeysInBothWindows, HaveTheCustomaryCodes) {
    KeyDown(16);
    EXPECT_TRUE(ShiftDown);
    KeyDown(17);
    EXPECT_TRUE(CtrlDown);
    KeyDown(18);
    EXPECT_TRUE(AltDown);
}

TEST_P(KeysInBothWindows, KeepAModifierThatNoWindowSawComeUpIsMeant) {
    KeyDown(kCtrlKey);
    KeyDown(kLetterX);
    KeyUp(kLetterX);
    KeyPress('x');
    EXPECT_TRUE(CtrlDown);
}

TEST_P(KeysInBothWindows, ChangeNothingElseWhenTheyComeUp) {
    SwallowKeyPress = LastKeyWasEnter = true;
    Type("typed");
    for (const std::int16_t key : {kLetterX, kEnterKey, kKeypad8, kCtrlKey})
        KeyUp(key);
    EXPECT_TRUE(SwallowKeyPress);
    EXPECT_TRUE(LastKeyWasEnter);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_P(KeysInBothWindows, AreOfferedToTheMacrosBeforeTheirFlagIsSet) {
    SetKeyText(MacroSets[0].NormKey, kCtrlKey, "plain;");
    SetKeyText(MacroSets[0].CtrlKey, kCtrlKey, "ctrl;");
    KeyDown(kCtrlKey);
    EXPECT_EQ(fakes::Sent(), "plain\r");
    KeyDown(kCtrlKey);
    EXPECT_EQ(fakes::Sent(), "plain\rctrl\r");
}

TEST_P(KeysInBothWindows, PlayAltMacrosOnlyAfterAltWentDown) {
    SetKeyText(MacroSets[0].NormKey, kAltKey, "plain;");
    SetKeyText(MacroSets[0].AltKey, kLetterX, "alt;");
    KeyDown(kAltKey);
    KeyDown(kLetterX);
    KeyUp(kAltKey);
    KeyDown(kLetterX);
    EXPECT_EQ(fakes::Sent(), "plain\ralt\r");
}

TEST_P(KeysInBothWindows, TypeTheLastPartOfAMacroIntoTheCommandLine) {
    SetKeyText(MacroSets[0].NormKey, kF1, "kill ");
    KeyDown(kF1);
    EXPECT_EQ(fakes::Input, "kill ");
    EXPECT_EQ(KeyPress('x'), 'x');
}

TEST_P(KeysInBothWindows, CountEachRepeat) {
    SetKeyText(MacroSets[0].NormKey, kF1, "hit;");
    for (int i = 0; i < 3; ++i)
        KeyDown(kF1);
    EXPECT_EQ(fakes::Sent(), "hit\rhit\rhit\r");
}

TEST_P(KeysInBothWindows, SwallowTheCharacterOfADirection) {
    KeyDown(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "north\r");
    EXPECT_EQ(KeyPress('8'), 0);
    EXPECT_EQ(KeyPress('8'), '8');
}

TEST_P(KeysInBothWindows, LetOtherCharactersThrough) {
    EXPECT_EQ(KeyPress('a'), 'a');
    EXPECT_EQ(KeyPress(255), 255);
    EXPECT_EQ(KeyPress(13), 13);
}

TEST_P(KeysInBothWindows, SwallowNothingAfterTheNextKeyWhenNoCharacterFollowed) {
    KeyDown(kKeypad8);
    KeyUp(kKeypad8);
    EXPECT_TRUE(SwallowKeyPress);
    KeyDown(kLetterX);
    EXPECT_EQ(KeyPress('x'), 'x');
}

TEST_P(KeysInBothWindows, SwallowNothingAfterAModifierOrAKeyWithoutACode) {
    for (const std::int16_t key : {kShiftKey, std::int16_t{0}}) {
        KeyDown(kKeypad8);
        KeyDown(key);
        EXPECT_EQ(KeyPress('x'), 'x') << key;
    }
}

TEST_P(KeysInBothWindows, SwallowOneCharacterForEachOfTwoDirections) {
    for (int i = 0; i < 2; ++i) {
        KeyDown(kKeypad8);
        EXPECT_EQ(KeyPress('8'), 0);
    }
    EXPECT_EQ(fakes::Sent(), "north\rnorth\r");
}

TEST_P(KeysInBothWindows, WithoutACodeAreNotLookedUp) {
    SetKeyText(MacroSets[0].NormKey, 0, "zero;");
    KeyDown(0);
    EXPECT_TRUE(fakes::Sends.empty());
}

TEST_P(KeysInBothWindows, OfCodesThatAreNoneAreAnError) {
    for (const std::int16_t key : {std::int16_t{-1}, std::int16_t{256}})
        EXPECT_EQ(ErrorOf([key] { KeyDown(key); }), SubscriptOutOfRange) << key;
}

TEST_P(KeysInBothWindows, WalkWithoutAConnectionToo) {
    Connected = false;
    fakes::SocketState = SocketClosed;
    KeyDown(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "\r");
    EXPECT_TRUE(fakes::Messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Windows, KeysInBothWindows, testing::Bool(), [](const auto& row) {
    return std::string(row.param ? "CommandLine" : "Output");
});

class OtherKeys : public CommandLineTest {};

TEST_F(OtherKeys, InTheCommandLineClearLastKeyWasEnter) {
    for (const std::int16_t key : {kLetterX, kF1, kKeypad8, kShiftKey, kCtrlKey, kAltKey}) {
        LastKeyWasEnter = true;
        cboInput_KeyDown(key);
        EXPECT_FALSE(LastKeyWasEnter) << key;
    }
}

TEST_F(OtherKeys, WithoutACodeClearLastKeyWasEnter) {
    LastKeyWasEnter = true;
    cboInput_KeyDown(0);
    EXPECT_FALSE(LastKeyWasEnter);
}

TEST_F(OtherKeys, InTheCommandLineSendNothing) {
    Type("look");
    cboInput_KeyDown(kLetterX);
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(fakes::Input, "look");
}

TEST_F(OtherKeys, InTheOutputWindowLeaveLastKeyWasEnter) {
    LastKeyWasEnter = true;
    for (const std::int16_t key : {kLetterX, kCtrlKey, std::int16_t{0}, kEnterKey})
        frmOutput_KeyDown(key);
    EXPECT_TRUE(LastKeyWasEnter);
}

TEST_F(OtherKeys, EnterMeansNothingInTheOutputWindow) {
    Type("look");
    frmOutput_KeyDown(kEnterKey);
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(fakes::Input, "look");
    EXPECT_FALSE(LastKeyWasEnter);
    Connected = false;
    frmOutput_KeyDown(kEnterKey);
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(OtherKeys, OfOneWindowAreRememberedInTheOther) {
    SetKeyText(MacroSets[0].CtrlKey, kLetterX, "ctrl;");
    frmOutput_KeyDown(kCtrlKey);
    cboInput_KeyDown(kLetterX);
    EXPECT_EQ(fakes::Sent(), "ctrl\r");
    cboInput_KeyUp(kCtrlKey);
    EXPECT_FALSE(CtrlDown);
    frmOutput_KeyDown(kKeypad8);
    std::int16_t character = '8';
    cboInput_KeyPress(character);
    EXPECT_EQ(character, 0);
}

} // namespace
} // namespace mw
