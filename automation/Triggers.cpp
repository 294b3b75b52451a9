#include "automation/Triggers.h"

#include "automation/Macros.h"
#include "automation/TriggerMatcher.h"
#include "base/Error.h"
#include "net/Send.h"
#include "ui/MessageBox.h"

#include <algorithm>

namespace mw {
namespace {

// The matcher of the table that was checked last.
const TriggerMatcher& MatcherOf(const TriggerTable& table) {
    static TriggerMatcher matcher;
    static std::uint64_t version = 0; // a table that was never edited has nothing to match
    if (table.Version() != version) {
        matcher = BuildMatcher(table.Entries());
        version = table.Version();
    }
    return matcher;
}

// The check as a plain loop, from an entry on, for a reaction that has changed the table meanwhile.
// A guard: no port calls back, so none can.
void CheckFrom(std::size_t first, std::size_t set, const std::string& line) {
    for (std::size_t i = first; i < MacroSets.at(set).Triggers.Entries().size(); ++i) {
        const TriggerEntry entry = MacroSets[set].Triggers.Entries()[i];
        if (line.find(entry.Trigger) != std::string::npos)
            SendLine(entry.React);
    }
}

bool HasTexts(const std::string& trigger, const std::string& react) {
    if (trigger.empty())
        ShowMessage("No trigger entered");
    else if (react.empty())
        ShowMessage("No action entered");
    return !trigger.empty() && !react.empty();
}

TriggerEntry EntryOf(const std::string& trigger, std::string react) {
    std::replace(react.begin(), react.end(), '~', '-');
    return {trigger, react};
}

void CheckIndex(std::int16_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= CurrentSet().Triggers.Entries().size())
        Raise(SubscriptOutOfRange, "Triggers");
}

} // namespace

void CheckTriggers(std::string_view line) {
    const TriggerTable& table = CurrentSet().Triggers;
    if (line.empty() || table.Entries()[0].Trigger.empty())
        return;
    const auto set = static_cast<std::size_t>(CurrentMacroSet);
    const std::uint64_t version = table.Version();
    for (const std::size_t index : MatchesIn(MatcherOf(table), line)) {
        const std::string react = MacroSets[set].Triggers.Entries()[index].React;
        SendLine(react);
        if (MacroSets.at(set).Triggers.Version() != version)
            return CheckFrom(index + 1, set, std::string(line));
    }
}

bool AddTrigger(const std::string& trigger, const std::string& react) {
    if (!HasTexts(trigger, react))
        return false;
    std::vector<TriggerEntry>& entries = Edit(CurrentSet().Triggers);
    if (entries.back().Trigger.empty())
        entries.pop_back();
    NextIndex(entries.size());
    entries.push_back(EntryOf(trigger, react));
    return true;
}

bool ChangeTrigger(std::int16_t index, const std::string& trigger, const std::string& react) {
    CheckIndex(index);
    if (!HasTexts(trigger, react))
        return false;
    Edit(CurrentSet().Triggers)[static_cast<std::size_t>(index)] = EntryOf(trigger, react);
    return true;
}

void DeleteTrigger(std::int16_t index) {
    CheckIndex(index);
    std::vector<TriggerEntry>& entries = Edit(CurrentSet().Triggers);
    entries.erase(entries.begin() + index);
    if (entries.empty())
        entries.resize(1);
}

} // namespace mw
