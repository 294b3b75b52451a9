// Aliases: a short text at the start of a typed line stands for a longer one.
//
// The command line expands each line it sends; the editor frmAlias changes the table of the current
// macro set (automation/Macros.h) in place.
#pragma once

#include "automation/Macros.h"

#include <string>
#include <string_view>
#include <vector>

namespace mw {

// line with the first enabled alias that it begins with replaced, once; line itself when none
// applies. Letter case counts, the end of a word does not: the alias "n" also rewrites "north".
std::string ExpandAlias(const std::vector<AliasEntry>& aliases, std::string_view line);

// The same with the aliases of the current macro set. Raises Subscript out of range when there is
// no current set.
std::string ExpandAlias(std::string_view line);

// The editor's operations, on the current set's table. Indices are those of the table; all of them
// raise Subscript out of range for one outside it, or when there is no current set.

// Indices of the entries that have an alias, in order: the editor's list shows these. Files may
// leave gaps, so a row is not an index.
std::vector<std::int16_t> ListedAliases();

// Adds an enabled entry at the end, in place of a last one that is empty. Returns its index, -1
// after a message when alias is empty. Raises Overflow when the table is full.
std::int16_t AddAlias(const std::string& alias, const std::string& replace);

// Stores over an entry; whether it is enabled stays. False after a message when alias is empty.
bool ChangeAlias(std::int16_t index, const std::string& alias, const std::string& replace);

void EnableAlias(std::int16_t index, bool enabled);

// Removes an entry. All others are disabled then, on purpose.
void DeleteAlias(std::int16_t index);

} // namespace mw
