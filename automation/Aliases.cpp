#include "automation/Aliases.h"

#include "base/Error.h"
#include "ui/MessageBox.h"

#include <algorithm>

namespace mw {
namespace {

AliasEntry& AliasAt(std::int16_t index) {
    std::vector<AliasEntry>& aliases = CurrentSet().Aliases;
    if (index < 0 || static_cast<std::size_t>(index) >= aliases.size())
        Raise(SubscriptOutOfRange, "Aliases");
    return aliases[static_cast<std::size_t>(index)];
}

bool HasAlias(const std::string& alias) {
    if (alias.empty())
        ShowMessage("There is no alias");
    return !alias.empty();
}

} // namespace

std::string ExpandAlias(const std::vector<AliasEntry>& aliases, std::string_view line) {
    const auto found = std::find_if(aliases.begin(), aliases.end(), [line](const AliasEntry& a) {
        return a.IsEnabled && !line.empty() && line.starts_with(a.Alias);
    });
    if (found == aliases.end())
        return std::string(line);
    return found->Replace + std::string(line.substr(found->Alias.size()));
}

std::string ExpandAlias(std::string_view line) { return ExpandAlias(CurrentSet().Aliases, line); }

std::vector<std::int16_t> ListedAliases() {
    const std::vector<AliasEntry>& aliases = CurrentSet().Aliases;
    std::vector<std::int16_t> listed;
    for (std::size_t i = 0; i < aliases.size(); ++i) {
        if (!aliases[i].Alias.empty())
            listed.push_back(static_cast<std::int16_t>(i));
    }
    return listed;
}

std::int16_t AddAlias(const std::string& alias, const std::string& replace) {
    if (!HasAlias(alias))
        return -1;
    std::vector<AliasEntry>& aliases = CurrentSet().Aliases;
    if (aliases.back().Alias.empty())
        aliases.pop_back();
    const std::int16_t index = NextIndex(aliases.size());
    aliases.push_back({alias, replace, true});
    return index;
}

bool ChangeAlias(std::int16_t index, const std::string& alias, const std::string& replace) {
    AliasEntry& entry = AliasAt(index);
    if (!HasAlias(alias))
        return false;
    entry.Alias = alias;
    entry.Replace = replace;
    return true;
}

void EnableAlias(std::int16_t index, bool enabled) { AliasAt(index).IsEnabled = enabled; }

void DeleteAlias(std::int16_t index) {
    AliasAt(index);
    std::vector<AliasEntry>& aliases = CurrentSet().Aliases;
    aliases.erase(aliases.begin() + index);
    // Meant: only the two texts of the others survive a deletion.
    for (AliasEntry& entry : aliases)
        entry.IsEnabled = false;
    if (aliases.empty())
        aliases.resize(1);
}

} // namespace mw
