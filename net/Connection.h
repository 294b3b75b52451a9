// The connection to the chosen game: connecting, the socket's events, disconnecting.
//
// Menus and toolbar call ConnectToMud and DisconnectFromMud; the socket's events and the output
// window's timers call the handlers. Every step is told to the player in the output and in the
// first panel of the status bar, never in a dialog. Sending stands in net/Send.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

// From the Connect event until the server closes or the player disconnects. A socket error leaves
// it as it was, on purpose.
inline bool Connected = false;

// A timer as its owner sees it. The platform's timer runs only while a tick can change something.
struct FormTimer {
    std::int16_t Interval = 0; // milliseconds
    bool Enabled = false;
};

inline FormTimer tmrConnect{100}; // writes the socket's state into the status bar
inline FormTimer tmrIncome{1};    // its tick does nothing
inline FormTimer tmrLog{1000};    // the session clock

// Time since the Connect event. Stands still once 255:59:59 is reached.
inline std::uint8_t SessionSeconds = 0;
inline std::uint8_t SessionMinutes = 0;
inline std::uint8_t SessionHours = 0;

// Opens a connection to the entry of MudList at CurrentMud, makes the game's folder, sets the
// controls, and brings the output window back when it was closed. Raises Subscript out of range for
// an index outside the list, Path/File access error when the folder can't be made, 40020 when the
// socket is not closed; what came before stays done.
void ConnectToMud();

// Closes the connection at the player's request. The log stays open, and tmrConnect, tmrIncome and
// the text that waits stay as they are, on purpose.
void DisconnectFromMud();

// What the socket is doing, for the status bar. Empty for a state that it does not have. Raises
// Subscript out of range when a text needs the game's name and CurrentMud is outside the list.
std::string ConnectionStateText();

// The server has taken the connection: the session clock begins anew, and the log is opened when it
// is on. Raises Path/File access error, with all else done, when it can't be opened.
void wskTCP_Connect();

// Bytes have arrived: telnet commands are answered, the text is walked. Raises Overflow, with
// nothing sent or kept, when more than 32,767 bytes arrive at once, and what ProcessIncoming
// raises.
void wskTCP_DataArrival();

// The server has closed the connection: what still waits is shown, the log is closed, and the
// toolbar is set back. The Mud menu is not, on purpose. Raises what FinishIncoming raises.
void wskTCP_Close();

// The socket has failed; number and description are the platform's. Both are told in the status
// bar, the socket is closed, and the toolbar's buttons are set back.
void wskTCP_Error(std::int32_t number, std::string_view description);

// A tick writes ConnectionStateText into the status bar, and raises what that raises.
void tmrConnect_Timer();

// A tick does nothing, on purpose.
void tmrIncome_Timer();

// A tick moves the session clock on by a second.
void tmrLog_Timer();

// The output window is being closed: the frame's placement is kept, and the connection goes without
// a word.
void frmOutput_Unload();

// Menu "Game Window": brings the output window back.
void GameW_Click();

// The state at program start. Used by tests.
void ResetConnection();

} // namespace mw
