// The mud list: the player's address book of games, which of them is chosen, and the file
// Data\muds.lst that keeps them (docs/formats.md).
//
// Entry 0 is the maker's own game. The choosers show the list in its order, so that a row is an
// index. The connection takes name, address and port of the chosen entry; SndW and SndD govern
// its sounds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

struct MudEntry {
    std::string Name;
    std::string Address;
    std::int16_t Port = 0;
    bool Msp = false;  // meant: only opens the other switches in the sound options
    bool SndW = false; // waves and, on purpose, music may be played
    bool SndM = false; // meant: governs nothing
    bool SndD = false; // missing sounds may be downloaded

    bool operator==(const MudEntry&) const = default;
};

// The list with its one built-in entry.
std::vector<MudEntry> DefaultMudList();

inline std::vector<MudEntry> MudList = DefaultMudList();
inline std::int16_t CurrentMud = 0; // index of the chosen entry; may lie outside the list

// The entry at index. Raises Subscript out of range when there is none.
const MudEntry& MudAt(std::int16_t index);

// The file's text for muds.
std::string FormatMudList(const std::vector<MudEntry>& muds);

// Reads text over muds and returns the result. A first record that is not the maker's goes to entry
// 1. A line where a record or the end should stand shows two messages and raises EndProgram. Raises
// Overflow for a port or a number of records beyond 16 bits, Type mismatch for a port or a switch
// that is none, Input past end of file when a record is cut off or the text is empty. The last line
// is never looked at.
std::vector<MudEntry> ParseMudList(std::string_view text, std::vector<MudEntry> muds);

// Reads the file into MudList, or writes it from there when there is none. Raises what ReadFile and
// ParseMudList raise; the list is as it was then.
void LoadMudList();

// Writes the file. Failures are silent.
void SaveMudList();

// Makes the folder of the game called name, with its "sounds", when it is not there. A name that
// can't be a folder of ours gets none. Raises Path/File access error when it can't be made.
void MakeGameFolders(const std::string& name);

// The built-in entry alone, and chosen. Used at start and by tests.
void ResetMudList();

} // namespace mw
