// Choosing, adding and deleting games.
//
// The toolbar's chooser and the dialogs frmConnect and frmAddMud call it. Every change of the list
// is written to its file at once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

// An entry of a chooser was chosen: it is the current game, both choosers select it, and the
// toolbar shows its address and port. Raises Subscript out of range for an index outside the list.
void cboMud_Click(std::int16_t index);

// Adds a game to the end of the list and of the choosers, with its sounds switched off. False, with
// a message and nothing changed, when a text is empty or one blank or the port is no number. Raises
// Overflow, with nothing changed, for a port beyond 16 bits and when the list is full.
bool AddMud(const std::string& name, const std::string& address, const std::string& port);

// Deletes the game selected in the chooser; entry 0 is then the current one. Entry 0 itself is
// refused with a message. The game's folder stays. Raises Subscript out of range, with nothing
// changed, when no game is selected.
void DeleteMud();

// Index of the game called text, or of the one for HOST:PORT, which is added under the name HOST
// when there is none with that address and port. -1 when text is neither. Raises what AddMud and
// MakeGameFolders raise.
std::int16_t FindOrAddMud(std::string_view text);

} // namespace mw
