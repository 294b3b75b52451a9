#include "ui/qt/OutputView.h"

#include "forms/GameServer.h"
#include "forms/WaitFor.h"
#include "ui/qt/Text.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QMimeData>
#include <QScrollBar>
#include <QThread>

namespace mw {
namespace {

using forms::TimerRunsIn;
using forms::WaitFor;

class OutputViewTest : public testing::Test {
protected:
    OutputViewTest() {
        View.resize(600, 300);
        View.show();
    }

    static QTextCharFormat Colour(Qt::GlobalColor colour) {
        QTextCharFormat format;
        format.setForeground(QColor(colour));
        return format;
    }

    void Append(const QString& text, Qt::GlobalColor colour = Qt::white) {
        View.Append(FromQString(text), Colour(colour));
    }

    // What stands in the document, without looking at the queue.
    std::string InDocument() const { return View.document()->toPlainText().toStdString(); }

    std::string Shown() {
        View.Apply();
        return InDocument();
    }

    OutputView View;
};

TEST_F(OutputViewTest, AppliesTheQueueOnceAFrame) {
    Append("one ");
    Append("two");
    EXPECT_EQ(InDocument(), "");
    EXPECT_EQ(View.Length(), 7u);
    int applied = 0;
    QObject::connect(&View, &OutputView::applied, &View, [&] { ++applied; });
    ASSERT_TRUE(WaitFor([this] { return InDocument() == "one two"; }));
    EXPECT_EQ(applied, 1);
    EXPECT_EQ(View.Length(), 7u);
}

TEST_F(OutputViewTest, LeavesAsMuchTimeToTakeInTextAsTheLastFrameTook) {
    constexpr int kSlow = 200; // milliseconds
    int applied = 0;
    QObject::connect(&View, &OutputView::applied, &View, [&] {
        if (++applied == 1)
            QThread::msleep(kSlow);
    });
    Append("one ");
    ASSERT_TRUE(WaitFor([&] { return applied == 1; }));
    QElapsedTimer taken;
    taken.start();
    Append("two");
    ASSERT_TRUE(WaitFor([&] { return applied == 2; }));
    EXPECT_GT(taken.elapsed(), kSlow / 2); // timers may be a little early
    EXPECT_EQ(InDocument(), "one two");
}

TEST_F(OutputViewTest, LengthIsTheDocumentsOnceAllIsApplied) {
    Append("two\nlines and é €\t.");
    View.Apply();
    EXPECT_EQ(View.Length(), static_cast<std::size_t>(View.document()->characterCount() - 1));
}

TEST_F(OutputViewTest, NothingIsAppliedWhenNothingIsAppended) {
    int applied = 0;
    QObject::connect(&View, &OutputView::applied, &View, [&] { ++applied; });
    Append("");
    View.Apply();
    EXPECT_EQ(applied, 0);
}

TEST_F(OutputViewTest, ShowsWholeLinesAtItsEndWhateverItsHeight) {
    for (int line = 0; line < 100; ++line)
        Append("A line of the game.\n");
    View.ScrollToEnd();
    View.Apply();
    for (int height = 300; height < 340; ++height) {
        View.resize(600, height);
        const QRect first = View.cursorRect(View.cursorForPosition(QPoint(1, 1)));
        EXPECT_EQ(first.top(), 0) << height;
        EXPECT_EQ(View.cursorRect().bottom() + 6, View.viewport()->height() - 1) << height;
    }
}

TEST_F(OutputViewTest, RemovesFromTheDocument) {
    Append("abcdef");
    View.Apply();
    View.RemoveFirst(2);
    EXPECT_EQ(View.Length(), 4u);
    EXPECT_EQ(Shown(), "cdef");
}

TEST_F(OutputViewTest, RemovesAcrossDocumentAndQueue) {
    Append("abc\n");
    View.Apply();
    Append("def", Qt::red);
    Append("ghi", Qt::green);
    View.RemoveFirst(8);
    EXPECT_EQ(View.Length(), 2u);
    EXPECT_EQ(Shown(), "hi");
}

TEST_F(OutputViewTest, RemovesInTwoGoes) {
    Append("abcdef");
    View.Apply();
    View.RemoveFirst(2);
    View.RemoveFirst(3);
    Append("gh");
    View.RemoveFirst(2);
    EXPECT_EQ(View.Length(), 1u);
    EXPECT_EQ(Shown(), "h");
}

TEST_F(OutputViewTest, RemovingMoreThanThereIsEmptiesIt) {
    Append("abc");
    View.Apply();
    Append("def");
    View.RemoveFirst(100);
    EXPECT_EQ(View.Length(), 0u);
    EXPECT_EQ(Shown(), "");
    Append("new");
    EXPECT_EQ(Shown(), "new");
}

TEST_F(OutputViewTest, WhatIsRemovedAgainIsNeverInserted) {
    std::size_t inserted = 0;
    QObject::connect(View.document(), &QTextDocument::contentsChange, &View,
                     [&](int, int, int added) { inserted += static_cast<std::size_t>(added); });
    for (int i = 0; i < 1000; ++i) {
        Append(QString(100, 'x'));
        if (View.Length() > 15000)
            View.RemoveFirst(View.Length() - 8000);
    }
    View.Apply();
    EXPECT_LE(inserted, 15000u + 2); // the last block's own end counts along
    EXPECT_EQ(InDocument().size(), View.Length());
}

TEST_F(OutputViewTest, AFloodThatIsRemovedAgainLeavesNothing) {
    Append(QString(20000, 'x'));
    View.RemoveFirst(20000);
    forms::WaitAMoment([this] { return !InDocument().empty(); });
    Append(QString(20000, 'y'));
    ASSERT_TRUE(WaitFor([this] { return !InDocument().empty(); }));
    View.RemoveFirst(20000);
    ASSERT_TRUE(WaitFor([this] { return InDocument().empty(); }));
    EXPECT_EQ(View.Length(), 0u);
}

TEST_F(OutputViewTest, KeepsTheColourOfEachRun) {
    Append("red", Qt::red);
    Append("green", Qt::green);
    View.Apply();
    QTextCursor cursor(View.document());
    cursor.setPosition(2);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::red));
    cursor.setPosition(5);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::green));
}

TEST_F(OutputViewTest, ASelectionOfThePlayersStays) {
    Append("select this please");
    View.Apply();
    QTextCursor cursor = View.textCursor();
    cursor.setPosition(7);
    cursor.setPosition(11, QTextCursor::KeepAnchor);
    View.setTextCursor(cursor);
    Append(" and more", Qt::red);
    View.ScrollToEnd();
    View.Apply();
    EXPECT_EQ(View.textCursor().selectedText(), "this");
    View.RemoveFirst(3);
    View.Apply();
    EXPECT_EQ(View.textCursor().selectedText(), "this");
}

TEST_F(OutputViewTest, ASelectionUpToTheEndDoesNotGrow) {
    Append("all of it");
    View.Apply();
    View.selectAll();
    Append(" and more", Qt::red);
    View.Apply();
    EXPECT_EQ(View.textCursor().selectedText(), "all of it");
    EXPECT_EQ(View.textCursor().position(), 9);
}

TEST_F(OutputViewTest, ASelectionMadeBackwardsFromTheEndDoesNotGrow) {
    Append("all of it");
    View.Apply();
    QTextCursor cursor = View.textCursor();
    cursor.setPosition(9);
    cursor.setPosition(7, QTextCursor::KeepAnchor);
    View.setTextCursor(cursor);
    Append(" and more");
    View.RemoveFirst(1);
    View.Apply();
    EXPECT_EQ(View.textCursor().selectedText(), "it");
    EXPECT_LT(View.textCursor().position(), View.textCursor().anchor());
}

TEST_F(OutputViewTest, ASelectionThatIsTrimmedAwayIsEmpty) {
    Append("abcdef");
    View.Apply();
    View.selectAll();
    View.RemoveFirst(6);
    Append("xyz");
    View.Apply();
    EXPECT_FALSE(View.textCursor().hasSelection());
}

TEST_F(OutputViewTest, SelectAllAndCopyGiveTheTextThatIsQueuedToo) {
    Append("first line\n", Qt::red);
    View.Apply();
    Append("second", Qt::green);
    View.setFocus();
    QTest::keyClick(&View, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&View, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "first line\nsecond");
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
}

TEST_F(OutputViewTest, AClickSeesTheQueueApplied) {
    Append("here");
    QTest::mouseClick(View.viewport(), Qt::LeftButton);
    EXPECT_EQ(InDocument(), "here");
}

TEST_F(OutputViewTest, TypingChangesNothing) {
    Append("fixed");
    View.Apply();
    QTest::keyClicks(&View, "abc");
    QTest::keyClick(&View, Qt::Key_Delete);
    QTest::keyClick(&View, Qt::Key_Backspace);
    EXPECT_EQ(Shown(), "fixed");
}

TEST_F(OutputViewTest, StaysAtItsEnd) {
    for (int i = 0; i < 200; ++i)
        Append(QString("line %1\n").arg(i));
    View.Apply();
    const QScrollBar& bar = *View.verticalScrollBar();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    View.resize(300, 200);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar.value(), bar.maximum());
    Append("one more\n");
    ASSERT_TRUE(WaitFor([this] { return InDocument().ends_with("more\n"); }));
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(OutputViewTest, NoTimerRunsWhenNothingIsQueued) {
    Append("text");
    ASSERT_TRUE(WaitFor([this] { return InDocument() == "text"; }));
    forms::WaitAMoment([this] { return TimerRunsIn(View); });
    EXPECT_FALSE(TimerRunsIn(View));
}

TEST_F(OutputViewTest, ACopyHasTextAndColoursAndStaysAsItIs) {
    OutputView copy;
    Append("red", Qt::red);
    copy.CopyFrom(View);
    Append("later");
    View.Apply();
    View.RemoveFirst(1);
    View.Apply();
    EXPECT_EQ(copy.toPlainText(), "red");
    EXPECT_EQ(copy.Length(), 3u);
    QTextCursor cursor(copy.document());
    cursor.setPosition(1);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::red));
}

TEST_F(OutputViewTest, CopyingAgainLeavesNoDocumentBehind) {
    OutputView copy;
    Append("text");
    for (int i = 0; i < 5; ++i)
        copy.CopyFrom(View);
    EXPECT_EQ(copy.findChildren<QTextDocument*>().size(), 1);
}

} // namespace
} // namespace mw
