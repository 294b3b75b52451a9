#include "net/Connection.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "config/MRegistry.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"
#include "terminal/AutoLog.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"

#include <algorithm>
#include <ostream>

using namespace std::string_literals;

namespace mw {
namespace {

using Steps = std::vector<std::string>;

const char* const kNorthern = "Northern Realms";

// A list of two games, an application folder of its own, and a socket that is closed.
class ConnectionTest : public RuleTest {
protected:
    ConnectionTest() {
        fakes::SocketState = SocketClosed;
        MudList[0].Address = "game.example";
        AddGame(kNorthern, "192.0.2.10", 4000);
    }

    static void AddGame(const std::string& name, const std::string& address, std::int16_t port) {
        MudEntry entry;
        entry.Name = name;
        entry.Address = address;
        entry.Port = port;
        MudList.push_back(entry);
    }

    static void Choose(std::int16_t index) {
        CurrentMud = index;
        fakes::ChosenMud = MudAt(index).Name;
    }

    // The connection stands, with all its timers running; the calls so far are forgotten.
    static void BeConnected() {
        fakes::SocketState = SocketConnected;
        wskTCP_Connect();
        Forget();
    }

    // A connection is being set up; the calls so far are forgotten.
    static void BeConnecting() {
        ConnectToMud();
        fakes::SocketState = SocketConnecting;
        Forget();
    }

    static void Forget() {
        fakes::Calls.clear();
        fakes::Enabled.clear();
        fakes::Sends.clear();
        fakes::Runs.clear();
        fakes::Shown.clear();
    }

    static void Receive(const std::string& chunk) {
        fakes::Arrivals.push_back(chunk);
        wskTCP_DataArrival();
    }

    static std::string Panel() { return fakes::Panels[stsBar::StatePanel]; }

    static std::string Clock() { return fakes::Panels[stsBar::ClockPanel]; }

    FreshFolder Folder;
};

class Connecting : public ConnectionTest {};

TEST_F(Connecting, WithTheToolbarGoesStepByStep) {
    Choose(0);
    ConnectToMud();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Disable cmdConn",
                                "Enable cmdDisco",
                                "Disable cmdNew",
                                "Disable cmdDel",
                                "Disable cboMud",
                                "ShowOutputWindow",
                                "Connect game.example:1234",
                                "Start tmrConnect 100",
                                "Append ffffff \nAttempting connection to: Quillmere",
                                "CaretToEnd",
                                "Panel 1 Attempting connection to Quillmere",
                                "CaretToEnd",
                                "Focus cboInput",
                            }));
}

TEST_F(Connecting, WithTheMenuGoesStepByStep) {
    ToolbarVisible = false;
    Choose(0);
    ConnectToMud();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Disable mnuConnect",
                                "Disable mnuADCmud",
                                "Enable mnuDisconnect",
                                "ShowOutputWindow",
                                "Connect game.example:1234",
                                "Start tmrConnect 100",
                                "Append ffffff \nAttempting connection to: Quillmere",
                                "CaretToEnd",
                                "Panel 1 Attempting connection to Quillmere",
                                "CaretToEnd",
                                "Focus cboInput",
                            }));
}

TEST_F(Connecting, TakesAddressPortAndNameOfTheChosenGame) {
    Choose(1);
    ConnectToMud();
    EXPECT_EQ(fakes::Calls[6], "Connect 192.0.2.10:4000");
    EXPECT_EQ(fakes::Shown, "\nAttempting connection to: Northern Realms");
}

TEST_F(Connecting, HandsOnAPortThatIsNone) {
    AddGame("Odd", "host", -1);
    Choose(2);
    ConnectToMud();
    EXPECT_EQ(fakes::Calls[6], "Connect host:-1");
}

TEST_F(Connecting, NamesTheEntryAtTheMacroSetsIndexInTheStatusBarOnPurpose) {
    MacroSets.resize(2);
    CurrentMacroSet = 1;
    Choose(0);
    ConnectToMud();
    EXPECT_EQ(Panel(), "Attempting connection to Northern Realms");
    CurrentMacroSet = 0;
    Choose(1);
    ConnectToMud();
    EXPECT_EQ(Panel(), "Attempting connection to Quillmere");
}

TEST_F(Connecting, FailsOnAMacroSetBeyondTheListAfterTheConnectCallHasGoneOutIsMeant) {
    MacroSets.resize(3);
    CurrentMacroSet = 2;
    Choose(0);
    EXPECT_EQ(ErrorOf(ConnectToMud), SubscriptOutOfRange);
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Disable cmdConn",
                                "Enable cmdDisco",
                                "Disable cmdNew",
                                "Disable cmdDel",
                                "Disable cboMud",
                                "ShowOutputWindow",
                                "Connect game.example:1234",
                                "Start tmrConnect 100",
                                "Append ffffff \nAttempting connection to: Quillmere",
                                "CaretToEnd",
                            }));
    EXPECT_TRUE(tmrConnect.Enabled);
    EXPECT_TRUE(Folder.HasFolder("Quillmere/sounds"));
}

TEST_F(Connecting, ToAGameOutsideTheListSetsTheControlsAndFails) {
    constexpr std::int16_t kOutside[] = {2, 32767, -1, -32768};
    for (const std::int16_t index : kOutside) {
        Forget();
        CurrentMud = index;
        EXPECT_EQ(ErrorOf(ConnectToMud), SubscriptOutOfRange) << index;
        EXPECT_EQ(fakes::Calls, (Steps{"Disable cmdConn", "Enable cmdDisco", "Disable cmdNew",
                                       "Disable cmdDel", "Disable cboMud"}))
            << index;
        EXPECT_FALSE(tmrConnect.Enabled) << index;
    }
    EXPECT_TRUE(Folder.IsEmpty());
}

TEST_F(Connecting, StartsOnlyTheConnectTimer) {
    ConnectToMud();
    EXPECT_TRUE(tmrConnect.Enabled);
    EXPECT_FALSE(tmrIncome.Enabled);
    EXPECT_FALSE(tmrLog.Enabled);
    EXPECT_FALSE(Connected);
}

TEST_F(Connecting, MakesTheGamesFolderAndItsSoundsFolder) {
    Choose(1);
    ConnectToMud();
    EXPECT_TRUE(Folder.HasFolder("Northern Realms/sounds"));
    EXPECT_FALSE(Folder.HasFolder("Quillmere"));
}

TEST_F(Connecting, MakesTheGamesFolderOnce) {
    Choose(1);
    ConnectToMud();
    ConnectToMud();
    EXPECT_TRUE(Folder.HasFolder("Northern Realms/sounds"));
}

TEST_F(Connecting, LeavesAFolderWithoutSoundsAsItIsOnPurpose) {
    std::filesystem::create_directory(Folder.Path / kNorthern);
    Choose(1);
    ConnectToMud();
    EXPECT_FALSE(Folder.HasFolder("Northern Realms/sounds"));
    EXPECT_EQ(fakes::Calls[6], "Connect 192.0.2.10:4000");
}

TEST_F(Connecting, LeavesAFileOfTheGamesNameAlone) {
    Folder.MakeFile(kNorthern);
    Choose(1);
    EXPECT_EQ(ErrorOf(ConnectToMud), 0);
    EXPECT_EQ(Folder.ContentOf(kNorthern), "x");
}

TEST_F(Connecting, FailsBeforeTheConnectCallWhenTheFolderCannotBeMade) {
    ApplicationFolder = Folder.Path / "gone";
    Choose(0);
    EXPECT_EQ(ErrorOf(ConnectToMud), PathFileAccess);
    EXPECT_EQ(fakes::Calls, (Steps{"Disable cmdConn", "Enable cmdDisco", "Disable cmdNew",
                                   "Disable cmdDel", "Disable cboMud"}));
    EXPECT_FALSE(tmrConnect.Enabled);
}

TEST_F(Connecting, MakesNoFolderForANameThatWouldLeaveTheApplicationFolder) {
    for (const char* name : {"..", ".", "", "../away", "..\\away", "/away", "a/b", "a\\b",
                             "C:", "Data", "Macros", "a\nb"}) {
        MudList[1].Name = name;
        Choose(1);
        EXPECT_EQ(ErrorOf(ConnectToMud), 0) << name;
        EXPECT_TRUE(Folder.IsEmpty()) << name;
        EXPECT_FALSE(std::filesystem::exists(Folder.Path.parent_path() / "away")) << name;
    }
}

TEST_F(Connecting, WorksWithAnyLengthOfName) {
    for (const std::string& name :
         {std::string(300, 'n'), std::string(200, '\xe9'), std::string(128, '\x80')}) {
        MudList[1].Name = name;
        Choose(1);
        Forget();
        EXPECT_EQ(ErrorOf(ConnectToMud), 0) << name.size() << " characters";
        EXPECT_EQ(fakes::Shown.size(), name.size() + 27);
    }
}

struct State {
    const char* Name;
    std::int16_t Number;
    const char* Text;
    bool NamesTheGame;
};

void PrintTo(const State& state, std::ostream* out) { *out << state.Name; }

const State kStates[] = {
    {"Closed", 0, "Connection Closed", false},
    {"Open", 1, "Connection Open", false},
    {"Listening", 2, "Listening", false},
    {"ConnectionPending", 3, "Connection to Northern Realms pending", true},
    {"ResolvingHost", 4, "Resolving host for Northern Realms", true},
    {"HostResolved", 5, "Host Resolved", false},
    {"Connecting", 6, "Connecting to Northern Realms", true},
    {"Connected", 7, "Connected to Northern Realms", true},
    {"Closing", 8, "Connection Closed by Northern Realms", true},
    {"Error", 9, "Error", false},
    {"Ten", 10, "", false},
    {"MinusOne", -1, "", false},
    {"Largest", 32767, "", false},
    {"Smallest", -32768, "", false},
};

class StateText : public ConnectionTest, public testing::WithParamInterface<State> {};

TEST_P(StateText, TellsWhatTheSocketDoes) {
    Choose(1);
    fakes::SocketState = GetParam().Number;
    EXPECT_EQ(ConnectionStateText(), GetParam().Text);
}

TEST_P(StateText, StandsInTheStatusBarAfterATick) {
    Choose(1);
    fakes::SocketState = GetParam().Number;
    fakes::Panels[stsBar::StatePanel] = "before";
    tmrConnect_Timer();
    EXPECT_EQ(Panel(), GetParam().Text);
}

TEST_P(StateText, NeedsTheListOnlyForTheGamesName) {
    CurrentMud = 2;
    fakes::SocketState = GetParam().Number;
    EXPECT_EQ(ErrorOf([] { ConnectionStateText(); }),
              GetParam().NamesTheGame ? SubscriptOutOfRange : 0);
}

INSTANTIATE_TEST_SUITE_P(States, StateText, testing::ValuesIn(kStates),
                         [](const auto& row) { return row.param.Name; });

class ConnectTimer : public ConnectionTest {};

TEST_F(ConnectTimer, GoesOnWhileTheTextCanChange) {
    BeConnecting();
    for (const std::int16_t state : {SocketResolving, SocketResolved, SocketConnecting,
                                     SocketConnected, SocketClosing, SocketError}) {
        fakes::SocketState = state;
        fakes::Calls.clear();
        tmrConnect_Timer();
        EXPECT_EQ(fakes::Calls, Steps{"Panel 1 " + ConnectionStateText()}) << state;
    }
}

TEST_F(ConnectTimer, StopsThePlatformsTimerButStaysEnabledWhenTheSocketIsClosed) {
    BeConnecting();
    fakes::SocketState = SocketClosed;
    tmrConnect_Timer();
    EXPECT_EQ(fakes::Calls, (Steps{"Panel 1 Connection Closed", "Stop tmrConnect"}));
    EXPECT_TRUE(tmrConnect.Enabled);
}

TEST_F(ConnectTimer, RunsAgainWithTheNextConnection) {
    BeConnecting();
    fakes::SocketState = SocketClosed;
    tmrConnect_Timer();
    Forget();
    ConnectToMud();
    EXPECT_LT(fakes::PlaceOf("Connect game.example:1234"), fakes::PlaceOf("Start tmrConnect 100"));
}

class Timers : public ConnectionTest {};

TEST_F(Timers, KeepTheirIntervalsAndStartDisabled) {
    EXPECT_EQ(tmrConnect.Interval, 100);
    EXPECT_EQ(tmrIncome.Interval, 1);
    EXPECT_EQ(tmrLog.Interval, 1000);
    EXPECT_FALSE(tmrConnect.Enabled || tmrIncome.Enabled || tmrLog.Enabled);
}

TEST_F(Timers, TheIncomeTickDoesNothingOnPurpose) {
    for (const char* text : {"", "waiting"}) {
        Append(IncomingBuffer, text);
        tmrIncome_Timer();
        EXPECT_EQ(View(IncomingBuffer), text);
        EXPECT_TRUE(fakes::Calls.empty());
    }
}

class ConnectEvent : public ConnectionTest {};

TEST_F(ConnectEvent, GoesStepByStep) {
    Choose(1);
    BeConnecting();
    fakes::SocketState = SocketConnected;
    wskTCP_Connect();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Stop tmrConnect",
                                "Panel 1 Connected to: Northern Realms",
                                "Panel 3 00:00:00",
                                "Start tmrLog 1000",
                            }));
    EXPECT_TRUE(Connected);
    EXPECT_FALSE(tmrConnect.Enabled);
    EXPECT_TRUE(tmrLog.Enabled);
    EXPECT_TRUE(tmrIncome.Enabled);
}

TEST_F(ConnectEvent, NamesTheChoosersItemNotTheCurrentGame) {
    Choose(0);
    fakes::ChosenMud = "Something else";
    wskTCP_Connect();
    EXPECT_EQ(Panel(), "Connected to: Something else");
}

TEST_F(ConnectEvent, ChangesNoButtonAndNoMenuItem) {
    BeConnecting();
    wskTCP_Connect();
    EXPECT_TRUE(fakes::Enabled.empty());
    EXPECT_TRUE(fakes::Shown.empty());
}

TEST_F(ConnectEvent, ResetsTheSessionClock) {
    SessionSeconds = 7;
    SessionMinutes = 8;
    SessionHours = 9;
    wskTCP_Connect();
    EXPECT_EQ(SessionSeconds, 0);
    EXPECT_EQ(SessionMinutes, 0);
    EXPECT_EQ(SessionHours, 0);
    EXPECT_EQ(Clock(), "00:00:00");
}

class SessionClock : public ConnectionTest {
protected:
    static void Stand(int hours, int minutes, int seconds) {
        SessionHours = static_cast<std::uint8_t>(hours);
        SessionMinutes = static_cast<std::uint8_t>(minutes);
        SessionSeconds = static_cast<std::uint8_t>(seconds);
    }

    static void Tick(int seconds) {
        for (int i = 0; i < seconds; ++i)
            tmrLog_Timer();
    }
};

TEST_F(SessionClock, CountsSecondsMinutesAndHours) {
    Tick(1);
    EXPECT_EQ(Clock(), "00:00:01");
    Tick(58);
    EXPECT_EQ(Clock(), "00:00:59");
    Tick(1);
    EXPECT_EQ(Clock(), "00:01:00");
    Tick(3540);
    EXPECT_EQ(Clock(), "01:00:00");
    EXPECT_EQ(SessionHours, 1);
    EXPECT_EQ(SessionMinutes, 0);
    EXPECT_EQ(SessionSeconds, 0);
}

TEST_F(SessionClock, ShowsThreeDigitsOfHours) {
    Stand(99, 59, 59);
    Tick(1);
    EXPECT_EQ(Clock(), "100:00:00");
}

TEST_F(SessionClock, HoldsAt255Hours) {
    Stand(254, 59, 59);
    Tick(1);
    EXPECT_EQ(Clock(), "255:00:00");
    Stand(255, 59, 59);
    Tick(1);
    EXPECT_EQ(SessionHours, 255);
    EXPECT_TRUE(Clock().starts_with("255:")) << Clock();
}

class SessionLog : public ConnectionTest {
protected:
    SessionLog() {
        AutoLogOn = true;
        LogFilePath = (Folder.Path / "log.txt").string();
    }

    ~SessionLog() override { CloseLog(); }
};

TEST_F(SessionLog, StaysClosedWhileTheSwitchIsOff) {
    AutoLogOn = false;
    wskTCP_Connect();
    EXPECT_FALSE(LogFileOpen);
    EXPECT_TRUE(Folder.IsEmpty());
}

TEST_F(SessionLog, OpensWithTheConnection) {
    ConnectToMud();
    EXPECT_FALSE(LogFileOpen);
    wskTCP_Connect();
    EXPECT_TRUE(LogFileOpen);
    EXPECT_NE(LogFileNumber, 0);
}

TEST_F(SessionLog, IsAppendedTo) {
    Folder.MakeFile("log.txt");
    BeConnected();
    Receive("hello\nxy");
    wskTCP_Close();
    EXPECT_EQ(Folder.ContentOf("log.txt"), "x\"" + fakes::Date + ": hello\n\"\r\n");
}

TEST_F(SessionLog, ClosesWithTheServersClose) {
    BeConnected();
    wskTCP_Close();
    EXPECT_FALSE(LogFileOpen);
}

TEST_F(SessionLog, HoldsTheLineThatOnlyTheCloseMadeComplete) {
    BeConnected();
    Receive("one\ntwo\x1b[?");
    EXPECT_EQ(Folder.ContentOf("log.txt"), "\"" + fakes::Date + ": one\n\"\r\n");
    Append(IncomingBuffer, "\nthree");
    wskTCP_Close();
    EXPECT_EQ(Folder.ContentOf("log.txt"),
              "\"" + fakes::Date + ": one\n\"\r\n\"" + fakes::Date + ": two[\n\"\r\n");
}

TEST_F(SessionLog, StaysOpenAfterAnErrorOnPurpose) {
    BeConnected();
    wskTCP_Error(10054, "reset");
    EXPECT_TRUE(LogFileOpen);
}

TEST_F(SessionLog, StaysOpenAfterADisconnectOnPurpose) {
    BeConnected();
    DisconnectFromMud();
    EXPECT_TRUE(LogFileOpen);
}

TEST_F(SessionLog, ThatIsStillOpenIsClosedFirstAtTheNextConnect) {
    BeConnected();
    DisconnectFromMud();
    LogFilePath = (Folder.Path / "second.txt").string();
    BeConnected();
    EXPECT_TRUE(LogFileOpen);
    Receive("hello\nxy");
    EXPECT_EQ(Folder.ContentOf("log.txt"), "");
    EXPECT_EQ(Folder.ContentOf("second.txt"), "\"" + fakes::Date + ": hello\n\"\r\n");
}

TEST_F(SessionLog, ThatCannotBeOpenedFailsWhenAllElseIsDone) {
    LogFilePath = (Folder.Path / "gone" / "log.txt").string();
    EXPECT_EQ(ErrorOf(wskTCP_Connect), PathFileAccess);
    EXPECT_FALSE(LogFileOpen);
    EXPECT_TRUE(Connected);
    EXPECT_TRUE(tmrLog.Enabled);
    EXPECT_TRUE(tmrIncome.Enabled);
}

class DataArrival : public ConnectionTest {
protected:
    DataArrival() { BeConnected(); }
};

TEST_F(DataArrival, ShowsTheTextWithoutItsLastByteOnPurpose) {
    Receive("hello.");
    EXPECT_EQ(fakes::Shown, "hello");
}

TEST_F(DataArrival, OfOneByteAddsNothing) {
    Receive("a");
    EXPECT_EQ(fakes::Shown, "");
    EXPECT_EQ(View(IncomingBuffer), "");
}

TEST_F(DataArrival, OfNothingAddsNothing) {
    Receive("");
    EXPECT_EQ(fakes::Shown, "");
}

TEST_F(DataArrival, AppendsBehindWhatWaits) {
    Receive("\x1b[0;3.");
    EXPECT_EQ(View(IncomingBuffer), "\x1b[0;3");
    Receive("1mred.");
    EXPECT_EQ(View(IncomingBuffer), "");
    EXPECT_EQ(fakes::Shown, "red");
    EXPECT_EQ(fakes::Runs.back().Colour, Rgb(140, 0, 0));
}

TEST_F(DataArrival, AnswersBeforeTheTextIsShown) {
    Receive("a\xff\xfd\x01z.");
    EXPECT_LT(fakes::PlaceOf("Send \xff\xfb\x01"), fakes::PlaceOf("Append ffffff az"));
}

TEST_F(DataArrival, AnswersBeforeTheRestIsScanned) {
    Receive("\xff\xfa\x18\x01\xff\xf0\xff\xfd\x01hi.");
    EXPECT_EQ(fakes::Sends, (Steps{"\xff\xfa\0DEC-VT100\xff\xf0"s, "\xff\xfb\x01"}));
    EXPECT_EQ(fakes::Shown, "hi");
}

TEST_F(DataArrival, AnswersWhateverTheSocketsState) {
    fakes::SocketState = SocketClosing;
    Receive("\xff\xfd\x01");
    EXPECT_EQ(fakes::Sends, Steps{"\xff\xfb\x01"});
}

TEST_F(DataArrival, KeepsNothingOfACommandThatIsCutOff) {
    Receive("ab\xff\xfd");
    Receive("\x01xy");
    EXPECT_TRUE(fakes::Sends.empty());
    EXPECT_EQ(fakes::Shown, "ab\x01x");
}

TEST_F(DataArrival, LeavesASubnegotiationThatIsCutOffWithoutAnAnswer) {
    Receive("ab\xff\xfa\x18");
    Receive("\x01\xff\xf0xy");
    EXPECT_TRUE(fakes::Sends.empty());
    EXPECT_EQ(fakes::Shown, "ab\x01x");
}

TEST_F(DataArrival, TakesTheLongestChunk) {
    Receive(std::string(32767, 'x'));
    EXPECT_EQ(fakes::Shown, std::string(32766, 'x'));
}

TEST_F(DataArrival, OverflowsBeforeSendingOrAppending) {
    Append(IncomingBuffer, "waiting");
    fakes::Arrivals.push_back("\xff\xfd\x01" + std::string(32765, 'x'));
    EXPECT_EQ(ErrorOf(wskTCP_DataArrival), Overflow);
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(View(IncomingBuffer), "waiting");
}

TEST_F(DataArrival, GoesOnAfterAnOverflow) {
    fakes::Arrivals.push_back(std::string(32768, 'x'));
    EXPECT_EQ(ErrorOf(wskTCP_DataArrival), Overflow);
    Receive("hello.");
    EXPECT_EQ(fakes::Shown, "hello");
}

class CloseEvent : public ConnectionTest {};

TEST_F(CloseEvent, GoesStepByStep) {
    BeConnected();
    fakes::SocketState = SocketClosing;
    wskTCP_Close();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Stop tmrConnect",
                                "Append ffffff \n\nConnection Closed",
                                "CaretToEnd",
                                "Enable cmdConn",
                                "Disable cmdDisco",
                                "Enable cmdNew",
                                "Enable cmdDel",
                                "Panel 1 ",
                                "Enable cboMud",
                                "Stop tmrLog",
                                "Close",
                            }));
}

TEST_F(CloseEvent, GoesTheSameStepsInMenuModeAndLeavesTheMenuOnPurpose) {
    BeConnected();
    wskTCP_Close();
    const Steps withToolbar = fakes::Calls;
    ToolbarVisible = false;
    BeConnected();
    wskTCP_Close();
    EXPECT_EQ(fakes::Calls, withToolbar);
    EXPECT_FALSE(fakes::Enabled.contains(FrameControl::mnuConnect));
    EXPECT_FALSE(fakes::Enabled.contains(FrameControl::mnuADCmud));
    EXPECT_FALSE(fakes::Enabled.contains(FrameControl::mnuDisconnect));
}

TEST_F(CloseEvent, EndsTheConnectionAndStopsEveryTimer) {
    BeConnected();
    tmrConnect.Enabled = true;
    wskTCP_Close();
    EXPECT_FALSE(Connected);
    EXPECT_FALSE(tmrConnect.Enabled);
    EXPECT_FALSE(tmrIncome.Enabled);
    EXPECT_FALSE(tmrLog.Enabled);
}

TEST_F(CloseEvent, ShowsTheTextThatWaitsFirst) {
    BeConnected();
    Append(IncomingBuffer, "Good bye");
    wskTCP_Close();
    EXPECT_EQ(fakes::Shown, "Good bye\n\nConnection Closed");
    EXPECT_EQ(View(IncomingBuffer), "");
    EXPECT_LT(fakes::PlaceOf("Stop tmrConnect"), fakes::PlaceOf("Append ffffff Good bye"));
}

TEST_F(CloseEvent, ShowsASequenceThatNeverEndedWithoutItsEsc) {
    BeConnected();
    Receive("text\x1b[1;3.");
    EXPECT_EQ(fakes::Shown, "text");
    wskTCP_Close();
    EXPECT_EQ(fakes::Shown, "text[1;3\n\nConnection Closed");
    EXPECT_EQ(View(IncomingBuffer), "");
}

TEST_F(CloseEvent, ShowsAllUnfinishedSequencesToTheEnd) {
    BeConnected();
    Append(IncomingBuffer, "\x1b[1\x1b\x1b[2");
    wskTCP_Close();
    EXPECT_EQ(fakes::Shown, "[1[2\n\nConnection Closed");
    EXPECT_EQ(View(IncomingBuffer), "");
}

TEST_F(CloseEvent, WritesItsLineInWhiteAndLeavesTheColour) {
    BeConnected();
    CurrentColour = Rgb(1, 2, 3);
    wskTCP_Close();
    EXPECT_EQ(fakes::Runs.back().Colour, Rgb(255, 255, 255));
    EXPECT_EQ(CurrentColour, Rgb(1, 2, 3));
}

TEST_F(CloseEvent, KeepsTheSessionClocksLastTime) {
    BeConnected();
    tmrLog_Timer();
    wskTCP_Close();
    EXPECT_EQ(Clock(), "00:00:01");
}

class ErrorEvent : public ConnectionTest {};

TEST_F(ErrorEvent, GoesStepByStep) {
    BeConnecting();
    wskTCP_Error(10061, "Connection refused");
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Panel 1 Error: 10061 Connection refused",
                                "Close",
                                "Enable cmdConn",
                                "Disable cmdDisco",
                                "Enable cmdNew",
                                "Enable cmdDel",
                                "Append ffffff \n\nConnection Closed",
                                "CaretToEnd",
                                "Stop tmrLog",
                            }));
}

TEST_F(ErrorEvent, GoesTheSameStepsInMenuModeOnPurpose) {
    ToolbarVisible = false;
    BeConnecting();
    wskTCP_Error(11001, "Host not found");
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Panel 1 Error: 11001 Host not found",
                                "Close",
                                "Enable cmdConn",
                                "Disable cmdDisco",
                                "Enable cmdNew",
                                "Enable cmdDel",
                                "Append ffffff \n\nConnection Closed",
                                "CaretToEnd",
                                "Stop tmrLog",
                            }));
}

TEST_F(ErrorEvent, LeavesConnectedTheChooserAndTheOtherTimersOnPurpose) {
    BeConnecting();
    BeConnected();
    tmrConnect.Enabled = true;
    wskTCP_Error(10054, "Connection reset");
    EXPECT_TRUE(Connected);
    EXPECT_FALSE(fakes::Enabled.contains(FrameControl::cboMud));
    EXPECT_TRUE(tmrConnect.Enabled);
    EXPECT_TRUE(tmrIncome.Enabled);
    EXPECT_FALSE(tmrLog.Enabled);
}

TEST_F(ErrorEvent, WhileConnectingLeavesConnectedFalse) {
    BeConnecting();
    wskTCP_Error(10060, "timed out");
    EXPECT_FALSE(Connected);
    EXPECT_TRUE(tmrConnect.Enabled);
}

TEST_F(ErrorEvent, LeavesBufferPendingLineAndColourOnPurpose) {
    BeConnected();
    Receive("half\x1b[0;3.");
    CurrentColour = Rgb(1, 2, 3);
    AtLineStart = true;
    wskTCP_Error(10054, "reset");
    EXPECT_EQ(View(IncomingBuffer), "\x1b[0;3");
    EXPECT_EQ(View(PendingLine), "half");
    EXPECT_EQ(CurrentColour, Rgb(1, 2, 3));
    EXPECT_TRUE(AtLineStart);
}

TEST_F(ErrorEvent, IsSoonReplacedByTheStateTextIsMeant) {
    BeConnecting();
    wskTCP_Error(10061, "refused");
    tmrConnect_Timer();
    EXPECT_EQ(Panel(), "Connection Closed");
}

TEST_F(ErrorEvent, ShowsNoMessageBox) {
    BeConnecting();
    wskTCP_Error(10061, "refused");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(ErrorEvent, ShowsAnyNumberAndDescription) {
    wskTCP_Error(-5, "");
    EXPECT_EQ(Panel(), "Error: -5 ");
}

class Disconnecting : public ConnectionTest {};

TEST_F(Disconnecting, WithTheToolbarGoesStepByStep) {
    BeConnected();
    DisconnectFromMud();
    EXPECT_EQ(fakes::Calls, (Steps{
                                "Close",
                                "Append ffffff \nConnection Closed\n",
                                "CaretToEnd",
                                "Enable cmdConn",
                                "Disable cmdDisco",
                                "Enable cmdNew",
                                "Enable cmdDel",
                                "Enable cboMud",
                                "Panel 1 ",
                                "Stop tmrLog",
                            }));
}

TEST_F(Disconnecting, WithTheMenuGoesStepByStep) {
    ToolbarVisible = false;
    BeConnected();
    DisconnectFromMud();
    const std::map<FrameControl, bool> expected = {{FrameControl::mnuADCmud, true},
                                                   {FrameControl::mnuConnect, true},
                                                   {FrameControl::mnuDisconnect, false}};
    EXPECT_EQ(fakes::Enabled, expected);
    std::erase_if(fakes::Calls, [](const std::string& call) {
        return call.starts_with("Enable ") || call.starts_with("Disable ");
    });
    EXPECT_EQ(fakes::Calls, (Steps{"Close", "Append ffffff \nConnection Closed\n", "CaretToEnd",
                                   "Panel 1 ", "Stop tmrLog"}));
}

TEST_F(Disconnecting, SetsTheMenuBeforeThePanelAndAfterTheOutput) {
    ToolbarVisible = false;
    BeConnected();
    DisconnectFromMud();
    for (const char* step : {"Enable mnuADCmud", "Enable mnuConnect", "Disable mnuDisconnect"}) {
        EXPECT_LT(fakes::PlaceOf("CaretToEnd"), fakes::PlaceOf(step));
        EXPECT_LT(fakes::PlaceOf(step), fakes::PlaceOf("Panel 1 "));
    }
}

TEST_F(Disconnecting, LeavesTheIncomeTimerRunningOnPurpose) {
    BeConnected();
    DisconnectFromMud();
    EXPECT_FALSE(Connected);
    EXPECT_TRUE(tmrIncome.Enabled);
    EXPECT_FALSE(tmrLog.Enabled);
}

TEST_F(Disconnecting, WhileConnectingLeavesTheConnectTimerEnabled) {
    BeConnecting();
    DisconnectFromMud();
    EXPECT_TRUE(tmrConnect.Enabled);
    tmrConnect_Timer();
    EXPECT_EQ(Panel(), "Connection Closed");
}

TEST_F(Disconnecting, AfterAnErrorTellsTheStateOnceMore) {
    BeConnecting();
    fakes::SocketState = SocketClosed;
    wskTCP_Error(10061, "refused");
    tmrConnect_Timer();
    Forget();
    DisconnectFromMud();
    EXPECT_LT(fakes::PlaceOf("Panel 1 "), fakes::PlaceOf("Start tmrConnect 100"));
    tmrConnect_Timer();
    EXPECT_EQ(Panel(), "Connection Closed");
}

TEST_F(Disconnecting, WhenNoConnectionWasTriedStartsNoTimer) {
    DisconnectFromMud();
    EXPECT_EQ(std::count(fakes::Calls.begin(), fakes::Calls.end(), "Start tmrConnect 100"), 0);
}

TEST_F(Disconnecting, LeavesBufferPendingLineAndColourOnPurpose) {
    BeConnected();
    Receive("half\x1b[0;3.");
    CurrentColour = Rgb(1, 2, 3);
    AtLineStart = true;
    DisconnectFromMud();
    EXPECT_EQ(View(IncomingBuffer), "\x1b[0;3");
    EXPECT_EQ(View(PendingLine), "half");
    EXPECT_EQ(CurrentColour, Rgb(1, 2, 3));
    EXPECT_TRUE(AtLineStart);
    EXPECT_EQ(fakes::Shown, "half\nConnection Closed\n");
}

TEST_F(Disconnecting, WithoutAConnectionDoesTheSame) {
    DisconnectFromMud();
    EXPECT_EQ(fakes::Calls.front(), "Close");
    EXPECT_EQ(fakes::Shown, "\nConnection Closed\n");
}

class Reconnecting : public ConnectionTest {};

TEST_F(Reconnecting, AfterADisconnectGoesTheSameSteps) {
    Choose(0);
    ConnectToMud();
    const Steps first = fakes::Calls;
    fakes::SocketState = SocketConnected;
    wskTCP_Connect();
    DisconnectFromMud();
    Forget();
    ConnectToMud();
    EXPECT_EQ(fakes::Calls, first);
}

TEST_F(Reconnecting, NeverHappensByItself) {
    BeConnected();
    wskTCP_Close();
    wskTCP_Error(10054, "reset");
    DisconnectFromMud();
    tmrConnect_Timer();
    tmrIncome_Timer();
    for (const std::string& call : fakes::Calls)
        EXPECT_FALSE(call.starts_with("Connect ")) << call;
}

class StatusLines : public ConnectionTest {};

TEST_F(StatusLines, GoNeitherToTheTriggersNorToThePendingLine) {
    Edit(CurrentSet().Triggers)[0] = {"Connection", "oh"};
    BeConnected();
    DisconnectFromMud();
    wskTCP_Close();
    ConnectToMud();
    EXPECT_TRUE(fakes::Sends.empty());
    EXPECT_EQ(View(PendingLine), "");
}

TEST_F(StatusLines, TrimNothingAndLeaveTheCommandLineAlone) {
    fakes::Shown.assign(20000, 'x');
    fakes::Input = "typed";
    fakes::SelStart = 2;
    DisconnectFromMud();
    EXPECT_EQ(fakes::Shown.size(), 20000 + std::string("\nConnection Closed\n").size());
    EXPECT_EQ(fakes::SelStart, 2u);
}

class OutputWindow : public ConnectionTest {};

TEST_F(OutputWindow, BroughtBackTellsToReconnectInWhite) {
    CurrentColour = Rgb(1, 2, 3);
    GameW_Click();
    EXPECT_EQ(fakes::Calls,
              (Steps{"ShowOutputWindow", "Append ffffff You will have to Reconnect to a Mud",
                     "CaretToEnd"}));
}

TEST_F(OutputWindow, ClosedTakesTheConnectionWithItWithoutAWord) {
    BeConnected();
    tmrConnect.Enabled = true;
    frmOutput_Unload();
    EXPECT_FALSE(Connected);
    EXPECT_FALSE(tmrConnect.Enabled || tmrIncome.Enabled || tmrLog.Enabled);
    EXPECT_EQ(fakes::SocketState, SocketClosed);
    EXPECT_EQ(fakes::Calls.front(), "Close");
    EXPECT_TRUE(fakes::Runs.empty());
    EXPECT_TRUE(fakes::Enabled[FrameControl::cmdConn]);
    EXPECT_FALSE(fakes::Enabled[FrameControl::cmdDisco]);
    EXPECT_TRUE(fakes::Enabled[FrameControl::cboMud]);
}

TEST_F(OutputWindow, ClosedInMenuModeSetsTheMenu) {
    ToolbarVisible = false;
    BeConnected();
    frmOutput_Unload();
    EXPECT_TRUE(fakes::Enabled[FrameControl::mnuConnect]);
    EXPECT_FALSE(fakes::Enabled[FrameControl::mnuDisconnect]);
    EXPECT_FALSE(fakes::Enabled.contains(FrameControl::cmdConn));
}

TEST_F(OutputWindow, ClosedGoesStepByStep) {
    BeConnected();
    frmOutput_Unload();
    EXPECT_EQ(fakes::Calls, (Steps{"Close", "Enable cmdConn", "Disable cmdDisco", "Enable cmdNew",
                                   "Enable cmdDel", "Enable cboMud", "Panel 1 ", "Stop tmrConnect",
                                   "Stop tmrLog"}));
}

TEST_F(OutputWindow, ClosedKeepsTheFramesPlaceFirst) {
    fakes::Place = {10, 20, 640, 480};
    fakes::State = WindowState::Maximised;
    std::string keptThen;
    fakes::OnCall = [&keptThen](const std::string& call) {
        if (call == "Close")
            keptThen = ReadSetting("MwClient", "Windows", "gHeight", "absent");
    };
    frmOutput_Unload();
    EXPECT_EQ(keptThen, "480");
    EXPECT_EQ(ReadSetting("MwClient", "Windows", "gTop", ""), "20");
    EXPECT_EQ(ReadSetting("MwClient", "Windows", "gLeft", ""), "10");
    EXPECT_EQ(ReadSetting("MwClient", "Windows", "gWidth", ""), "640");
    EXPECT_EQ(fakes::UserSettings["MwClient/Windows/gWinState"], "2");
}

TEST_F(OutputWindow, ClosedInAMinimisedFrameKeepsNoPlace) {
    fakes::State = WindowState::Minimised;
    frmOutput_Unload();
    EXPECT_TRUE(fakes::Registry.empty());
    EXPECT_EQ(fakes::UserSettings["MwClient/Windows/gWinState"], "1");
}

TEST_F(OutputWindow, ClosedWithoutAStoreStillClosesTheConnection) {
    BeConnected();
    fakes::CreateCode = 5;
    frmOutput_Unload();
    EXPECT_FALSE(Connected);
    EXPECT_EQ(fakes::SocketState, SocketClosed);
    EXPECT_EQ(fakes::Panels[2],
              "Settings could not be kept: Could not open/create registry section");
    EXPECT_TRUE(fakes::Messages.empty());
}

} // namespace
} // namespace mw
