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

// Opens a connection to the entry of MudList at CurrentMud, makes the game's folder, and sets the
// controls. Raises Subscript out of range for an index outside the list, Path/File access error
// when the folder can't be made, 40020 when the socket is not closed; what came before stays done.
void ConnectToMud();

// Closes the connection at the player's request.
void DisconnectFromMud();

// What the socket is doing, for the status bar. Empty for a state that it does not have. Raises
// Subscript out of range when a text needs the game's name and CurrentMud is outside the list.
std::string ConnectionStateText();

void wskTCP_Connect();
// Raises Overflow, with nothing sent or kept, when more than 32,767 bytes arrive at once.
void wskTCP_DataArrival();
void wskTCP_Close();
void wskTCP_Error(std::int32_t number, std::string_view description);

void tmrConnect_Timer();
void tmrIncome_Timer();
void tmrLog_Timer();

// The output window is being closed: the frame's placement is kept, and the connection goes without
// a word.
void frmOutput_Unload();

// Menu "Game Window": brings the output window back.
void GameW_Click();

// The state at program start. Used by tests.
void ResetConnection();

} // namespace mw
