// Base of the tests of the main frame and its windows: a frame on the screen, every module in its
// start state, one game in the list that a server on this machine serves.
#pragma once

#include "app/frmMain.h"
#include "app/frmStartUp.h"
#include "forms/FormTest.h"
#include "forms/GameServer.h"
#include "terminal/frmOutput.h"
#include "ui/Socket.h"
#include "ui/qt/OutputView.h"

#include <functional>
#include <memory>

#include <QLineEdit>
#include <QMdiSubWindow>
#include <QWheelEvent>

namespace forms {

class FrameTest : public FormTest {
protected:
    FrameTest() {
        ListTheServer();
        ShowFrame();
    }

    void ListTheServer() const {
        mw::MudList[0].Name = "Testmere";
        mw::MudList[0].Address = "127.0.0.1";
        mw::MudList[0].Port = Server.Port();
    }

    void ShowFrame() {
        Frame.reset();
        Frame = std::make_unique<mw::frmMain>();
        Frame->show();
        Frame->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Frame.get()));
    }

    // A control of the frame by its name.
    template <typename Control> Control* Find(const char* name) const {
        return Frame->findChild<Control*>(name);
    }

    // A menu or an item of one.
    QAction* Item(const char* name) const { return Find<QAction>(name); }

    mw::frmOutput* Output() const { return Find<mw::frmOutput>("frmOutput"); }

    mw::OutputView* OutputBox() const { return Output()->rtfOutPut; }

    QComboBox* Input() const { return Find<QComboBox>("cboInput"); }

    std::string Typed() const { return Input()->currentText().toStdString(); }

    // The text in the output window, brought up to date.
    std::string Shown() const {
        OutputBox()->Apply();
        return OutputBox()->toPlainText().toStdString();
    }

    bool Shows(const std::string& part) const {
        return WaitFor([&] { return Shown().find(part) != std::string::npos; });
    }

    std::string Panel(int number) const { return Frame->Panels[number - 1]->text().toStdString(); }

    bool PanelShows(int number, const std::string& text) const {
        return WaitFor([&] { return Panel(number) == text; });
    }

    void Connect() {
        QTest::mouseClick(Frame->cmdConn, Qt::LeftButton);
        ASSERT_TRUE(Server.HasVisitor());
        ASSERT_TRUE(WaitFor([] { return mw::Connected; }));
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(Input(), static_cast<Qt::Key>(key), modifiers);
    }

    void Type(const QString& text) const { QTest::keyClicks(Input(), text); }

    // Turns the mouse wheel over the middle of a widget; 120 is a notch upwards.
    static void TurnWheel(QWidget* over, int delta) {
        const QPointF middle = over->rect().center();
        QWheelEvent event(middle, over->mapToGlobal(middle), QPoint(), QPoint(0, delta),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(over, &event);
    }

    void Enter(const QString& line) const {
        Type(line);
        Press(Qt::Key_Return);
    }

    // Receives a line of a game and waits until it is shown. The client drops the last byte of what
    // arrives together, so one more is sent.
    void Receive(const std::string& text) const {
        Server.Send(text + "\r");
        ASSERT_TRUE(Shows(text));
    }

    // Spares the tests the waiting between the stages of the splash that saves.
    static void HurrySplash() {
        auto* const splash = Window<mw::frmStartUp>();
        ASSERT_NE(splash, nullptr);
        splash->timerLoad.setInterval(1);
        splash->timerFinished.setInterval(1);
    }

    // The program runs until it ends; end begins that. Answers the status.
    int RunUntil(const std::function<void()>& end) {
        QTimer::singleShot(0, Frame.get(), [end] {
            end();
            HurrySplash();
        });
        return RunProgram();
    }

    GameServer Server;
    std::unique_ptr<mw::frmMain> Frame;
};

} // namespace forms
