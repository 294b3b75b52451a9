#include "net/Connection.h"

#include "app/Placement.h"
#include "automation/Macros.h"
#include "base/Globals.h"
#include "config/MudList.h"
#include "net/Telnet.h"
#include "terminal/AutoLog.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"
#include "ui/FrameControls.h"
#include "ui/InputControls.h"
#include "ui/OutputControls.h"
#include "ui/Socket.h"
#include "ui/Timers.h"

#include <cstdio>

namespace mw {
namespace {

void Panel(std::string_view text) { stsBar::SetPanel(stsBar::StatePanel, text); }

void SetButtons(bool connected) {
    SetEnabled(FrameControl::cmdConn, !connected);
    SetEnabled(FrameControl::cmdDisco, connected);
    SetEnabled(FrameControl::cmdNew, !connected);
    SetEnabled(FrameControl::cmdDel, !connected);
}

// Only the controls that are shown follow the connection: the toolbar's or the Mud menu's.
void SetControls(bool connected) {
    if (ToolbarVisible) {
        SetButtons(connected);
        SetEnabled(FrameControl::cboMud, !connected);
    } else {
        SetEnabled(FrameControl::mnuConnect, !connected);
        SetEnabled(FrameControl::mnuADCmud, !connected);
        SetEnabled(FrameControl::mnuDisconnect, connected);
    }
}

void StopSessionClock() {
    tmrLog.Enabled = false;
    StopTimer(Timer::Log);
}

void StopConnectTimer() {
    tmrConnect.Enabled = false;
    StopTimer(Timer::Connect);
}

void ShowSessionClock() {
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", SessionHours, SessionMinutes,
                  SessionSeconds);
    stsBar::SetPanel(stsBar::ClockPanel, text);
}

} // namespace

void ConnectToMud() {
    SetControls(true);
    const MudEntry mud = MudAt(CurrentMud);
    MakeGameFolders(mud.Name);
    ShowOutputWindow(); // the socket is its own, and gone when it was closed
    wskTCP::Connect(mud.Address, mud.Port);
    tmrConnect.Enabled = true;
    StartTimer(Timer::Connect, tmrConnect.Interval);
    AppendStatus("\n"
                 "Attempting connection to: " +
                 mud.Name);
    // Meant: the name shown is that of the entry at the macro set's index, not the chosen game's.
    Panel("Attempting connection to " + MudAt(CurrentMacroSet).Name);
    rtfOutPut::MoveCaretToEnd();
    cboInput::SetFocus();
}

void DisconnectFromMud() {
    wskTCP::Close();
    Connected = false;
    AppendStatus("\nConnection Closed\n");
    SetControls(false);
    Panel("");
    StopSessionClock();
    if (tmrConnect.Enabled) // the panel tells the socket's state again
        StartTimer(Timer::Connect, tmrConnect.Interval);
}

std::string ConnectionStateText() {
    const auto name = [] { return MudAt(CurrentMud).Name; };
    switch (wskTCP::State()) {
    case SocketClosed:
        return "Connection Closed";
    case SocketOpen:
        return "Connection Open";
    case SocketListening:
        return "Listening";
    case SocketPending:
        return "Connection to " + name() + " pending";
    case SocketResolving:
        return "Resolving host for " + name();
    case SocketResolved:
        return "Host Resolved";
    case SocketConnecting:
        return "Connecting to " + name();
    case SocketConnected:
        return "Connected to " + name();
    case SocketClosing:
        return "Connection Closed by " + name();
    case SocketError:
        return "Error";
    default:
        return "";
    }
}

void wskTCP_Connect() {
    StopConnectTimer();
    Connected = true;
    Panel("Connected to: " + cboMud::Text());
    SessionSeconds = SessionMinutes = SessionHours = 0;
    ShowSessionClock();
    tmrLog.Enabled = true;
    StartTimer(Timer::Log, tmrLog.Interval);
    tmrIncome.Enabled = true;
    if (AutoLogOn)
        OpenLog();
}

void wskTCP_DataArrival() {
    Append(IncomingBuffer, ScanTelnet(wskTCP::GetData(), wskTCP::SendData));
    ProcessIncoming();
}

void wskTCP_Close() {
    StopConnectTimer();
    tmrIncome.Enabled = false;
    FinishIncoming();
    AppendStatus("\n\nConnection Closed");
    Connected = false;
    CloseLog();
    SetButtons(false);
    Panel("");
    SetEnabled(FrameControl::cboMud, true);
    StopSessionClock();
    wskTCP::Close();
}

// Meant: Connected, the chooser, the log and tmrConnect stay as they are, unlike at a close, so
// that the state text soon replaces the error's.
void wskTCP_Error(std::int32_t number, std::string_view description) {
    Panel("Error: " + std::to_string(number) + " " + std::string(description));
    wskTCP::Close();
    SetButtons(false);
    AppendStatus("\n\nConnection Closed");
    StopSessionClock();
}

void tmrConnect_Timer() {
    Panel(ConnectionStateText());
    // A closed socket's text stays until ConnectToMud or DisconnectFromMud starts the timer again.
    if (wskTCP::State() == SocketClosed)
        StopTimer(Timer::Connect);
}

// Meant: the tick does nothing about text that waits, which is why the platform's timer under it
// never runs.
void tmrIncome_Timer() {}

void tmrLog_Timer() {
    const bool full = SessionHours == 255 && SessionMinutes == 59 && SessionSeconds == 59;
    if (!full && ++SessionSeconds == 60) {
        SessionSeconds = 0;
        if (++SessionMinutes == 60) {
            SessionMinutes = 0;
            ++SessionHours;
        }
    }
    ShowSessionClock();
}

void frmOutput_Unload() {
    KeepPlacement();
    wskTCP::Close();
    Connected = false;
    SetControls(false);
    Panel("");
    StopConnectTimer();
    tmrIncome.Enabled = false;
    StopSessionClock();
}

void GameW_Click() {
    ShowOutputWindow();
    AppendStatus("You will have to Reconnect to a Mud");
}

void ResetConnection() {
    Connected = false;
    tmrConnect = {100};
    tmrIncome = {1};
    tmrLog = {1000};
    SessionSeconds = SessionMinutes = SessionHours = 0;
}

} // namespace mw
