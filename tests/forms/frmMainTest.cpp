#include "app/frmMain.h"

#include "automation/MacroFiles.h"
#include "config/MRegistry.h"
#include "config/MudChooser.h"
#include "forms/FrameTest.h"
#include "ui/FrameControls.h"
#include "ui/UpdateControls.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>

namespace mw {
namespace {

using forms::Boxes;
using forms::WaitFor;
using forms::Window;

constexpr const char* kReconnect = "You will have to Reconnect to a Mud";

class FrmMainTest : public forms::FrameTest {
protected:
    void Click(QPushButton* button) const { QTest::mouseClick(button, Qt::LeftButton); }

    void ExpectButtons(bool connected) const {
        EXPECT_EQ(Frame->cmdConn->isEnabled(), !connected);
        EXPECT_EQ(Frame->cmdDisco->isEnabled(), connected);
        EXPECT_EQ(Frame->cmdNew->isEnabled(), !connected);
        EXPECT_EQ(Frame->cmdDel->isEnabled(), !connected);
    }

    void ExpectMenuItems(bool connected) const {
        EXPECT_EQ(Item("mnuConnect")->isEnabled(), !connected);
        EXPECT_EQ(Item("mnuDisconnect")->isEnabled(), connected);
        EXPECT_EQ(Item("mnuADCmud")->isEnabled(), !connected);
    }

    void CloseOutput() {
        QTest::mouseClick(Frame->closeOutput, Qt::LeftButton);
        ASSERT_TRUE(WaitFor([this] { return Output() == nullptr; }));
    }

    void AddGame(const std::string& name, std::int16_t port) {
        MudList.push_back({name, "127.0.0.1", port});
        ShowFrame();
    }
};

TEST_F(FrmMainTest, StartsWithItsControlsReadyToConnect) {
    EXPECT_EQ(Frame->windowTitle().toStdString(), FrameCaption());
    ExpectButtons(false);
    ExpectMenuItems(false);
    EXPECT_TRUE(Frame->Chooser->isEnabled());
    EXPECT_EQ(Frame->Chooser->currentText(), "Testmere");
    EXPECT_EQ(Frame->lblAddress->text(), "127.0.0.1");
    EXPECT_EQ(Frame->lblPort->text().toInt(), Server.Port());
    EXPECT_FALSE(Item("mnuMud")->isVisible());
    for (const int panel : {1, 2, 3})
        EXPECT_EQ(Panel(panel), "");
    EXPECT_TRUE(Frame->closeOutput->isVisible());
    EXPECT_EQ(Shown(), "");
}

struct MenuRow {
    const char* Menu;
    const char* MenuCaption;
    const char* Item;
    const char* Caption;
    bool CanBeMarked;
    bool Enabled; // at the start
};

// The menu bar, from left to right and from top to bottom.
const MenuRow kMenuTree[] = {
    {"mnuFile", "&File", "mnuExit", "&Exit", false, true},
    {"mnuFile", "&File", "mnuAutoLog", "Autolog Each Session", false, true},
    {"Windows", "&Windows", "GameW", "&Game Window", false, true},
    {"Windows", "&Windows", "mnuMwWite", "&Quillmere Website", false, true},
    {"Conf", "&Configuration", "Macros", "&Macros", false, true},
    {"Conf", "&Configuration", "mnuTriggers", "&Triggers", false, true},
    {"Conf", "&Configuration", "mnuAlias", "&Alias's", false, true},
    {"Conf", "&Configuration", "mnuEcho", "&Echo", true, true},
    {"Conf", "&Configuration", "mnuSetUp", "&Fonts and Colours", false, true},
    {"Conf", "&Configuration", "mnuInput", "&Keep Sent Text", true, true},
    {"Conf", "&Configuration", "mnuSound", "&Sound", false, true},
    {"Conf", "&Configuration", "mnutoolbar", "&Enable Toolbar", true, true},
    {"mnuHelp", "&Help", "mnuGHlp", "&General Help", false, true},
    {"mnuHelp", "&Help", "mnuAbout", "About", false, true},
    {"mnuMud", "&Mud", "mnuConnect", "&Connect", false, true},
    {"mnuMud", "&Mud", "mnuDisconnect", "&Disconnect", false, false},
    {"mnuMud", "&Mud", "mnuADCmud", "&Add/Delete/Change Mud", false, true},
};

std::string Line(const std::string& menu, const std::string& item, bool canBeMarked, bool enabled) {
    return menu + " / " + item + (canBeMarked ? ", can be marked" : "") +
           (enabled ? "" : ", disabled");
}

std::string Called(const QAction& action) {
    return action.objectName().toStdString() + " \"" + action.text().toStdString() + "\"";
}

TEST_F(FrmMainTest, HasTheMenusOfTheTable) {
    std::vector<std::string> expected;
    for (const MenuRow& row : kMenuTree)
        expected.push_back(Line(std::string(row.Menu) + " \"" + row.MenuCaption + "\"",
                                std::string(row.Item) + " \"" + row.Caption + "\"", row.CanBeMarked,
                                row.Enabled));
    std::vector<std::string> found;
    for (const QAction* const menu : Frame->menuBar()->actions()) {
        ASSERT_NE(menu->menu(), nullptr);
        for (const QAction* const item : menu->menu()->actions())
            found.push_back(
                Line(Called(*menu), Called(*item), item->isCheckable(), item->isEnabled()));
    }
    EXPECT_EQ(found, expected);
}

TEST_F(FrmMainTest, TheOutputFillsTheClientArea) {
    const QMdiArea& area = *Frame->findChild<QMdiArea*>();
    LetEventsRun();
    EXPECT_EQ(Output()->size(), area.viewport()->size());
}

TEST_F(FrmMainTest, ConnectsAndDisconnectsByTheToolbar) {
    Click(Frame->cmdConn);
    ExpectButtons(true);
    EXPECT_FALSE(Frame->Chooser->isEnabled());
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
    EXPECT_TRUE(Frame->Chooser->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_TRUE(Input()->hasFocus());
    EXPECT_TRUE(Shown().ends_with("\nConnection Closed\n"));
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmMainTest, ConnectsAndDisconnectsByTheMenuWithoutTheToolbar) {
    ToolbarVisible = false;
    Item("mnuConnect")->trigger();
    ExpectMenuItems(true);
    ExpectButtons(false);
    EXPECT_TRUE(Frame->Chooser->isEnabled());
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    ASSERT_TRUE(Server.HasVisitor());
    Item("mnuDisconnect")->trigger();
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
    EXPECT_TRUE(Frame->Chooser->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_FALSE(mw::Connected);
}

TEST_F(FrmMainTest, AResetLeavesTheChooserAndTellsTheErrorInThePanel) {
    Connect();
    Server.Reset();
    ASSERT_TRUE(WaitFor([this] { return Panel(1).starts_with("Error: 10054 "); }));
    ExpectButtons(false);
    EXPECT_FALSE(Frame->Chooser->isEnabled()); // meant
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
    Item("mnuConnect")->trigger();
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 40020: Invalid operation at current state"});
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    EXPECT_EQ(Server.Visitors, 1);
}

TEST_F(FrmMainTest, ChoosingAGameShowsItsAddressAndPort) {
    AddGame("Second", 4000);
    EXPECT_EQ(Frame->Chooser->count(), 2);
    Frame->Chooser->setFocus();
    QTest::keyClick(Frame->Chooser, Qt::Key_Down);
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(Frame->Chooser->currentText(), "Second");
    EXPECT_EQ(Frame->lblPort->text(), "4000");
}

TEST_F(FrmMainTest, ConnectsInANewWindowWhenTheOldOneWasClosedInTheSameTurn) {
    QTest::mouseClick(Frame->closeOutput, Qt::LeftButton);
    Connect();
    EXPECT_TRUE(Output()->isVisible());
    Receive("Welcome");
    EXPECT_TRUE(Frame->closeOutput->isVisible());
}

TEST_F(FrmMainTest, LineBreaksInAPanelDoNotMakeTheFrameHigher) {
    const int height = Frame->minimumSizeHint().height();
    stsBar::SetPanel(stsBar::NoticePanel, "Not\r\n" + std::string(2000, '\n') + "downloaded");
    EXPECT_EQ(Frame->minimumSizeHint().height(), height);
    EXPECT_EQ(Frame->Panels[1]->toolTip().count('\n'), 0);
    EXPECT_TRUE(Panel(2).starts_with("Not  "));
}

TEST_F(FrmMainTest, TheWheelChoosesNoGame) {
    AddGame("Second", 4000);
    TurnWheel(Frame->Chooser, -120);
    EXPECT_EQ(CurrentMud, 0);
    EXPECT_EQ(Frame->Chooser->currentIndex(), 0);
}

TEST_F(FrmMainTest, AGamesNameIsShownAsItIs) {
    AddGame("<b>Caf\xE9</b> & Co", 4000);
    CurrentMud = 1;
    ShowFrame();
    EXPECT_EQ(Frame->Chooser->currentText(), QString::fromUtf8("<b>Caf\xC3\xA9</b> & Co"));
    stsBar::SetPanel(stsBar::StatePanel, "<b>Caf\xE9</b>");
    EXPECT_EQ(Panel(1), "<b>Caf\xC3\xA9</b>");
    EXPECT_EQ(Frame->Panels[0]->textFormat(), Qt::PlainText);
}

TEST_F(FrmMainTest, HintsFollowTheTextsColourWhenTheDesktopTurnsDark) {
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Text, QColor(250, 240, 230));
    QApplication::setPalette(dark);
    LetEventsRun();
    EXPECT_EQ(Input()->lineEdit()->palette().color(QPalette::PlaceholderText),
              QColor(250, 240, 230, 128));
    QApplication::setPalette(light);
    LetEventsRun();
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
    EXPECT_TRUE(Frame->Chooser->isEnabled());
    EXPECT_EQ(Panel(1), "");
    EXPECT_FALSE(Frame->closeOutput->isVisible());
    EXPECT_TRUE(Frame->findChildren<QMdiSubWindow*>().isEmpty());
}

TEST_F(FrmMainTest, AToolbarThatIsSwitchedOffLeavesTheFocusToTheCommandLine) {
    Frame->Chooser->setFocus();
    Item("mnutoolbar")->trigger();
    EXPECT_TRUE(Input()->hasFocus());
}

TEST_F(FrmMainTest, AnOutputThatIsClosedLeavesTheFocusToTheCommandLine) {
    OutputBox()->setFocus();
    CloseOutput();
    EXPECT_TRUE(Input()->hasFocus());
}

TEST_F(FrmMainTest, ACrossThatIsPressedByKeyLeavesTheFocusToTheCommandLine) {
    Frame->closeOutput->setFocus();
    QTest::keyClick(Frame->closeOutput, Qt::Key_Space);
    ASSERT_TRUE(WaitFor([this] { return Output() == nullptr; }));
    EXPECT_TRUE(Input()->hasFocus());
}

TEST_F(FrmMainTest, AppendsAfterTheOutputWasClosedDoNothing) {
    CloseOutput();
    std::string text = "nobody sees this\n";
    AppendOutput(text);
    AppendStatus("nor this");
    EXPECT_EQ(Output(), nullptr);
    Item("GameW")->trigger();
    EXPECT_EQ(Shown(), kReconnect);
}

TEST_F(FrmMainTest, ConnectingBringsTheOutputBackWithoutALineOfItsOwn) {
    CloseOutput();
    Click(Frame->cmdConn);
    ASSERT_NE(Output(), nullptr);
    EXPECT_TRUE(Frame->closeOutput->isVisible());
    EXPECT_EQ(Shown(), "\nAttempting connection to: Testmere");
    EXPECT_TRUE(Input()->hasFocus());
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    ASSERT_TRUE(Server.HasVisitor());
    Receive("welcome back");
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
    EXPECT_TRUE(WaitFor([this] { return Output()->vslRTF->maximum() > 5000; }));
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

TEST_F(FrmMainTest, AutologIsNotFunctioningOnPurpose) {
    const forms::Files before = forms::FilesIn(Folder.Path);
    Item("mnuAutoLog")->trigger();
    EXPECT_EQ(Closer.Texts, Boxes{"This is not functioning"});
    EXPECT_FALSE(Item("mnuAutoLog")->isChecked());
    Connect();
    Receive("nobody writes this down");
    EXPECT_EQ(forms::FilesIn(Folder.Path).count("Testmere/sounds"), 1u);
    EXPECT_EQ(forms::FilesIn(Folder.Path).size(), before.size() + 2) << "the game's folders alone";
}

struct MenuDialog {
    const char* Item;
    const char* Form;
};

TEST_F(FrmMainTest, TheMenusOpenTheirDialogs) {
    const MenuDialog dialogs[] = {{"Macros", "frmMacros"},
                                  {"mnuTriggers", "frmTrigger"},
                                  {"mnuAlias", "frmAlias"},
                                  {"mnuAbout", "frmAbout"},
                                  {"mnuADCmud", "frmConnect"}};
    for (const auto& [item, form] : dialogs) {
        Item(item)->trigger();
        QWidget* const dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr) << item;
        EXPECT_EQ(dialog->objectName(), form);
        dialog->close();
    }
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

// What the frame keeps from one start to the next.
class FrameSettings : public FrmMainTest {
protected:
    static std::string Kept(const char* section, const char* key) {
        return ReadSetting("MwClient", section, key, "nothing");
    }

    static void Keep(const char* section, const char* key, const std::string& value) {
        WriteSetting("MwClient", section, key, value);
    }

    // Ends the program and starts it again; only what was kept remains.
    void Restart() {
        Frame->close();
        ShowFrameAnew();
    }

    void ShowFrameAnew() {
        Frame.reset();
        RemoveWindows();
        StartModulesAnew();
        ListTheServer();
        ShowFrame();
    }

    // One set of controls is live, the other one is away.
    void ExpectToolbar(bool there) const {
        EXPECT_EQ(ToolbarVisible, there);
        EXPECT_EQ(Frame->picTool->isVisible(), there);
        EXPECT_EQ(Frame->picTool->isEnabled(), there);
        EXPECT_EQ(Frame->cmdConn->isEnabled(), there);
        EXPECT_EQ(Item("mnutoolbar")->isChecked(), there);
        EXPECT_EQ(Item("mnuMud")->isVisible(), !there);
        EXPECT_EQ(Item("mnuMud")->isEnabled(), !there);
    }

    // True when Alt and the letter open a menu.
    bool OpensAMenu(Qt::Key letter) const {
        QTest::keyClick(OutputBox(), letter, Qt::AltModifier);
        QWidget* const popup = QApplication::activePopupWidget();
        if (popup != nullptr)
            popup->close();
        return popup != nullptr;
    }
};

TEST_F(FrameSettings, TheFirstStartShowsTheToolbarAndNoMarks) {
    ExpectToolbar(true);
    EXPECT_FALSE(Item("mnuEcho")->isChecked());
    EXPECT_FALSE(Item("mnuInput")->isChecked());
    EXPECT_EQ(Kept("Windows", "tbar"), "nothing");
}

TEST_F(FrameSettings, OnlyOneSetOfControlsIsLiveAtATime) {
    EXPECT_FALSE(OpensAMenu(Qt::Key_M));
    Item("mnutoolbar")->trigger();
    ExpectToolbar(false);
    EXPECT_EQ(Kept("Windows", "tbar"), "0");
    EXPECT_TRUE(OpensAMenu(Qt::Key_M));
    Item("mnutoolbar")->trigger();
    ExpectToolbar(true);
    EXPECT_EQ(Kept("Windows", "tbar"), "1");
    EXPECT_FALSE(OpensAMenu(Qt::Key_M));
}

TEST_F(FrameSettings, TheToolbarsStateGoesToTheUsersStoreToo) {
    Item("mnutoolbar")->trigger();
    EXPECT_EQ(GetUserSetting("MwClient", "Windows", "tbar", "nothing"), "0");
    Item("mnutoolbar")->trigger();
    EXPECT_EQ(GetUserSetting("MwClient", "Windows", "tbar", "nothing"), "1");
}

TEST_F(FrameSettings, SwitchedOffTheToolbarStaysAsItIsWhileConnecting) {
    Item("mnutoolbar")->trigger();
    Item("mnuConnect")->trigger();
    ASSERT_TRUE(PanelShows(1, "Connected to: Testmere"));
    ExpectMenuItems(true);
    ExpectToolbar(false);
    Click(Frame->cmdConn);
    EXPECT_EQ(Closer.Texts, Boxes{}) << "its buttons can't be used";
    Item("mnuDisconnect")->trigger();
    ExpectMenuItems(false);
}

TEST_F(FrameSettings, TogglingRefillsTheChooserAndKeepsItsPosition) {
    AddGame("Second", 4000);
    cboMud_Click(1);
    MudEntry unseen;
    unseen.Name = "Third";
    MudList.push_back(unseen);
    MudList[0].Name = "Renamed";
    EXPECT_EQ(Frame->Chooser->count(), 2);
    Item("mnutoolbar")->trigger();
    ASSERT_EQ(Frame->Chooser->count(), 3);
    EXPECT_EQ(Frame->Chooser->itemText(0), "Renamed");
    EXPECT_EQ(Frame->Chooser->itemText(2), "Third");
    EXPECT_EQ(Frame->Chooser->currentIndex(), 1);
    EXPECT_EQ(CurrentMud, 1);
}

TEST_F(FrameSettings, ARestartKeepsTheToolbarOff) {
    Item("mnutoolbar")->trigger();
    Restart();
    ExpectToolbar(false);
    EXPECT_EQ(Frame->Chooser->count(), 1);
    Item("mnutoolbar")->trigger();
    Restart();
    ExpectToolbar(true);
}

TEST_F(FrameSettings, AtTheEndTheToolbarsStateIsTakenFromTheMudMenuOnPurpose) {
    Item("mnuMud")->setVisible(true);
    Frame->close();
    EXPECT_EQ(Kept("Windows", "tbar"), "0");
}

TEST_F(FrameSettings, EchoIsMarkedAndKeptButOffAfterARestartOnPurpose) {
    Item("mnuEcho")->trigger();
    EXPECT_TRUE(EchoOn);
    EXPECT_TRUE(Item("mnuEcho")->isChecked());
    EXPECT_EQ(Kept("Menu", "Echo"), "True");
    Restart();
    EXPECT_FALSE(EchoOn);
    EXPECT_FALSE(Item("mnuEcho")->isChecked());
    EXPECT_EQ(Kept("Menu", "Echo"), "True");
    Item("mnuEcho")->trigger();
    Item("mnuEcho")->trigger();
    EXPECT_FALSE(EchoOn);
    EXPECT_EQ(Kept("Menu", "Echo"), "False");
}

TEST_F(FrameSettings, KeepSentTextIsMarkedAndKept) {
    Item("mnuInput")->trigger();
    EXPECT_TRUE(KeepSentText);
    EXPECT_TRUE(Item("mnuInput")->isChecked());
    EXPECT_EQ(Kept("Menu", "Input"), "True");
    Restart();
    EXPECT_TRUE(KeepSentText);
    EXPECT_TRUE(Item("mnuInput")->isChecked());
    Item("mnuInput")->trigger();
    EXPECT_FALSE(Item("mnuInput")->isChecked());
    Restart();
    EXPECT_FALSE(KeepSentText);
    EXPECT_EQ(Kept("Menu", "Input"), "False");
}

TEST_F(FrameSettings, AKeptMarkThatIsNoBooleanIsNone) {
    Keep("Menu", "Input", "perhaps");
    ShowFrameAnew();
    EXPECT_FALSE(KeepSentText);
    EXPECT_FALSE(Item("mnuInput")->isChecked());
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrameSettings, AStoreThatCannotBeReadGivesANoticeAndTheDefaults) {
    Keep("Windows", "tbar", "0");
    QFile store(forms::RegistryFile());
    ASSERT_TRUE(store.open(QFile::WriteOnly));
    store.write("{");
    store.close();
    ShowFrameAnew();
    ExpectToolbar(true);
    EXPECT_EQ(Panel(2), "Settings could not be read: Could not open registry section");
    Item("mnuEcho")->trigger();
    EXPECT_EQ(Panel(2), "Settings could not be kept: Could not open/create registry section");
    EXPECT_TRUE(EchoOn);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrameSettings, TheFocusIsInTheCommandLineAtTheStart) {
    Restart();
    EXPECT_TRUE(Input()->hasFocus());
}

// Where the frame stands, without the toolbar, which would set its least width.
class FramePlacement : public FrameSettings {
protected:
    FramePlacement() {
        Keep("Windows", "tbar", "0");
        ShowFrameAnew();
    }

    static std::string KeptState() {
        return GetUserSetting("MwClient", "Windows", "gWinState", "nothing");
    }

    static void KeepPlace(const char* left, const char* top, const char* width,
                          const char* height) {
        Keep("Windows", "gLeft", left);
        Keep("Windows", "gTop", top);
        Keep("Windows", "gWidth", width);
        Keep("Windows", "gHeight", height);
    }

    static std::vector<std::string> KeptPlace() {
        return {Kept("Windows", "gLeft"), Kept("Windows", "gTop"), Kept("Windows", "gWidth"),
                Kept("Windows", "gHeight")};
    }
};

TEST_F(FramePlacement, WithoutAKeptPlaceTheFrameStandsInTheMiddleOfTheScreen) {
    const QRect screen = Frame->screen()->availableGeometry();
    EXPECT_NEAR(Frame->width(), screen.width() * 0.8, 1);
    EXPECT_NEAR(Frame->height(), screen.height() * 0.8, 1);
    EXPECT_NEAR(Frame->geometry().center().x(), screen.center().x(), 1);
    EXPECT_NEAR(Frame->geometry().center().y(), screen.center().y(), 1);
    EXPECT_FALSE(Frame->isMaximized());
}

TEST_F(FramePlacement, ARestartKeepsThePlace) {
    Frame->setGeometry(31, 47, 702, 503);
    Restart();
    EXPECT_EQ(KeptPlace(), (std::vector<std::string>{"31", "47", "702", "503"}));
    EXPECT_EQ(KeptState(), "0");
    EXPECT_EQ(Frame->geometry(), QRect(31, 47, 702, 503));
    EXPECT_FALSE(Frame->isMaximized());
}

TEST_F(FramePlacement, AMaximisedFrameComesBackMaximisedAndKnowsItsPlace) {
    Frame->setGeometry(31, 47, 702, 503);
    for (int round = 0; round < 2; ++round) {
        Frame->setWindowState(Qt::WindowMaximized);
        LetEventsRun();
        Restart();
        EXPECT_EQ(KeptState(), "2");
        EXPECT_EQ(KeptPlace(), (std::vector<std::string>{"31", "47", "702", "503"}));
        EXPECT_TRUE(Frame->isMaximized());
    }
    Frame->showNormal();
    LetEventsRun();
    EXPECT_EQ(Frame->geometry(), QRect(31, 47, 702, 503));
}

TEST_F(FramePlacement, AMinimisedFrameLeavesThePlaceThatWasKept) {
    KeepPlace("20", "30", "640", "500");
    Frame->setGeometry(31, 47, 702, 503);
    Frame->setWindowState(Qt::WindowMinimized);
    LetEventsRun();
    Restart();
    EXPECT_EQ(KeptPlace(), (std::vector<std::string>{"20", "30", "640", "500"}));
    EXPECT_EQ(KeptState(), "1");
    EXPECT_EQ(Frame->geometry(), QRect(20, 30, 640, 500));
    EXPECT_FALSE(Frame->isMinimized());
}

struct Place {
    const char* Name;
    const char* Texts[4]; // left, top, width, height
};

void PrintTo(const Place& row, std::ostream* out) { *out << row.Name; }

class UselessPlaces : public FramePlacement, public testing::WithParamInterface<Place> {};

TEST_P(UselessPlaces, CountAsNone) {
    const QRect byDefault = Frame->geometry();
    const auto& [left, top, width, height] = GetParam().Texts;
    KeepPlace(left, top, width, height);
    ShowFrameAnew();
    EXPECT_EQ(Frame->geometry(), byDefault);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

const Place kUseless[] = {
    {"NoNumbers", {"a", "b", "c", "d"}},
    {"OneThatIsNone", {"10", "10", "wide", "500"}},
    {"OneThatIsEmpty", {"10", "", "600", "500"}},
    {"NoSize", {"10", "10", "0", "500"}},
    {"ANegativeSize", {"10", "10", "600", "-500"}},
    {"BeyondAllScreens", {"100000", "10", "600", "500"}},
    {"BeyondOnTheOtherSide", {"10", "-100000", "600", "500"}},
    {"BeyondAnyNumber", {"99999999999", "10", "600", "500"}},
};

INSTANTIATE_TEST_SUITE_P(Frame, UselessPlaces, testing::ValuesIn(kUseless),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FramePlacement, ThePlaceIsKeptWhenTheOutputWindowGoesAndNotLaterOnPurpose) {
    Frame->setGeometry(31, 47, 702, 503);
    CloseOutput();
    EXPECT_EQ(KeptPlace(), (std::vector<std::string>{"31", "47", "702", "503"}));
    Frame->setGeometry(5, 6, 750, 550);
    Frame->close();
    EXPECT_EQ(KeptPlace(), (std::vector<std::string>{"31", "47", "702", "503"}));
}

// The end of the program, begun by the frame.
class FrameUnload : public FrmMainTest {
protected:
    FrameUnload() {
        PrepareFolders();
        MacroSets[0].Name = "Default";
    }

    static frmStartUp* Splash() { return Window<frmStartUp>(); }

    // As when the player closes the window by its title bar.
    void CloseByTheWindowSystem() const {
        QCloseEvent close;
        QCoreApplication::sendEvent(Frame->windowHandle(), &close);
    }

    void ExpectSaved() const {
        EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), FormatMudList(MudList));
        EXPECT_TRUE(Folder.ContentOf("Data/client.cfg").ends_with("Default\r\n[END]\r\n"));
        EXPECT_EQ(Folder.ContentOf("Macros/Default.mco"), FormatMacroSet(MacroSets[0]));
        EXPECT_EQ(ReadSetting("MwClient", "Windows", "tbar", "nothing"), "1");
        EXPECT_NE(ReadSetting("MwClient", "Windows", "gTop", "nothing"), "nothing");
    }

    void ExpectOnlyTheSplash() const {
        const QList<QWidget*> windows = forms::VisibleWindows();
        ASSERT_EQ(windows.size(), 1);
        EXPECT_EQ(windows[0], Splash());
    }
};

TEST_F(FrameUnload, SavesBehindTheSplashAndEndsWithStatusZero) {
    SetKeyText(MacroSets[0].NormKey, 112, "look;");
    QElapsedTimer clock;
    clock.start();
    std::vector<std::string> statuses;
    QTimer::singleShot(0, Frame.get(), [&] {
        Item("mnuExit")->trigger();
        EXPECT_FALSE(Frame->isVisible());
        EXPECT_TRUE(SavingMode);
        ASSERT_NE(Splash(), nullptr);
        EXPECT_EQ(Splash()->lblLoading->text(), "Saving");
        QObject::connect(&Splash()->timerLoad, &QTimer::timeout, Splash(),
                         [&] { statuses.push_back(Splash()->lblStatus->text().toStdString()); });
    });
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_GE(clock.elapsed(), 1400); // 1500 by timers that may be a little early
    EXPECT_EQ(statuses, (std::vector<std::string>{"Mud List", "Client Configuration", "Macro Sets",
                                                  "Completed"}));
    ExpectSaved();
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrameUnload, ClosesEveryOtherWindow) {
    Item("mnuGHlp")->trigger();
    LoadUpdatePrompt();
    ShowUpdatePrompt();
    Item("mnuADCmud")->trigger();
    QTest::mouseClick(Frame->findChild<QPushButton*>("cmdAdd"), Qt::LeftButton);
    ASSERT_EQ(forms::VisibleWindows().size(), 5);
    EXPECT_EQ(RunUntil([this] {
                  Frame->close();
                  ExpectOnlyTheSplash();
              }),
              0);
    ExpectSaved();
    EXPECT_EQ(GetUserSetting("MwClient", "Update", "Check", "nothing"), "nothing");
}

TEST_F(FrameUnload, ClosesAMessageBoxThatIsOpen) {
    Closer.MayClose = [] { return false; };
    bool wasOpen = false;
    QTimer::singleShot(0, Frame.get(), [this] { Item("mnuAutoLog")->trigger(); });
    EXPECT_EQ(RunUntil([&, this] {
                  wasOpen = QApplication::activeModalWidget() != nullptr;
                  Frame->close();
                  ExpectOnlyTheSplash();
              }),
              0);
    EXPECT_TRUE(wasOpen);
    ExpectSaved();
}

TEST_F(FrameUnload, ClosesADialogWhoseMessageBoxIsOpen) {
    Closer.MayClose = [] { return false; };
    QTimer::singleShot(0, Frame.get(), [this] {
        QTest::mouseClick(Frame->cmdNew, Qt::LeftButton);
        QTest::mouseClick(Frame->findChild<QPushButton*>("cmdmAdd"), Qt::LeftButton);
    });
    bool wasOpen = false;
    EXPECT_EQ(RunUntil([&, this] {
                  wasOpen = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                  UnloadFrame();
                  ExpectOnlyTheSplash();
              }),
              0);
    EXPECT_TRUE(wasOpen);
    ExpectSaved();
}

TEST_F(FrameUnload, ByTheWindowSystemIsTheSame) {
    EXPECT_EQ(RunUntil([this] { CloseByTheWindowSystem(); }), 0);
    ExpectSaved();
}

TEST_F(FrameUnload, ByTheWindowSystemTakesAnOpenDialogAlong) {
    Item("mnuAlias")->trigger();
    EXPECT_EQ(RunUntil([this] {
                  CloseByTheWindowSystem();
                  ExpectOnlyTheSplash();
              }),
              0);
    ExpectSaved();
}

TEST_F(FrameUnload, IsNotBegunAgainWhileItSaves) {
    EXPECT_EQ(RunUntil([this] {
                  Frame->close();
                  const frmStartUp* const splash = Splash();
                  Frame->close();
                  UnloadFrame();
                  CloseByTheWindowSystem();
                  EXPECT_FALSE(Splash()->close());
                  EXPECT_EQ(Splash(), splash);
                  ExpectOnlyTheSplash();
              }),
              0);
    ExpectSaved();
}

TEST_F(FrameUnload, ClosesTheConnectionWithoutAWord) {
    Connect();
    Frame->close();
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_FALSE(mw::Connected);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrameUnload, WorksWithTheOutputWindowClosedBefore) {
    CloseOutput();
    EXPECT_EQ(RunUntil([this] { Frame->close(); }), 0);
    ExpectSaved();
}

TEST_F(FrameUnload, EndsEvenWhenNothingCanBeWritten) {
    ApplicationFolder = Folder.Path / "gone";
    EXPECT_EQ(RunUntil([this] { Frame->close(); }), 0);
    EXPECT_FALSE(Folder.HasFolder("gone"));
    EXPECT_EQ(Closer.Texts, Boxes{});
}

} // namespace
} // namespace mw
