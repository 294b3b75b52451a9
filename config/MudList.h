// The mud list: the player's address book of games, and which of them is chosen.
//
// Entry 0 is the maker's own game. The choosers show the list in its order, so that a row is an
// index. The connection takes name, address and port of the chosen entry; the sound switches
// govern its sounds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mw {

struct MudEntry {
    std::string Name;
    std::string Address;
    std::int16_t Port = 0;
    bool Msp = false;  // sound triggers are honoured
    bool SndW = false; // waves may be played
    bool SndM = false; // music may be played
    bool SndD = false; // missing sounds may be downloaded

    bool operator==(const MudEntry&) const = default;
};

// The list with its one built-in entry.
std::vector<MudEntry> DefaultMudList();

inline std::vector<MudEntry> MudList = DefaultMudList();
inline std::int16_t CurrentMud = 0; // index of the chosen entry; may lie outside the list

// The entry at index. Raises Subscript out of range when there is none.
const MudEntry& MudAt(std::int16_t index);

// The built-in entry alone, and chosen. Used at start and by tests.
void ResetMudList();

} // namespace mw
