// Aliases: a short text at the start of a typed line stands for a longer one.
//
// The command line expands each line it sends. The tables belong to the macro sets
// (automation/Macros.h).
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

} // namespace mw
