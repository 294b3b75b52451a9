// The main frame's behaviour: what loads with it and what its menus and toolbar do.
//
// frmMain shows it and calls the handlers. Connecting is net/Connection.h's.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

inline constexpr int kMajorVersion = QUILLMERE_VERSION_MAJOR;
inline constexpr int kMinorVersion = QUILLMERE_VERSION_MINOR;
inline constexpr int kRevision = QUILLMERE_VERSION_PATCH;

// "Quillmere Mud Client V" and the version.
std::string FrameCaption();

// The frame is about to be shown: the chooser is filled from MudList and the terminal put into its
// start state.
void MDIForm_Load();

// An entry of the chooser was chosen: it is the current game, its address and port are shown.
// Raises Subscript out of range for an index outside the list.
void cboMud_Click(std::int16_t index);

} // namespace mw
