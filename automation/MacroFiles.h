// Macro set files: Macros\NAME.mco, one for each macro set (docs/formats.md).
//
// All sets are read once while the program starts, after the configuration has named them, and
// written once when it stops. Reactions of triggers are written and not read back.
#pragma once

#include "automation/Macros.h"
#include "base/Lines.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

// What all sets together may hold, because a few small files can name one set a thousand times over
// and give it an entry 32,767: the triggers and aliases of the 22 sets that the editor makes, and
// the bytes of four of the largest files.
inline constexpr std::size_t kMostEntries = 22 * 2 * 32768;
inline constexpr std::size_t kMostBytes = 64 * 1024 * 1024;

// The file's text for set.
std::string FormatMacroSet(const MacroSet& set);

// Reads text over set and returns the result. A line it does not know, or a key line without a
// numeric code, shows its three messages and raises EndProgram; an entry without a numeric index
// shows three and is read into entry 0. Raises Subscript out of range for a key code outside 0 to
// 255 or an index below 0, Overflow for either beyond 16 bits, Type mismatch for an IsEnabled that
// is none, Input past end of file when a block is cut off or the text is empty. The last line is
// never looked at.
MacroSet ParseMacroSet(std::string_view text, MacroSet set);

// Reads a reaction, whose lines end before one that begins with "~", and joins it without
// separators.
std::string ReadReaction(LineReader& reader);

// Reads the file of name into MacroSets[index], or writes it from there when there is none. Raises
// what ReadFile and ParseMacroSet raise; the set is as it was then. A name that can't be a file
// name has no file. Returns how many bytes were read.
std::size_t LoadMacroSet(const std::string& name, std::int16_t index);

// Writes MacroSets[index] to the file of name. Failures are silent.
void SaveMacroSet(const std::string& name, std::int16_t index);

// All sets, in order. Loading makes each set the current one in turn and leaves set 0 current. It
// raises Overflow beyond kMostEntries or kMostBytes.
void LoadAllMacroSets();
void SaveAllMacroSets();

} // namespace mw
