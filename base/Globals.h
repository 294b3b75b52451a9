// Flags and texts of the shell and the command line that several modules share.
//
// Only what no single module owns stands here: the menus, the command line, the configuration and
// the setup dialog write these values, and the terminal and the automation read them.
#pragma once

#include <string>

namespace mw {

inline bool ToolbarVisible = true; // the toolbar is shown, else the Mud menu
inline bool KeepSentText = false;  // a sent line stays in the command line
inline bool EchoOn = false;        // a sent line is shown in the output

// The command separator: where it stands in a line that is sent, a CR goes out. Usually one
// character; a text of none or several separates nothing.
inline std::string EscapeChar = ";";

// Keys that are held down, as the command line and the output window saw them. ShiftDown is kept
// for symmetry; nothing reads it.
inline bool CtrlDown = false;
inline bool AltDown = false;
inline bool ShiftDown = false;

inline bool SwallowKeyPress = false; // the character of the key just pressed is to be discarded
inline bool LastKeyWasEnter = false; // the last key in the command line sent a line

// Font of new output, as texts: the settings store keeps them so.
inline std::string OutputFontName = "Courier";
inline std::string OutputFontSize = "10";

// Puts every value above back to what it is at start. Used by tests.
void ResetGlobals();

} // namespace mw
