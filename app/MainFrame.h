// The main frame's behaviour: what loads with it, what its menu items do, what its end starts.
//
// frmMain shows it and calls the handlers. Connecting is net/Connection.h's, choosing a game
// config/MudChooser.h's.
#pragma once

#include <string>

namespace mw {

// The game that --connect asks for, by name or as HOST:PORT; empty for none.
inline std::string ConnectAtStart;

// "Quillmere Mud Client V" and the version.
std::string FrameCaption();

// The frame is about to be shown: the chooser is filled from MudList, the terminal put into its
// start state, and toolbar, menu marks and output font are as they were kept. The echo is off,
// whatever was kept. Lets events run between the games.
void MDIForm_Load();

// Connects to the game that ConnectAtStart asks for, which is added if need be. Tells when there is
// none. Raises what FindOrAddMud and ConnectToMud raise.
void ConnectAsAsked();

// Tells that there is no log to start.
void mnuAutoLog_Click();

// Turn the echo, and the keeping of sent text, on or off: flag, mark and setting. A setting that
// can't be kept gives a notice.
void mnuEcho_Click();
void mnuInput_Click();

// Shows the toolbar instead of the Mud menu, or the other way round; fills the chooser anew and
// keeps the choice as a setting.
void mnutoolbar_Click();

// The frame is being closed: the other windows go, the log is closed, and the splash begins to
// save.
void MDIForm_Unload();

} // namespace mw
