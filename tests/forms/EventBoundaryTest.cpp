#include "ui/qt/EventBoundary.h"

#include "base/Error.h"
#include "forms/GameServer.h"
#include "forms/MessageBoxes.h"
#include "forms/WaitFor.h"
#include "ui/MessageBox.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QWidget>

namespace mw {
namespace {

using forms::Boxes;

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

} // namespace
} // namespace mw
