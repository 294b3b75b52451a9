#include "ui/qt/EventBoundary.h"

#include "base/Error.h"
#include "forms/GameServer.h"
#include "forms/HttpTexts.h"
#include "forms/MessageBoxes.h"
#include "forms/WaitFor.h"
#include "ui/MessageBox.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QWidget>

namespace mw {
namespace {

using forms::Boxes;
using forms::Repeated;

class EventBoundaryTest : public testing::Test {
protected:
    static void Fail() { Raise(SubscriptOutOfRange, "test"); }

    forms::MessageBoxes Closer;
};

TEST_F(EventBoundaryTest, AHandlerThatRaisesNothingShowsNothing) {
    bool ran = false;
    RunHandler("handler", [&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(EventBoundaryTest, AnErrorIsShownWithNumberAndDescription) {
    RunHandler("handler", Fail);
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 9: Subscript out of range"});
}

TEST_F(EventBoundaryTest, TheNextErrorOfTheSameHandlerIsShownAgain) {
    RunHandler("handler", Fail);
    RunHandler("handler", Fail);
    EXPECT_EQ(Closer.Texts.size(), 2u);
}

TEST_F(EventBoundaryTest, AHandlerThatFailsAgainWhileItsBoxIsOpenShowsOne) {
    int failures = 0;
    QTimer again;
    QObject::connect(&again, &QTimer::timeout, &again, [&] {
        ++failures;
        RunHandler("tick", Fail);
    });
    again.start(1);
    Closer.MayClose = [&] { return failures > 3; };
    RunHandler("tick", Fail);
    again.stop();
    EXPECT_EQ(Closer.Texts.size(), 1u);
}

TEST_F(EventBoundaryTest, AnotherHandlerShowsItsErrorBesides) {
    bool failed = false;
    QTimer once;
    once.setSingleShot(true);
    QObject::connect(&once, &QTimer::timeout, &once, [&] {
        failed = true;
        RunHandler("second", [] { Raise(Overflow, "test"); });
    });
    once.start(0);
    Closer.MayClose = [&] { return failed; };
    RunHandler("first", Fail);
    EXPECT_EQ(Closer.Texts,
              (Boxes{"Run-time error 6: Overflow", "Run-time error 9: Subscript out of range"}));
}

TEST_F(EventBoundaryTest, EndProgramEndsTheEventLoopWithStatusOne) {
    QTimer::singleShot(0, qApp, [] { RunHandler("handler", [] { throw EndProgram{}; }); });
    EXPECT_EQ(QCoreApplication::exec(), 1);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(EventBoundaryTest, EndProgramEndsALoopThatWaitsInsideAsWell) {
    QTimer::singleShot(0, qApp, [] {
        QTimer::singleShot(0, qApp, [] { RunHandler("inner", [] { throw EndProgram{}; }); });
        RunHandler("outer", Fail);
    });
    Closer.MayClose = [] { return false; };
    EXPECT_EQ(QCoreApplication::exec(), 1);
}

TEST_F(EventBoundaryTest, ABoxShowsMarkupAsItIs) {
    ShowMessage("<b>5 < 6</b>\nand \xE9");
    EXPECT_EQ(Closer.Texts, Boxes{"<b>5 < 6</b>\nand \xC3\xA9"});
    EXPECT_EQ(Closer.Formats, std::vector<Qt::TextFormat>{Qt::PlainText});
}

// A box over a window that is active.
class BoxOverAWindow : public EventBoundaryTest {
protected:
    BoxOverAWindow() {
        Window->show();
        EXPECT_TRUE(forms::WaitFor([this] { return QApplication::activeWindow() == Window; }));
    }
    ~BoxOverAWindow() override { delete Window; }

    QPointer<QWidget> Window = new QWidget;
};

TEST_F(BoxOverAWindow, IsShownAgainWhenTheWindowGoesByItself) {
    Closer.MayClose = [this] {
        if (!Window)
            return true;
        EXPECT_EQ(QApplication::activeModalWidget()->parentWidget(), Window);
        delete Window;
        return false;
    };
    ShowMessage("text");
    EXPECT_EQ(Closer.Texts, Boxes{"text"});
}

TEST_F(BoxOverAWindow, IsNotShownAgainWhenBothAreClosed) {
    int boxes = 0;
    Closer.MayClose = [&] {
        ++boxes;
        QApplication::activeModalWidget()->close();
        delete Window;
        return false;
    };
    ShowMessage("text");
    EXPECT_EQ(boxes, 1);
}

struct LongText {
    const char* Name;
    std::string Text;
};

void PrintTo(const LongText& row, std::ostream* out) { *out << row.Name; }

class LongTexts : public EventBoundaryTest, public testing::WithParamInterface<LongText> {};

TEST_P(LongTexts, AreShownByTheirBeginningInABoxThatFitsOnTheScreen) {
    int height = 0;
    Closer.MayClose = [&height] {
        height = QApplication::activeModalWidget()->height();
        return true;
    };
    ShowMessage("Beginning: " + GetParam().Text);
    EXPECT_LT(height, QGuiApplication::primaryScreen()->availableGeometry().height() * 3 / 4);
    ASSERT_EQ(Closer.Texts.size(), 1u);
    EXPECT_TRUE(Closer.Texts[0].starts_with("Beginning: ")) << Closer.Texts[0];
    EXPECT_TRUE(Closer.Texts[0].ends_with("...")) << Closer.Texts[0];
}

const LongText kLongTexts[] = {
    {"LineFeeds", std::string(1300, '\n')},
    {"CarriageReturns", std::string(1300, '\r')},
    {"LineEnds", Repeated("\r\n", 1300)},
    {"Tabs", std::string(1300, '\t')},
    {"Words", Repeated("words ", 700)},
    {"OneWord", std::string(4096, 'x')},
    {"WideCharacters", std::string(4096, '\x89')},
};

INSTANTIATE_TEST_SUITE_P(Boxes, LongTexts, testing::ValuesIn(kLongTexts),
                         [](const auto& row) { return row.param.Name; });

TEST_F(EventBoundaryTest, ABoxShowsAFewLinesWithTheirBreaksAsTheyAre) {
    const std::string text = "Error Point \r\na\nb\rc\td\r\n";
    ShowMessage(text);
    EXPECT_EQ(Closer.Texts, Boxes{text});
}

} // namespace
} // namespace mw
