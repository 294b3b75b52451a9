#include "app/MainFrame.h"

#include "app/StartUp.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "base/Notice.h"
#include "config/FreshFolder.h"
#include "config/MRegistry.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "net/Connection.h"
#include "support/ErrorOf.h"
#include "terminal/Ansi.h"
#include "terminal/AutoLog.h"
#include "terminal/Output.h"
#include "ui/UserSettings.h"

#include <ostream>

namespace mw {
namespace {

using Steps = std::vector<std::string>;

class MainFrame : public RuleTest {
protected:
    MainFrame() {
        MudList.resize(3);
        MudList[0].Address = "game.example";
        MudList[1].Name = "Northern Realms";
        MudList[1].Address = "192.0.2.10";
        MudList[1].Port = 4000;
        MudList[2].Name = "Another";
        MudList[2].Port = -1;
    }
};

TEST_F(MainFrame, BearsTheNameAndTheVersionInItsCaption) {
    EXPECT_EQ(FrameCaption(), "Quillmere Mud Client V" + std::to_string(QUILLMERE_VERSION_MAJOR) +
                                  "." + std::to_string(QUILLMERE_VERSION_MINOR) + "." +
                                  std::to_string(QUILLMERE_VERSION_PATCH));
}

TEST_F(MainFrame, FillsTheChooserInTheListsOrderAndShowsTheCurrentGame) {
    CurrentMud = 1;
    MDIForm_Load();
    std::erase_if(fakes::Calls, [](const std::string& call) {
        return !call.starts_with("cboMud ") && !call.starts_with("lbl");
    });
    EXPECT_EQ(fakes::Calls,
              (Steps{"cboMud add Quillmere", "cboMud add Northern Realms", "cboMud add Another",
                     "cboMud index 1", "lblAddress 192.0.2.10", "lblPort 4000"}));
    EXPECT_EQ(CurrentMud, 1);
}

TEST_F(MainFrame, FailsToLoadWhenTheCurrentGameIsNotListed) {
    CurrentMud = 3;
    EXPECT_EQ(ErrorOf(MDIForm_Load), SubscriptOutOfRange);
}

TEST_F(MainFrame, PutsTheTerminalIntoItsStartState) {
    ToolbarVisible = false;
    WholeSequenceMode = false;
    CurrentColour = Rgb(1, 2, 3);
    ScrollBackActive = true;
    OutputRedrawOn = false;
    MDIForm_Load();
    EXPECT_TRUE(ToolbarVisible);
    EXPECT_TRUE(WholeSequenceMode);
    EXPECT_EQ(CurrentColour, Rgb(255, 255, 255));
    EXPECT_FALSE(ScrollBackActive);
    EXPECT_TRUE(OutputRedrawOn);
}

TEST_F(MainFrame, LoadsWithWhiteWhateverThePaletteSays) {
    Palette[MwWhite] = Rgb(1, 2, 3);
    MDIForm_Load();
    EXPECT_EQ(CurrentColour, Rgb(255, 255, 255));
}

TEST_F(MainFrame, LoadsStepByStep) {
    MDIForm_Load();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "cboMud add Quillmere",
                                "cboMud add Northern Realms",
                                "cboMud add Another",
                                "Show picTool",
                                "Enable picTool",
                                "Check mnutoolbar",
                                "Hide mnuMud",
                                "Disable mnuMud",
                                "Uncheck mnuInput",
                                "Panel 2 ",
                                "cboMud index 0",
                                "lblAddress game.example",
                                "lblPort 1234",
                            }));
}

TEST_F(MainFrame, LetsEventsRunBetweenTheGames) {
    Steps seen;
    fakes::OnEvents = [&seen] { seen.push_back(fakes::Calls.back()); };
    MDIForm_Load();
    EXPECT_EQ(seen,
              (Steps{"cboMud add Quillmere", "cboMud add Northern Realms", "cboMud add Another"}));
}

TEST_F(MainFrame, FillsTheChooserWithTheGamesItBeganWithWhateverEventsDo) {
    fakes::OnEvents = [] { MudList.resize(MudList.size() + 1000); };
    MDIForm_Load();
    EXPECT_EQ(fakes::Calls[1], "cboMud add Northern Realms");
    EXPECT_EQ(fakes::EventRuns, 3);
}

TEST_F(MainFrame, TakesTheOutputFontFromTheSettings) {
    MDIForm_Load();
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(OutputFontSize, "10");
    KeepSetting("Settings", "Name", "Fixed");
    KeepSetting("Settings", "Font", "14");
    KeepSetting("Output", "Name", "Other");
    MDIForm_Load();
    EXPECT_EQ(OutputFontName, "Fixed");
    EXPECT_EQ(OutputFontSize, "14");
}

TEST_F(MainFrame, ShowsANoticeThatCameUpBeforeIt) {
    Notice = "Settings could not be read: x";
    MDIForm_Load();
    EXPECT_EQ(fakes::Panels[2], "Settings could not be read: x");
}

TEST_F(MainFrame, LoadsWithTheDefaultsAndANoticeWhenTheStoreCannotBeRead) {
    KeepSetting("Windows", "tbar", "0");
    KeepSetting("Menu", "Input", "True");
    KeepSetting("Settings", "Name", "Fixed");
    fakes::OpenCode = 5;
    MDIForm_Load();
    EXPECT_TRUE(ToolbarVisible);
    EXPECT_FALSE(KeepSentText);
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(fakes::Panels[2], "Settings could not be read: Could not open registry section");
    EXPECT_TRUE(fakes::Messages.empty());
}

// Toolbar and Mud menu, of which one can be used.
class ControlSets : public MainFrame {
protected:
    static void ExpectOnlyTheToolbar(bool toolbar) {
        EXPECT_EQ(ToolbarVisible, toolbar);
        EXPECT_EQ(fakes::Visible[FrameControl::picTool], toolbar);
        EXPECT_EQ(fakes::Enabled[FrameControl::picTool], toolbar);
        EXPECT_EQ(fakes::Checked[FrameControl::mnutoolbar], toolbar);
        EXPECT_EQ(fakes::Visible[FrameControl::mnuMud], !toolbar);
        EXPECT_EQ(fakes::Enabled[FrameControl::mnuMud], !toolbar);
    }

    static std::string Kept() { return ReadSetting("MwClient", "Windows", "tbar", "absent"); }

    static std::string KeptForTheUser() {
        return GetUserSetting("MwClient", "Windows", "tbar", "absent");
    }

    FreshFolder Folder; // of the games
};

TEST_F(ControlSets, BeginWithTheToolbarWhenNothingIsKept) {
    MDIForm_Load();
    ExpectOnlyTheToolbar(true);
    EXPECT_EQ(Kept(), "absent"); // loading keeps nothing
}

TEST_F(ControlSets, BeginAsTheyWereKept) {
    for (const char* const kept : {"1", "0", "1"}) {
        KeepSetting("Windows", "tbar", kept);
        MDIForm_Load();
        ExpectOnlyTheToolbar(std::string(kept) == "1");
    }
}

TEST_F(ControlSets, BeginWithTheMenuWhenAnythingElseIsKept) {
    for (const char* const kept : {"", "2", "True", " 1", "01", "x"}) {
        KeepSetting("Windows", "tbar", kept);
        MDIForm_Load();
        ExpectOnlyTheToolbar(false);
    }
}

TEST_F(ControlSets, ChangeStepByStep) {
    MDIForm_Load();
    fakes::ListIndex = 2;
    fakes::Calls.clear();
    mnutoolbar_Click();
    EXPECT_EQ(fakes::Calls,
              (Steps{"Hide picTool", "Disable picTool", "Uncheck mnutoolbar", "Show mnuMud",
                     "Enable mnuMud", "cboMud clear", "cboMud add Quillmere",
                     "cboMud add Northern Realms", "cboMud add Another", "cboMud index 2"}));
    fakes::Calls.clear();
    mnutoolbar_Click();
    EXPECT_EQ(fakes::Calls,
              (Steps{"Show picTool", "Enable picTool", "Check mnutoolbar", "Hide mnuMud",
                     "Disable mnuMud", "cboMud clear", "cboMud add Quillmere",
                     "cboMud add Northern Realms", "cboMud add Another", "cboMud index 2"}));
}

TEST_F(ControlSets, AreNeverBothThere) {
    MDIForm_Load();
    for (int i = 0; i < 5; ++i) {
        mnutoolbar_Click();
        ExpectOnlyTheToolbar(i % 2 == 1);
        EXPECT_EQ(Kept(), i % 2 == 1 ? "1" : "0");
    }
}

TEST_F(ControlSets, AreTheSameAfterARestart) {
    MDIForm_Load();
    for (const bool toolbar : {false, true}) {
        mnutoolbar_Click();
        ResetGlobals();
        MDIForm_Load();
        ExpectOnlyTheToolbar(toolbar);
    }
}

TEST_F(ControlSets, ChangeWithoutASelectedGame) {
    MDIForm_Load();
    fakes::ListIndex = -1;
    mnutoolbar_Click();
    EXPECT_EQ(fakes::Calls.back(), "cboMud index -1");
    EXPECT_EQ(CurrentMud, 0);
}

TEST_F(ControlSets, ChangeWithANoticeWhenTheStoreCannotBeWritten) {
    MDIForm_Load();
    fakes::CreateCode = 5;
    mnutoolbar_Click();
    ExpectOnlyTheToolbar(false);
    EXPECT_EQ(Notice, "Settings could not be kept: Could not open/create registry section");
}

TEST_F(ControlSets, AreKeptForTheUserTooThoughNothingReadsThat) {
    MDIForm_Load();
    mnutoolbar_Click();
    EXPECT_EQ(KeptForTheUser(), "0");
    mnutoolbar_Click();
    EXPECT_EQ(KeptForTheUser(), "1");
    fakes::UserSettings["MwClient/Windows/tbar"] = "0";
    MDIForm_Load();
    ExpectOnlyTheToolbar(true);
}

TEST_F(ControlSets, ConnectThroughTheMenuAloneWhileTheToolbarIsOff) {
    MDIForm_Load();
    mnutoolbar_Click();
    fakes::Calls.clear();
    fakes::Enabled.clear();
    ConnectToMud();
    DisconnectFromMud();
    for (const FrameControl control : {FrameControl::cmdConn, FrameControl::cmdDisco,
                                       FrameControl::cmdNew, FrameControl::cmdDel})
        EXPECT_FALSE(fakes::Enabled.contains(control));
    for (const FrameControl control :
         {FrameControl::mnuConnect, FrameControl::mnuDisconnect, FrameControl::mnuADCmud})
        EXPECT_TRUE(fakes::Enabled.contains(control));
}

TEST_F(ControlSets, ConnectThroughTheToolbarAloneWhileItIsOn) {
    MDIForm_Load();
    fakes::Enabled.clear();
    ConnectToMud();
    DisconnectFromMud();
    EXPECT_TRUE(fakes::Enabled.contains(FrameControl::cmdConn));
    for (const FrameControl control :
         {FrameControl::mnuConnect, FrameControl::mnuDisconnect, FrameControl::mnuADCmud})
        EXPECT_FALSE(fakes::Enabled.contains(control));
}

struct Input {
    const char* Name;
    const char* Kept;
    bool Keeps;
};

void PrintTo(const Input& row, std::ostream* out) { *out << row.Name; }

class KeptInputs : public MainFrame, public testing::WithParamInterface<Input> {};

TEST_P(KeptInputs, SetTheFlagAndItsMark) {
    KeepSentText = !GetParam().Keeps;
    KeepSetting("Menu", "Input", GetParam().Kept);
    MDIForm_Load();
    EXPECT_EQ(KeepSentText, GetParam().Keeps);
    EXPECT_EQ(fakes::Checked.at(FrameControl::mnuInput), GetParam().Keeps);
    EXPECT_TRUE(fakes::Messages.empty());
}

const Input kInputs[] = {
    {"True", "True", true},       {"TrueInSmallLetters", "true", true},
    {"ANumber", "-1", true},      {"False", "False", false},
    {"Zero", "0", false},         {"Empty", "", false},
    {"AWord", "maybe", false},    {"TrueAndMore", "True!", false},
    {"TwoNumbers", "1 1", false},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptInputs, testing::ValuesIn(kInputs),
                         [](const auto& row) { return row.param.Name; });

TEST_F(MainFrame, KeepsNoSentTextWhenNothingIsKept) {
    KeepSentText = true;
    MDIForm_Load();
    EXPECT_FALSE(KeepSentText);
    EXPECT_FALSE(fakes::Checked.at(FrameControl::mnuInput));
}

class Toggles : public MainFrame {
protected:
    static std::string Kept(const char* key) {
        return ReadSetting("MwClient", "Menu", key, "absent");
    }
};

TEST_F(Toggles, EchoIsMarkedAndKept) {
    mnuEcho_Click();
    EXPECT_TRUE(EchoOn);
    EXPECT_EQ(Kept("Echo"), "True");
    mnuEcho_Click();
    EXPECT_FALSE(EchoOn);
    EXPECT_EQ(Kept("Echo"), "False");
    EXPECT_EQ(fakes::Calls, (Steps{"Check mnuEcho", "Uncheck mnuEcho"}));
    EXPECT_EQ(Kept("Input"), "absent");
}

TEST_F(Toggles, KeepSentTextIsMarkedAndKept) {
    mnuInput_Click();
    EXPECT_TRUE(KeepSentText);
    EXPECT_EQ(Kept("Input"), "True");
    mnuInput_Click();
    EXPECT_FALSE(KeepSentText);
    EXPECT_EQ(Kept("Input"), "False");
    EXPECT_EQ(fakes::Calls, (Steps{"Check mnuInput", "Uncheck mnuInput"}));
    EXPECT_EQ(Kept("Echo"), "absent");
}

TEST_F(Toggles, OnlyKeepSentTextComesBackAfterARestartOnPurpose) {
    mnuEcho_Click();
    mnuInput_Click();
    ResetGlobals();
    fakes::Checked.clear();
    MDIForm_Load();
    EXPECT_FALSE(EchoOn);
    EXPECT_FALSE(fakes::Checked[FrameControl::mnuEcho]);
    EXPECT_TRUE(KeepSentText);
    EXPECT_TRUE(fakes::Checked[FrameControl::mnuInput]);
}

TEST_F(Toggles, TurnWithANoticeWhenTheStoreCannotBeWritten) {
    fakes::SetCode = 5;
    mnuEcho_Click();
    mnuInput_Click();
    EXPECT_TRUE(EchoOn && KeepSentText);
    EXPECT_EQ(Notice, "Settings could not be kept: Could not set key value");
}

TEST_F(MainFrame, HasNoLogToStartOnPurpose) {
    mnuAutoLog_Click();
    mnuAutoLog_Click();
    EXPECT_EQ(fakes::Messages, (Steps{"This is not functioning", "This is not functioning"}));
    EXPECT_FALSE(AutoLogOn);
    EXPECT_EQ(fakes::Calls.size(), 2u); // the messages
}

class FrameUnload : public ControlSets {};

TEST_F(FrameUnload, GoesStepByStep) {
    MDIForm_Load();
    Steps steps;
    fakes::OnCall = [&steps](const std::string& call) {
        steps.push_back(call + (SavingMode ? ", saving" : "") + ", tbar " + Kept());
    };
    MDIForm_Unload();
    EXPECT_EQ(steps, (Steps{"UnloadOtherForms, tbar absent", "ShowSplash, saving, tbar 1"}));
}

TEST_F(FrameUnload, TakesTheToolbarFromTheMudMenuOnPurpose) {
    MDIForm_Load();
    fakes::Visible[FrameControl::mnuMud] = true;
    MDIForm_Unload();
    EXPECT_EQ(Kept(), "0");
    fakes::Visible[FrameControl::mnuMud] = false;
    ToolbarVisible = false;
    MDIForm_Unload();
    EXPECT_EQ(Kept(), "1");
}

TEST_F(FrameUnload, ClosesALogThatADisconnectHasLeftOpen) {
    const FreshFolder folder;
    AutoLogOn = true;
    LogFilePath = (folder.Path / "log.txt").string();
    OpenLog();
    MDIForm_Unload();
    EXPECT_FALSE(LogFileOpen);
}

TEST_F(FrameUnload, KeepsTheToolbarForTheUserToo) {
    MDIForm_Load();
    mnutoolbar_Click();
    MDIForm_Unload();
    EXPECT_EQ(KeptForTheUser(), "0");
}

TEST_F(FrameUnload, SavesThoughTheStoreCannotBeWritten) {
    MDIForm_Load();
    fakes::CreateCode = 5;
    fakes::Calls.clear();
    MDIForm_Unload();
    EXPECT_TRUE(SavingMode);
    EXPECT_EQ(fakes::Calls.back(), "ShowSplash");
    EXPECT_TRUE(fakes::Messages.empty());
}

// The game that the command line asks for.
class AskedAtStart : public ControlSets {
protected:
    AskedAtStart() {
        MakeFolder("Data");
        MDIForm_Load();
        fakes::Calls.clear();
    }

    static void Ask(const std::string& text) {
        ConnectAtStart = text;
        ConnectAsAsked();
    }
};

TEST_F(AskedAtStart, NothingDoesNothing) {
    ConnectAsAsked();
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(AskedAtStart, ANameIsChosenAndThenConnectedTo) {
    Ask("Northern Realms");
    EXPECT_EQ(CurrentMud, 1);
    const Steps first(fakes::Calls.begin(), fakes::Calls.begin() + 4);
    EXPECT_EQ(first, (Steps{"cboMud index 1", "lblAddress 192.0.2.10", "lblPort 4000",
                            "Disable cmdConn"}));
    EXPECT_EQ(fakes::CallsOf("Connect 192.0.2.10:4000"), 1);
    EXPECT_EQ(MudList.size(), 3u);
    EXPECT_FALSE(Exists("muds.lst", "Data"));
}

TEST_F(AskedAtStart, AHostAndPortIsAddedSavedChosenAndConnectedTo) {
    Ask("new.example:5000");
    EXPECT_EQ(MudList.at(3).Name, "new.example");
    EXPECT_EQ(CurrentMud, 3);
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), FormatMudList(MudList));
    EXPECT_TRUE(Folder.HasFolder("new.example/sounds"));
    EXPECT_EQ(fakes::Calls.front(), "cboMud add new.example");
    EXPECT_EQ(fakes::CallsOf("cboMud index 3"), 1);
    EXPECT_EQ(fakes::CallsOf("Connect new.example:5000"), 1);
}

TEST_F(AskedAtStart, AHostAndPortThatIsThereIsNotAddedAgain) {
    Ask("192.0.2.10:4000");
    EXPECT_EQ(MudList.size(), 3u);
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(fakes::CallsOf("Connect 192.0.2.10:4000"), 1);
}

TEST_F(AskedAtStart, ANameWithAColonIsAName) {
    MudList[2].Name = "Realms: North";
    Ask("Realms: North");
    EXPECT_EQ(CurrentMud, 2);
    EXPECT_EQ(fakes::CallsOf("Connect :-1"), 1);
}

TEST_F(AskedAtStart, WhatIsNoGameIsToldOnceAndNothingIsChosen) {
    CurrentMud = 1;
    for (const char* const text : {"nowhere", "new.example:", ":5000", "new.example:telnet"}) {
        fakes::Calls.clear();
        Ask(text);
        EXPECT_EQ(fakes::Calls, Steps{std::string("Message There is no game called \"") + text +
                                      "\", and it is not of the form HOST:PORT."});
        EXPECT_EQ(CurrentMud, 1);
        EXPECT_EQ(MudList.size(), 3u);
    }
}

TEST_F(AskedAtStart, ABlankHostIsNone) {
    CurrentMud = 1;
    Ask(" :5000");
    EXPECT_EQ(fakes::Messages,
              Steps{"There is no game called \" :5000\", and it is not of the form HOST:PORT."});
    EXPECT_EQ(fakes::Calls.size(), 1u); // nothing but the message
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(MudList.size(), 3u);
}

TEST_F(AskedAtStart, APortBeyond16BitsIsAnErrorAndNothingIsAdded) {
    EXPECT_EQ(ErrorOf([] { Ask("new.example:99999"); }), Overflow);
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(MudList.size(), 3u);
}

TEST_F(AskedAtStart, BelowATakenFolderNothingIsWrittenAndTheGameIsPlayed) {
    FolderIsTaken = true;
    const auto before = Folder.Contents();
    Ask("new.example:5000");
    EXPECT_EQ(fakes::CallsOf("Connect new.example:5000"), 1);
    EXPECT_EQ(Folder.Contents(), before);
}

} // namespace
} // namespace mw
