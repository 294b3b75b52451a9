#include "app/frmMain.h"

#include "app/MainFrame.h"
#include "forms/FrameTest.h"
#include "ui/FrameControls.h"

#include <QMenuBar>

namespace mw {
namespace {

using forms::Boxes;
using forms::WaitFor;

constexpr const char* kReconnect = "You will have to Reconnect to a Mud";

class FrmMainTest : public forms::FrameTest {
protected:
    QAction* Item(const char* name) const { return Find<QAction>(name); }

    void Click(QPushButton* button) const { QTest::mouseClick(button, Qt::LeftButton); }

    void ExpectButtons(bool connected) const {
        EXPECT_EQ(Frame->cmdConn->isEnabled(), !connected);
        EXPECT_EQ(Frame->cmdDisco->isEnabled(), connected);
        EXPECT_EQ(Frame->cmdNew->isEnabled(), !connected);
        EXPECT_EQ(Frame->cmdDel->isEnabled(), !connected);
    }

    void ExpectMenuItems(bool connected) const {
        EXPECT_EQ(Frame->mnuConnect->isEnabled(), !connected);
        EXPECT_EQ(Frame->mnuDisconnect->isEnabled(), connected);
        EXPECT_EQ(Frame->mnuADCmud->isEnabled(), !connected);
    }

    void CloseOutput() {
        QTest::mouseClick(Frame->closeOutput, Qt::LeftButton);
        ASSERT_TRUE(WaitFor([this] { return Output() == nullptr; }));
    }

    void AddGame(const std::string& name, std::int16_t port) {
        MudEntry game;
        game.Name = name;
        game.Address = "127.0.0.1";
        game.Port = port;
        MudList.push_back(game);
        ShowFrame();
    }
};

TEST_F(FrmMainTest, StartsWithItsControlsReadyToConnect) {
    EXPECT_EQ(Frame->windowTitle().toStdString(), FrameCaption());
    ExpectButtons(false);
    ExpectMenuItems(false);
    EXPECT_TRUE(Frame->cboMud->isEnabled());
    EXPECT_EQ(Frame->cboMud->currentText(), "Testmere");
    EXPECT_EQ(Frame->lblAddress->text(), "127.0.0.1");
    EXPECT_EQ(Frame->lblPort->text().toInt(), Server.Port());
    EXPECT_FALSE(Frame->mnuMud->menuAction()->isVisible());
    for (const int panel : {1, 2, 3})
        EXPECT_EQ(Panel(panel), "");
    EXPECT_TRUE(Frame->closeOutput->isVisible());
    EXPECT_EQ(Shown(), "");
}

TEST_F(FrmMainTest, HasItsMenusInOrder) {
    const QList<QAction*> menus = Frame->menuBar()->actions();
    ASSERT_GE(menus.size(), 3);
    EXPECT_EQ(menus[0]->text(), "&File");
    EXPECT_EQ(menus[1]->text(), "&Windows");
    EXPECT_EQ(menus.back()->text(), "&Mud");
    EXPECT_EQ(Item("mnuExit")->text(), "&Exit");
    EXPECT_EQ(Item("GameW")->text(), "&Game Window");
    EXPECT_EQ(Item("mnuConnect")->text(), "&Connect");
    EXPECT_EQ(Item("mnuDisconnect")->text(), "&Disconnect");
    EXPECT_EQ(Item("mnuADCmud")->text(), "&Add/Delete/Change Mud");
}

TEST_F(FrmMainTest, TheOutputFillsTheClientArea) {
    const QMdiArea& area = *Frame->findChild<QMdiArea*>();
    LetEventsRun();
    EXPECT_EQ(Output()->size(), area.viewport()->size());
}

TEST_F(FrmMainTest, ConnectsAndDisconnectsByTheToolbar) {
    Click(Frame->cmdConn);
    ExpectButtons(true);
    EXPECT_FALSE(Frame->cboMud->isEnabled());
    EXPECT_EQ(Panel(1), "Attempting connection to Testmere");
    EXPECT_EQ(Shown(), "\nAttempting connection to: Testmere");
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    EXPECT_TRUE(Input()->hasFocus());
    EXPECT_EQ(Panel(3), "00:00:00");
    EXPECT_TRUE(Folder.HasFolder("Testmere/sounds"));
    ASSERT_TRUE(Server.HasVisitor());

    Click(Frame->cmdDisco);
    ExpectButtons(false);
    ExpectMenuItems(false);
    EXPECT_TRUE(Frame->cboMud->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_TRUE(Shown().ends_with("\nConnection Closed\n"));
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmMainTest, ConnectsAndDisconnectsByTheMenuWithoutTheToolbar) {
    ToolbarVisible = false;
    Frame->mnuConnect->trigger();
    ExpectMenuItems(true);
    ExpectButtons(false);
    EXPECT_TRUE(Frame->cboMud->isEnabled());
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    ASSERT_TRUE(Server.HasVisitor());
    Frame->mnuDisconnect->trigger();
    ExpectMenuItems(false);
    EXPECT_TRUE(Server.VisitorLeaves());
}

TEST_F(FrmMainTest, ShowsTheGameInColour) {
    Connect();
    Server.Send("\r\nA \x1b[0;32mgreen\x1b[0m door.\r");
    ASSERT_TRUE(Shows("\nA green door."));
    QTextCursor cursor = OutputBox()->document()->find("green");
    const int green = Palette[MwLGreen];
    EXPECT_EQ(cursor.charFormat().foreground().color(),
              QColor(green & 255, (green >> 8) & 255, (green >> 16) & 255));
}

TEST_F(FrmMainTest, TheSessionClockTicks) {
    Connect();
    ASSERT_TRUE(PanelShows(3, "00:00:01"));
    Click(Frame->cmdDisco);
    EXPECT_FALSE(Output()->tmrLog.isActive());
    EXPECT_FALSE(Output()->tmrConnect.isActive());
}

TEST_F(FrmMainTest, AServersCloseIsToldAfterItsText) {
    Connect();
    Server.Send("Goodbye.\r");
    Server.HangUp();
    ASSERT_TRUE(Shows("Connection Closed"));
    EXPECT_TRUE(Shown().ends_with("Goodbye.\n\nConnection Closed"));
    ExpectButtons(false);
    EXPECT_TRUE(Frame->cboMud->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_FALSE(mw::Connected);
}

TEST_F(FrmMainTest, AResetLeavesTheChooserAndTellsTheErrorInThePanel) {
    Connect();
    Server.Reset();
    ASSERT_TRUE(WaitFor([this] { return Panel(1).starts_with("Error: 10054 "); }));
    ExpectButtons(false);
    EXPECT_FALSE(Frame->cboMud->isEnabled()); // meant
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmMainTest, ARefusalEndsWithTheStateTextAndNoTimerRunning) {
    Server.StopListening();
    Click(Frame->cmdConn);
    ASSERT_TRUE(WaitFor([this] { return Panel(1).starts_with("Error: 10061 "); }));
    ASSERT_TRUE(PanelShows(1, "Connection Closed"));
    EXPECT_TRUE(WaitFor([this] { return !Output()->tmrConnect.isActive(); }));
    ExpectButtons(false);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmMainTest, ConnectingTwiceIsShownAndLeavesTheConnection) {
    Connect();
    Frame->mnuConnect->trigger();
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 40020: Invalid operation at current state"});
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    EXPECT_EQ(Server.Visitors, 1);
}

TEST_F(FrmMainTest, ChoosingAGameShowsItsAddressAndPort) {
    AddGame("Second", 4000);
    EXPECT_EQ(Frame->cboMud->count(), 2);
    Frame->cboMud->setFocus();
    QTest::keyClick(Frame->cboMud, Qt::Key_Down);
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(Frame->cboMud->currentText(), "Second");
    EXPECT_EQ(Frame->lblPort->text(), "4000");
}

TEST_F(FrmMainTest, AGamesNameIsShownAsItIs) {
    AddGame("<b>Caf\xE9</b> & Co", 4000);
    CurrentMud = 1;
    ShowFrame();
    EXPECT_EQ(Frame->cboMud->currentText(), QString::fromUtf8("<b>Caf\xC3\xA9</b> & Co"));
    stsBar::SetPanel(stsBar::StatePanel, "<b>Caf\xE9</b>");
    EXPECT_EQ(Panel(1), "<b>Caf\xC3\xA9</b>");
    EXPECT_EQ(Frame->Panels[0]->textFormat(), Qt::PlainText);
}

TEST_F(FrmMainTest, ALongStateTextDoesNotWidenTheFrame) {
    const int width = Frame->minimumSizeHint().width();
    stsBar::SetPanel(stsBar::StatePanel, std::string(5000, 'w'));
    LetEventsRun();
    EXPECT_EQ(Frame->minimumSizeHint().width(), width);
}

TEST_F(FrmMainTest, ClosingTheOutputClosesTheConnection) {
    Connect();
    CloseOutput();
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_FALSE(mw::Connected);
    ExpectButtons(false);
    EXPECT_TRUE(Frame->cboMud->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_FALSE(Frame->closeOutput->isVisible());
    EXPECT_TRUE(Frame->findChildren<QMdiSubWindow*>().isEmpty());
}

TEST_F(FrmMainTest, AppendsAfterTheOutputWasClosedDoNothing) {
    CloseOutput();
    std::string text = "nobody sees this\n";
    AppendOutput(text);
    AppendStatus("nor this");
    Click(Frame->cmdConn); // there is no socket either
    LetEventsRun();
    EXPECT_EQ(Output(), nullptr);
    EXPECT_EQ(Server.Visitors, 0);
    Item("GameW")->trigger();
    EXPECT_EQ(Shown(), kReconnect);
}

TEST_F(FrmMainTest, GameWindowBringsTheOutputBackWithItsLine) {
    CloseOutput();
    Item("GameW")->trigger();
    ASSERT_NE(Output(), nullptr);
    EXPECT_TRUE(Frame->closeOutput->isVisible());
    EXPECT_EQ(Shown(), kReconnect);
    QTextCursor cursor(OutputBox()->document());
    cursor.setPosition(1);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::white));
    LetEventsRun();
    EXPECT_EQ(Output()->size(), Frame->findChild<QMdiArea*>()->viewport()->size());

    Item("GameW")->trigger();
    EXPECT_EQ(Shown(), std::string(kReconnect) + kReconnect);
    Connect();
    Receive("welcome back");
}

TEST_F(FrmMainTest, GameWindowLeavesAnOpenConnectionAlone) {
    Connect();
    Item("GameW")->trigger();
    EXPECT_TRUE(Shown().ends_with(kReconnect));
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    EXPECT_EQ(Frame->findChildren<QMdiSubWindow*>().size(), 1);
}

TEST_F(FrmMainTest, AnOutputClosedWhileScrolledBackComesBackAtItsEnd) {
    std::string text = std::string(5000, 'x');
    AppendOutput(text);
    Press(Qt::Key_PageUp);
    EXPECT_TRUE(ScrollBackActive);
    CloseOutput();
    EXPECT_FALSE(ScrollBackActive);
    Item("GameW")->trigger();
    text = std::string(5000, 'y');
    AppendOutput(text);
    EXPECT_GT(Output()->vslRTF->maximum(), 5000);
    Press(Qt::Key_PageUp);
    EXPECT_TRUE(ScrollBackActive);
    EXPECT_TRUE(Output()->rtfScroll->isVisible());
}

TEST_F(FrmMainTest, TheOutputMayBeClosedAgainAndAgain) {
    for (int i = 0; i < 3; ++i) {
        Connect();
        CloseOutput();
        EXPECT_TRUE(Server.VisitorLeaves());
        Item("GameW")->trigger();
    }
    EXPECT_EQ(Server.Visitors, 3);
}

TEST_F(FrmMainTest, ExitClosesTheFrame) {
    Item("mnuExit")->trigger();
    EXPECT_FALSE(Frame->isVisible());
}

TEST_F(FrmMainTest, DestroyingTheFrameWhileConnectedClosesTheConnection) {
    Connect();
    Frame.reset();
    EXPECT_TRUE(Server.VisitorLeaves());
}

TEST_F(FrmMainTest, TextThatArrivesWhileABoxIsOpenIsShownAfterIt) {
    Connect();
    // The error of a trigger's missing macro set waits in a box while more text arrives.
    CurrentMacroSet = 7;
    bool sent = false;
    Closer.MayClose = [&] {
        if (!sent)
            Server.Send("second\r\nthird\r");
        sent = true;
        CurrentMacroSet = 0;
        return Server.Visitor->bytesToWrite() == 0;
    };
    Server.Send("first\r\nx\r");
    ASSERT_TRUE(Shows("third"));
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 9: Subscript out of range"});
    EXPECT_NE(Shown().find("second"), std::string::npos);
}

} // namespace
} // namespace mw
