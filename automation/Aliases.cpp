#include "automation/Aliases.h"

#include <algorithm>

namespace mw {

std::string ExpandAlias(const std::vector<AliasEntry>& aliases, std::string_view line) {
    const auto found = std::find_if(aliases.begin(), aliases.end(), [line](const AliasEntry& a) {
        return a.IsEnabled && !line.empty() && line.starts_with(a.Alias);
    });
    if (found == aliases.end())
        return std::string(line);
    return found->Replace + std::string(line.substr(found->Alias.size()));
}

std::string ExpandAlias(std::string_view line) { return ExpandAlias(CurrentSet().Aliases, line); }

} // namespace mw
