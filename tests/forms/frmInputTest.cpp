#include "automation/frmInput.h"

#include "forms/FrameTest.h"
#include "ui/InputControls.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QMenu>

namespace mw {
namespace {

using forms::Boxes;
using forms::WaitFor;

constexpr const char* kNotConnected = "You need to connect to a mud first";

class FrmInputTest : public forms::FrameTest {
protected:
    QLineEdit& Edit() const { return *Input()->lineEdit(); }

    void Paste(const QString& text) const {
        QApplication::clipboard()->setText(text);
        Press(Qt::Key_V, Qt::ControlModifier);
    }

    // A key as it comes from the keyboard, with the text that it types.
    void Key(QEvent::Type type, int key, const QString& text, bool repeated = false,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QKeyEvent event(type, key, modifiers, text, repeated);
        QApplication::sendEvent(Input(), &event);
    }

    // Sends lines, so that they stand in the history.
    void SendLines(const std::vector<std::string>& lines) {
        Connect();
        for (const std::string& line : lines)
            Enter(QString::fromStdString(line));
        EXPECT_EQ(History, lines);
    }

    void CloseMenu() const {
        while (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
    }
};

TEST_F(FrmInputTest, HasTheFocusAndIsEmptyAtFirst) {
    EXPECT_TRUE(Input()->hasFocus());
    EXPECT_EQ(Typed(), "");
    EXPECT_EQ(Input()->count(), 0);
    EXPECT_EQ(Input()->currentIndex(), -1);
}

TEST_F(FrmInputTest, TypingAppears) {
    Type("look at sword");
    EXPECT_EQ(Typed(), "look at sword");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Typed(), "look at swor");
    EXPECT_EQ(cboInput::Text(), "look at swor");
    EXPECT_EQ(cboInput::TextLength(), 12u);
}

TEST_F(FrmInputTest, EnterSendsTheLineAndClearsTheBox) {
    Connect();
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    EXPECT_EQ(Typed(), "");
    EXPECT_EQ(Input()->currentIndex(), -1);
    EXPECT_EQ(Input()->count(), 1);
    EXPECT_FALSE(Edit().hasSelectedText());
}

TEST_F(FrmInputTest, KeypadEnterIsEnter) {
    Connect();
    Type("north");
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(Server.Gets("north\r"));
}

TEST_F(FrmInputTest, EnterOnAnEmptyLineSendsACarriageReturn) {
    Connect();
    Press(Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("\r"));
    EXPECT_EQ(Input()->count(), 0);
}

TEST_F(FrmInputTest, TheEscapeCharacterSeparatesCommands) {
    Connect();
    Enter("n;s;say hi");
    EXPECT_TRUE(Server.Gets("n\rs\rsay hi\r"));
}

TEST_F(FrmInputTest, EnterWithoutAConnectionIsRefusedAndClears) {
    Enter("look");
    EXPECT_EQ(Closer.Texts, Boxes{kNotConnected});
    EXPECT_EQ(Typed(), "");
    EXPECT_EQ(Input()->count(), 0);
    EXPECT_EQ(Frame->focusWidget(), Input());
}

TEST_F(FrmInputTest, CharactersOfTheCodePageAreSentAsTheirBytes) {
    Connect();
    Key(QEvent::KeyPress, Qt::Key_Eacute, QString(QChar(0xE9)));
    Key(QEvent::KeyPress, Qt::Key_E, QString(QChar(0x20AC)), false, Qt::GroupSwitchModifier);
    Press(Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("\xE9\x80\r"));
}

TEST_F(FrmInputTest, ACharacterOutsideTheCodePageIsSentAsAQuestionMark) {
    Connect();
    Key(QEvent::KeyPress, Qt::Key_unknown, QString(QChar(0x0416)));
    Key(QEvent::KeyPress, Qt::Key_unknown, QString::fromUcs4(U"\U0001F600"));
    Type(".");
    Press(Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("??.\r"));
}

TEST_F(FrmInputTest, UpRecallsTheNewestAfterALineThatWasCleared) {
    SendLines({"one", "two", "three"});
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "three");
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "two");
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "one");
    Press(Qt::Key_Down);
    EXPECT_EQ(Typed(), "two");
}

TEST_F(FrmInputTest, GoingDownPastTheNewestBringsTheDraftBack) {
    SendLines({"one", "two"});
    Type("dra");
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "one");
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(Typed(), "dra");
    Press(Qt::Key_Down);
    EXPECT_EQ(Typed(), "dra");
    Type("ft");
    EXPECT_EQ(Typed(), "draft");
}

TEST_F(FrmInputTest, ARecalledLineCanBeEditedAndSent) {
    SendLines({"kill rat"});
    Server.Received.clear();
    Press(Qt::Key_Up);
    Press(Qt::Key_Backspace);
    Enter("t king");
    EXPECT_TRUE(WaitFor([this] { return Server.Received.ends_with("kill rat king\r"); }));
    EXPECT_EQ(History.back(), "kill rat king");
}

TEST_F(FrmInputTest, KeypadArrowsWithoutNumLockRecallToo) {
    SendLines({"one"});
    Press(Qt::Key_Up, Qt::KeypadModifier);
    EXPECT_EQ(Typed(), "one");
    Press(Qt::Key_Down, Qt::KeypadModifier);
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmInputTest, UpWithoutAHistoryChangesNothing) {
    Type("draft");
    Press(Qt::Key_Up);
    Press(Qt::Key_Down);
    EXPECT_EQ(Typed(), "draft");
}

TEST_F(FrmInputTest, TheListShowsTheHistoryOf25WithDuplicates) {
    Connect();
    for (int i = 0; i < 30; ++i)
        Enter(i < 15 ? QString("same") : QString("line %1").arg(i));
    ASSERT_EQ(Input()->count(), 25);
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(Input()->itemText(i).toStdString(), History[static_cast<std::size_t>(i)]);
    EXPECT_EQ(Input()->itemText(0), "same");
    EXPECT_EQ(Input()->itemText(24), "line 29");
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmInputTest, ChoosingFromTheListPutsTheLineIntoTheBox) {
    SendLines({"one", "two", "three"});
    Press(Qt::Key_Down, Qt::AltModifier);
    QAbstractItemView& list = *Input()->view();
    ASSERT_TRUE(WaitFor([&] { return list.isVisible(); }));
    list.setCurrentIndex(list.model()->index(1, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    ASSERT_TRUE(WaitFor([&] { return !list.isVisible(); }));
    EXPECT_EQ(Typed(), "two");
    EXPECT_EQ(HistoryIndex, 1);
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "one");
}

TEST_F(FrmInputTest, LeavingTheBoxIsNoChoiceOfALineThatReadsTheSame) {
    SendLines({"one", "two"});
    Type("one");
    Output()->setFocus();
    ASSERT_FALSE(Input()->hasFocus());
    Input()->setFocus();
    EXPECT_EQ(HistoryIndex, -1);
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "two");
}

TEST_F(FrmInputTest, KeptTextIsSelectedAfterTheNextOutput) {
    KeepSentText = true;
    Connect();
    Enter("look");
    EXPECT_EQ(Typed(), "look");
    Receive("You see nothing.");
    EXPECT_EQ(Edit().selectedText(), "look");
    Type("x");
    EXPECT_EQ(Typed(), "x");
    Receive("Still nothing.");
    EXPECT_FALSE(Edit().hasSelectedText());
}

// As dead keys and input methods type: first what is being composed, then what came of it.
TEST_F(FrmInputTest, KeptTextStaysWhenTheNextIsTypedWithoutAKey) {
    struct {
        const char* Composed;
        const char* Typed;
    } const rows[] = {{"'", ""}, {"", "e"}};
    KeepSentText = true;
    Connect();
    for (const auto& row : rows) {
        Enter("look");
        QInputMethodEvent event(row.Composed, {});
        event.setCommitString(row.Typed);
        QApplication::sendEvent(Input(), &event);
        Receive(std::string("You see nothing") + row.Typed);
        EXPECT_FALSE(Edit().hasSelectedText()) << row.Typed;
    }
}

TEST_F(FrmInputTest, KeptTextIsSelectedAlthoughTheInputMethodReportsNothingTyped) {
    KeepSentText = true;
    Connect();
    Enter("look");
    QInputMethodEvent event;
    QApplication::sendEvent(Input(), &event);
    Receive("You see nothing.");
    EXPECT_EQ(Edit().selectedText(), "look");
}

TEST_F(FrmInputTest, OutputPutsTheCaretToTheEnd) {
    Connect();
    Type("abc");
    Press(Qt::Key_Home);
    EXPECT_EQ(Edit().cursorPosition(), 0);
    Receive("A bell rings.");
    EXPECT_EQ(Edit().cursorPosition(), 3);
    EXPECT_FALSE(Edit().hasSelectedText());
}

TEST_F(FrmInputTest, PastedLineBreaksBecomeBlanks) {
    Paste("one\r\ntwo\nthree\rfour");
    EXPECT_EQ(Typed(), "one two three four");
    EXPECT_EQ(Edit().cursorPosition(), 18);
    Type("!");
    EXPECT_EQ(Typed(), "one two three four!");
}

TEST_F(FrmInputTest, PastingInTheMiddleLeavesTheCaretBehindThePaste) {
    Type("ad");
    Press(Qt::Key_Left);
    Paste("b\r\nc\r\n");
    EXPECT_EQ(Typed(), "ab c d");
    Type("-");
    EXPECT_EQ(Typed(), "ab c -d");
}

TEST_F(FrmInputTest, APastedTextIsSentAsOneLine) {
    Connect();
    Paste("say a\r\nb");
    Press(Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("say a b\r"));
}

TEST_F(FrmInputTest, HoldsAtMost32767Characters) {
    Paste(QString(40000, 'x'));
    EXPECT_EQ(Typed().size(), 32767u);
    Type("y");
    EXPECT_EQ(Typed().size(), 32767u);
    EXPECT_EQ(Typed().back(), 'x');
}

TEST_F(FrmInputTest, AKeypadDigitSendsADirectionAndTypesNothing) {
    Connect();
    Type("a");
    Press(Qt::Key_4, Qt::KeypadModifier);
    Press(Qt::Key_Plus, Qt::KeypadModifier);
    Type("b");
    EXPECT_TRUE(Server.Gets("west\rdown\r"));
    EXPECT_EQ(Typed(), "ab");
}

TEST_F(FrmInputTest, KeypadZeroIsADigit) {
    Press(Qt::Key_0, Qt::KeypadModifier);
    Press(Qt::Key_Asterisk, Qt::KeypadModifier);
    EXPECT_EQ(Typed(), "0*");
}

TEST_F(FrmInputTest, TheNextCharacterIsNotSwallowedWhenADirectionTypedNothing) {
    Connect();
    Key(QEvent::KeyPress, Qt::Key_8, "", false, Qt::KeypadModifier);
    Type("x");
    EXPECT_EQ(Typed(), "x");
    EXPECT_TRUE(Server.Gets("north\r"));
}

TEST_F(FrmInputTest, AutoRepeatCounts) {
    Connect();
    Key(QEvent::KeyPress, Qt::Key_6, "6", false, Qt::KeypadModifier);
    Key(QEvent::KeyRelease, Qt::Key_6, "6", true, Qt::KeypadModifier);
    Key(QEvent::KeyPress, Qt::Key_6, "6", true, Qt::KeypadModifier);
    Key(QEvent::KeyPress, Qt::Key_A, "a", true);
    Key(QEvent::KeyPress, Qt::Key_A, "a", true);
    EXPECT_TRUE(Server.Gets("east\reast\r"));
    EXPECT_EQ(Typed(), "aa");
}

TEST_F(FrmInputTest, TheReleaseOfAutoRepeatReleasesNoModifier) {
    Key(QEvent::KeyPress, Qt::Key_Control, "");
    Key(QEvent::KeyRelease, Qt::Key_Control, "", true);
    EXPECT_TRUE(CtrlDown);
    Key(QEvent::KeyRelease, Qt::Key_Control, "");
    EXPECT_FALSE(CtrlDown);
}

TEST_F(FrmInputTest, LoneModifiersSetAndClearTheirFlags) {
    struct {
        Qt::Key Key;
        bool& Flag;
    } const rows[] = {
        {Qt::Key_Control, CtrlDown}, {Qt::Key_Alt, AltDown}, {Qt::Key_Shift, ShiftDown}};
    for (const auto& row : rows) {
        QTest::keyPress(Input(), row.Key);
        EXPECT_TRUE(row.Flag);
        QTest::keyRelease(Input(), row.Key);
        EXPECT_FALSE(row.Flag);
    }
    Key(QEvent::KeyPress, Qt::Key_AltGr, "");
    EXPECT_FALSE(CtrlDown || AltDown || ShiftDown);
    EXPECT_EQ(Typed(), "");
}

// The usual switch between layouts: Shift is still held when Alt comes up, under another name.
TEST_F(FrmInputTest, AltIsReleasedWhileShiftIsHeld) {
    QTest::keyPress(Input(), Qt::Key_Alt);
    QTest::keyPress(Input(), Qt::Key_Shift, Qt::AltModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Meta, Qt::ShiftModifier, 64, 0xffe7, 0);
    QApplication::sendEvent(Input(), &release);
    EXPECT_FALSE(AltDown);
}

TEST_F(FrmInputTest, AltAndALettersMenuOpenWithoutAMacro) {
    Press(Qt::Key_F, Qt::AltModifier);
    QWidget* const popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(static_cast<QMenu*>(popup)->title(), "&File");
    CloseMenu();
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmInputTest, AltAndALetterPlayItsMacroInsteadOfTheMenu) {
    SetKeyText(MacroSets[0].AltKey, 'F', "flee;");
    Connect();
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Server.Gets("flee\r"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmInputTest, AltAndALetterOfAnotherScriptPlayTheMacroOfItsPlace) {
    SetKeyText(MacroSets[0].AltKey, 'A', "attack;");
    Connect();
    QTest::keyPress(Input(), Qt::Key_Alt);
    const QString letter(QChar(0x0444));
    QKeyEvent claim(QEvent::ShortcutOverride, 0x0424, Qt::AltModifier, 38, 0x6c6, 0, letter);
    claim.ignore();
    QApplication::sendEvent(Input(), &claim);
    EXPECT_TRUE(claim.isAccepted());
    QKeyEvent press(QEvent::KeyPress, 0x0424, Qt::AltModifier, 38, 0x6c6, 0, letter);
    QApplication::sendEvent(Input(), &press);
    EXPECT_TRUE(Server.Gets("attack\r"));
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmInputTest, AltAndALetterWithoutMenuOrMacroTypeNothing) {
    for (const Qt::KeyboardModifiers more :
         {Qt::NoModifier, Qt::ShiftModifier, Qt::KeypadModifier}) {
        Press(Qt::Key_X, Qt::AltModifier | more);
        EXPECT_EQ(Typed(), "");
    }
}

// Windows gives AltGr, by which some keyboards type, as both.
TEST_F(FrmInputTest, AltAndCtrlTogetherType) {
    Key(QEvent::KeyPress, Qt::Key_At, "@", Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(Typed(), "@");
}

// Else the menu bar would take the focus, and the key would count as held from then on.
TEST_F(FrmInputTest, AltAloneIsTheCommandLinesAndNotTheMenuBars) {
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Alt, Qt::AltModifier);
    event.ignore();
    QApplication::sendEvent(Input(), &event);
    EXPECT_TRUE(event.isAccepted());
    Key(QEvent::KeyPress, Qt::Key_Alt, "");
    EXPECT_TRUE(AltDown);
    Key(QEvent::KeyRelease, Qt::Key_Alt, "");
    EXPECT_FALSE(AltDown);
    EXPECT_TRUE(Input()->hasFocus());
}

TEST_F(FrmInputTest, AltIsReleasedInTheListThatItHasDroppedDown) {
    SendLines({"one", "two"});
    QTest::keyPress(Input(), Qt::Key_Alt);
    QTest::keyPress(Input(), Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(Input()->view()->isVisible());
    EXPECT_TRUE(AltDown);
    QTest::keyRelease(Input()->view(), Qt::Key_Alt);
    EXPECT_FALSE(AltDown);
    QTest::keyPress(Input()->view(), Qt::Key_Escape);
    EXPECT_FALSE(Input()->view()->isVisible());
}

TEST_F(FrmInputTest, KeysInTheListPlayTheirMacrosToo) {
    SetKeyText(MacroSets[0].NormKey, 116, "wave;");
    SendLines({"one", "two"});
    Input()->showPopup();
    QTest::keyPress(Input()->view(), Qt::Key_F5);
    QTest::keyPress(Input()->view(), Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("one\rtwo\rwave\r"));
}

TEST_F(FrmInputTest, AControlLetterPlaysItsMacro) {
    SetKeyText(MacroSets[0].CtrlKey, 'K', "kill rat;");
    Connect();
    Press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_TRUE(Server.Gets("kill rat\r"));
    EXPECT_EQ(Typed(), "");
}

// The key goes on to the box after its macro was played: Ctrl+A selects what the macro has left
// there.
TEST_F(FrmInputTest, TheBoxActsOnAControlLetterThatPlayedAMacroOnPurpose) {
    SetKeyText(MacroSets[0].CtrlKey, 'A', "tell ");
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Typed(), "tell ");
    EXPECT_EQ(Edit().selectedText(), "tell ");
}

TEST_F(FrmInputTest, ControlLettersWithoutAMacroEditTheLine) {
    Type("word");
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Edit().selectedText(), "word");
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Typed(), "");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Typed(), "word");
}

TEST_F(FrmInputTest, AFunctionKeyPlaysItsMacro) {
    SetKeyText(MacroSets[0].NormKey, 116, "wave;smile;");
    Connect();
    Press(Qt::Key_F5);
    EXPECT_TRUE(Server.Gets("wave\rsmile\r"));
}

TEST_F(FrmInputTest, ALastPartOfAMacroWaitsInTheBox) {
    SetKeyText(MacroSets[0].NormKey, 116, "stand;kill ");
    Connect();
    Press(Qt::Key_F5);
    Type("rat");
    EXPECT_EQ(Typed(), "kill rat");
    EXPECT_TRUE(Server.Gets("stand\r"));
}

TEST_F(FrmInputTest, AMissingMacroSetIsShownOnceAKey) {
    CurrentMacroSet = 7;
    QTest::keyPress(Input(), Qt::Key_Alt);
    Closer.Texts.clear();
    Key(QEvent::ShortcutOverride, Qt::Key_X, "x", false, Qt::AltModifier);
    Key(QEvent::KeyPress, Qt::Key_X, "x", false, Qt::AltModifier);
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 9: Subscript out of range"});
}

TEST_F(FrmInputTest, TheMouseWheelChangesNothing) {
    SendLines({"one", "two", "three"});
    Press(Qt::Key_Up);
    for (QWidget* const over : {static_cast<QWidget*>(&Edit()), static_cast<QWidget*>(Input())}) {
        for (const int delta : {120, -120}) {
            TurnWheel(over, delta);
            EXPECT_EQ(Typed(), "three");
            EXPECT_EQ(Input()->currentIndex(), 2);
        }
    }
}

TEST_F(FrmInputTest, EditingARecalledLineSelectsNoEntry) {
    SendLines({"one", "two"});
    Press(Qt::Key_Up);
    EXPECT_EQ(HistoryIndex, 1);
    Type("!");
    EXPECT_EQ(HistoryIndex, -1);
    Press(Qt::Key_Up);
    EXPECT_EQ(Typed(), "two");
}

} // namespace
} // namespace mw
