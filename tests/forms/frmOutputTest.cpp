#include "terminal/frmOutput.h"

#include "forms/FrameTest.h"
#include "terminal/OutPutScroll.h"
#include "ui/OutputControls.h"
#include "ui/UserSettings.h"

#include <algorithm>

#include <QClipboard>

namespace mw {
namespace {

using namespace std::string_literals;
using forms::WaitFor;

class FrmOutputTest : public forms::FrameTest {
protected:
    static void Append(const std::string& text) {
        std::string copy = text;
        AppendOutput(copy);
    }

    static void AppendLines(int count) {
        for (int i = 0; i < count; ++i)
            Append("line " + std::to_string(i) + " of the earlier output\n");
    }

    // The character format at a position of the output box.
    QTextCharFormat FormatAt(int position) const {
        OutputBox()->Apply();
        QTextCursor cursor(OutputBox()->document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

    void Wheel(int notches) const { TurnWheel(OutputBox()->viewport(), 120 * notches); }

    // As it stands at the next frame.
    QScrollBar& Bar() const {
        EXPECT_TRUE(WaitFor([this] { return !Output()->BarWaits; }));
        return *Output()->vslRTF;
    }

    OutputView& Copy() const { return *Output()->rtfScroll; }

    // Where the copy stands, from 0 to 1.
    double CopyPosition() const {
        LetEventsRun();
        const QScrollBar& inner = *Copy().verticalScrollBar();
        EXPECT_GT(inner.maximum(), 0);
        return double(inner.value()) / inner.maximum();
    }

    double BarPosition() const { return double(Bar().value()) / Bar().maximum(); }

    void ExpectScrolledBack(bool yes) const {
        EXPECT_EQ(ScrollBackActive, yes);
        EXPECT_EQ(Copy().isVisible(), yes);
        EXPECT_EQ(Bar().value() < Bar().maximum(), yes);
    }
};

TEST_F(FrmOutputTest, IsEmptyAndHasNoTimersRunningAtFirst) {
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(rtfOutPut::TextLength(), 0u);
    EXPECT_FALSE(Output()->tmrConnect.isActive());
    EXPECT_FALSE(Output()->tmrLog.isActive());
    EXPECT_FALSE(Copy().isVisible());
    EXPECT_EQ(Bar().maximum(), 0);
}

TEST_F(FrmOutputTest, BaseFontIsCourierTen) {
    for (const OutputView* const box : {OutputBox(), &Copy()}) {
        EXPECT_EQ(box->font().family(), "Courier");
        EXPECT_EQ(box->font().pointSize(), 10);
        EXPECT_TRUE(QFontInfo(box->font()).fixedPitch());
    }
}

TEST_F(FrmOutputTest, ShowsARunInColourFontAndSize) {
    rtfOutPut::Append("red", Rgb(200, 10, 20), "Courier", "10");
    rtfOutPut::Append("blue", Rgb(1, 2, 250), "Helvetica", "14");
    EXPECT_EQ(FormatAt(0).foreground().color(), QColor(200, 10, 20));
    EXPECT_EQ(FormatAt(0).fontPointSize(), 10);
    EXPECT_EQ(FormatAt(3).foreground().color(), QColor(1, 2, 250));
    EXPECT_EQ(FormatAt(3).font().family(), "Helvetica");
    EXPECT_EQ(FormatAt(3).fontPointSize(), 14);
    EXPECT_EQ(Shown(), "redblue");
}

TEST_F(FrmOutputTest, MoreLooksThanAreHeldReadyAreAllShown) {
    constexpr int kOneTooMany = 65;
    constexpr int kAll = 2 * kOneTooMany;
    const auto red = [](int i) { return std::min(i, kAll - 1 - i); }; // there and back again
    for (int i = 0; i < kAll; ++i)
        rtfOutPut::Append("x", Rgb(red(i), 1, 2), "Courier", "10");
    for (int i = 0; i < kAll; ++i)
        EXPECT_EQ(FormatAt(i).foreground().color(), QColor(red(i), 1, 2)) << i;
}

struct Size {
    const char* Name;
    const char* Text;
    double Points;
};

void PrintTo(const Size& row, std::ostream* out) { *out << row.Name; }

class FontSizes : public FrmOutputTest, public testing::WithParamInterface<Size> {};

TEST_P(FontSizes, OfARun) {
    rtfOutPut::Append("x", kPlainWhite, "Courier", GetParam().Text);
    EXPECT_EQ(FormatAt(0).fontPointSize(), GetParam().Points);
}

const Size kSizes[] = {
    {"Smallest", "1", 1},    {"Largest", "200", 200}, {"TooSmall", "0", 10},
    {"Negative", "-4", 10},  {"TooLarge", "201", 10}, {"FarTooLarge", "40000", 10},
    {"NoNumber", "big", 10}, {"Empty", "", 10},
};

INSTANTIATE_TEST_SUITE_P(Output, FontSizes, testing::ValuesIn(kSizes),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FrmOutputTest, ALineFeedBreaksTheLine) {
    rtfOutPut::Append("one\ntwo\n", kPlainWhite, "Courier", "10");
    OutputBox()->Apply();
    EXPECT_EQ(OutputBox()->document()->blockCount(), 3);
    EXPECT_EQ(rtfOutPut::TextLength(), 8u);
}

TEST_F(FrmOutputTest, LengthCountsWhatIsQueued) {
    rtfOutPut::Append("abc", kPlainWhite, "Courier", "10");
    EXPECT_EQ(OutputBox()->toPlainText(), "");
    EXPECT_EQ(rtfOutPut::TextLength(), 3u);
    rtfOutPut::RemoveFirst(2);
    EXPECT_EQ(rtfOutPut::TextLength(), 1u);
    EXPECT_EQ(Shown(), "c");
}

TEST_F(FrmOutputTest, EveryByteHasADefinedLook) {
    for (int code = 0; code < 256; ++code) {
        rtfOutPut::RemoveFirst(rtfOutPut::TextLength());
        rtfOutPut::Append("<" + std::string(1, static_cast<char>(code)) + ">", kPlainWhite,
                          "Courier", "10");
        EXPECT_EQ(rtfOutPut::TextLength(), 3u);
        OutputBox()->Apply();
        EXPECT_EQ(OutputBox()->document()->characterCount() - 1, 3) << code;
        const char16_t look = OutputBox()->document()->characterAt(1).unicode();
        const bool undefined =
            code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 || code == 0x9D;
        if (code == 0)
            EXPECT_EQ(look, u'\u200B');
        else if (code == '\t')
            EXPECT_EQ(look, u'\t');
        else if (code == '\n')
            EXPECT_EQ(look, u'\u2029');
        else if (code < 32 || code == 127 || undefined)
            EXPECT_EQ(look, u'\u00B7') << code;
        else if (code < 127 || code >= 160)
            EXPECT_EQ(look, static_cast<char16_t>(code));
        else
            EXPECT_GT(look, 255) << code; // the code page's own characters
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(OutputBox()->document()->characterAt(1).unicode(), 0xFF);
}

TEST_F(FrmOutputTest, AllBytesAtOnceAreHarmless) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    for (int i = 0; i < 20; ++i)
        rtfOutPut::Append(all, kPlainWhite, "Courier", "10");
    rtfOutPut::RemoveFirst(1000);
    OutputBox()->Apply();
    EXPECT_EQ(rtfOutPut::TextLength(), 20u * 256 - 1000);
    EXPECT_EQ(OutputBox()->document()->characterCount() - 1, 20 * 256 - 1000);
    QCoreApplication::processEvents();
}

TEST_F(FrmOutputTest, AFloodKeepsTheBoxShort) {
    const std::string run(400, 'f');
    for (int i = 0; i < 3000; ++i) {
        Append(run);
        ASSERT_LE(rtfOutPut::TextLength(), 15000u + run.size());
        if (i % 100 == 0)
            QCoreApplication::processEvents();
        ASSERT_LE(OutputBox()->document()->characterCount(), 15001 + 400);
    }
    EXPECT_EQ(Shown().size(), rtfOutPut::TextLength());
}

TEST_F(FrmOutputTest, ATrimKeepsTheEndOfTheText) {
    Append(std::string(15001, 'a'));
    Append("b");
    EXPECT_EQ(rtfOutPut::TextLength(), 8001u);
    EXPECT_TRUE(Shown().ends_with("ab"));
}

TEST_F(FrmOutputTest, ABarThatIsDraggedWhileTextArrivesScrollsBack) {
    for (int i = 0; i < 100; ++i)
        Append("a line of the game\n");
    QScrollBar& bar = *Output()->vslRTF;
    ASSERT_TRUE(WaitFor([&] { return bar.maximum() > 0; }));
    Append("one more\n"); // which the bar follows at the next frame
    bar.setValue(10);
    EXPECT_TRUE(ScrollBackActive);
    LetEventsRun();
    EXPECT_FALSE(Output()->rtfScroll->isHidden());
    EXPECT_EQ(bar.value(), 10);
    bar.setValue(bar.maximum());
    EXPECT_FALSE(ScrollBackActive);
}

TEST_F(FrmOutputTest, TheProgramItselfNeverStartsScrollBack) {
    vslRTF::SetMaxAndValue(500);
    vslRTF::SetMaxAndValue(100);
    vslRTF::SetMaxAndValue(32767);
    LetEventsRun();
    ExpectScrolledBack(false);
    EXPECT_EQ(vslRTF::Max(), 32767);
    EXPECT_EQ(vslRTF::Value(), 32767);
    AppendLines(1000);
    LetEventsRun();
    ExpectScrolledBack(false);
}

TEST_F(FrmOutputTest, TheBarMovesAtTheNextFrameAndIsKnownAtOnce) {
    const QScrollBar& bar = *Output()->vslRTF;
    vslRTF::SetMaxAndValue(500);
    vslRTF::SetMaxAndValue(700);
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_EQ(vslRTF::Max(), 700);
    EXPECT_EQ(vslRTF::Value(), 700);
    ASSERT_TRUE(WaitFor([&bar] { return bar.maximum() == 700; }));
    EXPECT_EQ(bar.value(), 700);
    vslRTF::SetMaxAndValue(900);
    ASSERT_TRUE(WaitFor([&bar] { return bar.maximum() == 900; }));
}

TEST_F(FrmOutputTest, AKeyMovesTheBarFromWhereItShouldStand) {
    vslRTF::SetChange(10, 100);
    vslRTF::SetMaxAndValue(500);
    QTest::keyClick(OutputBox(), Qt::Key_PageUp);
    EXPECT_EQ(Output()->vslRTF->value(), 400);
    ExpectScrolledBack(true);
}

TEST_F(FrmOutputTest, TheStepsOfTheBarAreTheOnesSet) {
    vslRTF::SetChange(10, 52);
    EXPECT_EQ(Bar().singleStep(), 10);
    EXPECT_EQ(Bar().pageStep(), 52);
}

TEST_F(FrmOutputTest, TheWheelStartsScrollBack) {
    AppendLines(300);
    Wheel(1);
    ExpectScrolledBack(true);
    EXPECT_EQ(Bar().value(), Bar().maximum() - 3 * Bar().singleStep());
    EXPECT_EQ(Copy().toPlainText().toStdString(), Shown());
    // Above the output, about two thirds to one.
    EXPECT_LT(Copy().mapToGlobal(QPoint()).y(), OutputBox()->mapToGlobal(QPoint()).y());
    LetEventsRun();
    EXPECT_NEAR(Copy().height(), 2 * OutputBox()->height(), 20);
    Wheel(-1);
    ExpectScrolledBack(false);
}

TEST_F(FrmOutputTest, TheWheelDoesNothingBeforeThereIsText) {
    Wheel(1);
    ExpectScrolledBack(false);
}

TEST_F(FrmOutputTest, PageUpInEitherWindowStartsScrollBack) {
    AppendLines(300);
    QTest::keyClick(OutputBox(), Qt::Key_PageUp);
    ExpectScrolledBack(true);
    const int first = Bar().value();
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Bar().value(), first - Bar().pageStep());
    Press(Qt::Key_PageDown);
    Press(Qt::Key_PageDown);
    ExpectScrolledBack(false);
}

TEST_F(FrmOutputTest, EndReturnsFromScrollBack) {
    AppendLines(300);
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(OutputBox(), Qt::Key_PageUp);
    ExpectScrolledBack(true);
    QTest::keyClick(OutputBox(), Qt::Key_End);
    ExpectScrolledBack(false);
    EXPECT_EQ(Copy().toPlainText(), "");
}

// As after a selection that was dragged past the edge.
TEST_F(FrmOutputTest, PageDownAndTheWheelAtTheEndBringTheOutputsOwnBarThereToo) {
    AppendLines(300);
    OutputBox()->Apply();
    QScrollBar& own = *OutputBox()->verticalScrollBar();
    const auto isAtItsEnd = [&own] { return own.value() == own.maximum(); };
    own.setValue(0);
    Press(Qt::Key_PageDown);
    EXPECT_TRUE(WaitFor(isAtItsEnd));
    own.setValue(0);
    Wheel(-1);
    EXPECT_TRUE(WaitFor(isAtItsEnd));
    ExpectScrolledBack(false);
}

TEST_F(FrmOutputTest, TheWheelTurnedSidewaysLeavesTheOutputWhereItIs) {
    AppendLines(300);
    OutputBox()->Apply();
    QScrollBar& own = *OutputBox()->verticalScrollBar();
    own.setValue(0);
    Wheel(0);
    forms::WaitAMoment([&own] { return own.value() > 0; });
    EXPECT_EQ(own.value(), 0);
}

TEST_F(FrmOutputTest, EndInTheCopyReturnsAndTheOutputHasTheFocus) {
    AppendLines(300);
    Wheel(3);
    Copy().setFocus();
    QTest::keyClick(&Copy(), Qt::Key_End);
    ExpectScrolledBack(false);
    EXPECT_TRUE(OutputBox()->hasFocus());
}

TEST_F(FrmOutputTest, TheCopyStaysWhileOutputGoesOn) {
    AppendLines(300);
    Wheel(4);
    const QString before = Copy().toPlainText();
    const int value = Bar().value();
    const int maximum = Bar().maximum();
    AppendLines(500);
    LetEventsRun();
    EXPECT_EQ(Copy().toPlainText(), before);
    EXPECT_EQ(Bar().value(), value);
    EXPECT_EQ(Bar().maximum(), maximum);
    EXPECT_TRUE(Shown().ends_with("line 499 of the earlier output\n"));
    ExpectScrolledBack(true);
}

TEST_F(FrmOutputTest, TheCopyFollowsTheBarInProportion) {
    AppendLines(300);
    Wheel(1);
    EXPECT_NEAR(CopyPosition(), BarPosition(), 0.02);
    Bar().setValue(Bar().maximum() / 2);
    EXPECT_NEAR(CopyPosition(), 0.5, 0.02);
    Bar().setValue(Bar().maximum() / 4);
    EXPECT_NEAR(CopyPosition(), 0.25, 0.02);
    Bar().setValue(0);
    EXPECT_EQ(CopyPosition(), 0);
}

TEST_F(FrmOutputTest, TheCopyStaysInProportionWhenTheWindowChanges) {
    AppendLines(300);
    Bar().setValue(Bar().maximum() / 2);
    LetEventsRun();
    Frame->resize(700, 500);
    EXPECT_NEAR(CopyPosition(), 0.5, 0.05);
}

TEST_F(FrmOutputTest, ScrollBackMayStartAgainAndAgain) {
    for (int i = 0; i < 4; ++i) {
        AppendLines(50);
        Wheel(2);
        ExpectScrolledBack(true);
        EXPECT_EQ(Copy().toPlainText().toStdString(), Shown());
        Wheel(-2);
        ExpectScrolledBack(false);
    }
    EXPECT_EQ(Copy().findChildren<QTextDocument*>().size(), 1);
}

TEST_F(FrmOutputTest, TextOfTheCopyCanBeCopied) {
    Append("first\nsecond\n");
    Wheel(1);
    QTest::keyClick(&Copy(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Copy(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "first\nsecond\n");
}

TEST_F(FrmOutputTest, ASelectionSurvivesWhileTheGameGoesOn) {
    Append("take the sword\n");
    OutputBox()->Apply();
    QTextCursor cursor = OutputBox()->textCursor();
    cursor.setPosition(9);
    cursor.setPosition(14, QTextCursor::KeepAnchor);
    OutputBox()->setTextCursor(cursor);
    AppendLines(100);
    OutputBox()->Apply();
    QTest::keyClick(OutputBox(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "sword");
}

TEST_F(FrmOutputTest, AKeypadDigitWalksFromTheOutputToo) {
    Connect();
    QTest::keyClick(OutputBox(), Qt::Key_8, Qt::KeypadModifier);
    EXPECT_TRUE(Server.Gets("north\r"));
    EXPECT_EQ(Typed(), "");
}

TEST_F(FrmOutputTest, AMacroPlaysFromTheOutputToo) {
    SetKeyText(MacroSets[0].NormKey, 116, "wave;");
    SetKeyText(MacroSets[0].AltKey, 'F', "flee;");
    Connect();
    QTest::keyClick(OutputBox(), Qt::Key_F5);
    ASSERT_TRUE(Server.Gets("wave\r"));
    QTest::keyClick(OutputBox(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Server.Gets("wave\rflee\r"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(FrmOutputTest, AltWithAMenusLetterOpensItFromTheOutputWithoutAMacro) {
    QTest::keyClick(OutputBox(), Qt::Key_F, Qt::AltModifier);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    if (QWidget* const popup = QApplication::activePopupWidget())
        popup->close();
}

TEST_F(FrmOutputTest, ModifiersAreNotedInTheOutputToo) {
    QTest::keyPress(OutputBox(), Qt::Key_Control);
    EXPECT_TRUE(CtrlDown);
    QTest::keyRelease(OutputBox(), Qt::Key_Control);
    EXPECT_FALSE(CtrlDown);
}

TEST_F(FrmOutputTest, EnterInTheOutputSendsNothing) {
    Connect();
    Type("draft");
    QTest::keyClick(OutputBox(), Qt::Key_Return);
    Press(Qt::Key_Return);
    EXPECT_TRUE(Server.Gets("draft\r"));
}

TEST_F(FrmOutputTest, TheHooksTokenIsKeptWhileTheWindowIsOpen) {
    EXPECT_NE(PreviousProcedure, 0);
    EXPECT_EQ(GetUserSetting("RtbScrol", "WndProc", "WndProc", ""),
              std::to_string(PreviousProcedure));
    Frame.reset();
    EXPECT_EQ(PreviousProcedure, 0);
    EXPECT_EQ(GetUserSetting("RtbScrol", "WndProc", "WndProc", "gone"), "gone");
}

TEST_F(FrmOutputTest, NoFrameTimerRunsWhileTheGameIsSilent) {
    Append("text");
    const auto runs = [this] { return forms::TimerRunsIn(*Output()); };
    EXPECT_TRUE(runs()); // that of the frame in which the text is shown
    EXPECT_TRUE(WaitFor([&] { return !runs(); }));
    forms::WaitAMoment(runs);
    EXPECT_FALSE(runs());
}

TEST_F(FrmOutputTest, WithoutAWindowThePortsDoNothing) {
    Frame.reset();
    AppendStatus("text");
    rtfOutPut::RemoveFirst(1);
    vslRTF::SetMaxAndValue(7);
    EXPECT_EQ(rtfOutPut::TextLength(), 0u);
    EXPECT_EQ(vslRTF::Max(), 0);
    EXPECT_EQ(wskTCP::State(), SocketClosed);
}

} // namespace
} // namespace mw
