#include "automation/Macros.h"

#include "base/Error.h"
#include "config/FileHandler.h"
#include "ui/MessageBox.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace mw {
namespace {

std::uint64_t NewVersion() {
    static std::uint64_t newest = 0;
    return ++newest;
}

std::uint8_t KeyIndex(std::int16_t code) {
    if (code < 0 || code > 255)
        Raise(SubscriptOutOfRange, "KeyTable");
    return static_cast<std::uint8_t>(code);
}

// What is left of a set's name at the last when it is read back, time after time.
std::string_view LastName(std::string_view name) { return name.substr(name.rfind('=') + 1); }

bool CanBeKept(std::string_view name) {
    return IsFileName(name) && IsFileName(LastName(name)) && !name.starts_with('[') &&
           name.find("=[") == std::string_view::npos;
}

} // namespace

const std::string& KeyText(const KeyTable& table, std::int16_t code) {
    static const std::string none;
    const auto found = table.find(KeyIndex(code));
    return found == table.end() ? none : found->second;
}

void SetKeyText(KeyTable& table, std::int16_t code, const std::string& text) {
    if (text.empty())
        table.erase(KeyIndex(code));
    else
        table[KeyIndex(code)] = text;
}

TriggerTable::TriggerTable(std::vector<TriggerEntry> entries)
    : Table(std::move(entries)), Edition(NewVersion()) {}

TriggerTable::TriggerTable(std::initializer_list<TriggerEntry> entries)
    : Table(entries), Edition(NewVersion()) {}

std::vector<TriggerEntry>& Edit(TriggerTable& table) {
    table.Edition = NewVersion();
    return table.Table;
}

std::vector<MacroSet> OneMacroSet(const std::string& name) {
    std::vector<MacroSet> sets(1);
    sets[0].Name = name;
    return sets;
}

MacroSet& CurrentSet() {
    if (CurrentMacroSet < 0 || static_cast<std::size_t>(CurrentMacroSet) >= MacroSets.size())
        Raise(SubscriptOutOfRange, "MacroSets");
    return MacroSets[static_cast<std::size_t>(CurrentMacroSet)];
}

std::int16_t NextIndex(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
        Raise(Overflow, "NextIndex");
    return static_cast<std::int16_t>(size);
}

std::string MacroFileName(const std::string& setName) { return "Macros\\" + setName + ".mco"; }

bool MayAddMacroSet() {
    // Meant: the test lets a 22nd set in although the text says 20.
    constexpr std::size_t kLargestUpperBound = 20;
    if (MacroSets.size() - 1 <= kLargestUpperBound)
        return true;
    ShowMessage("There is a maximum of 20 macrosets");
    return false;
}

bool AddMacroSet(const std::string& name) {
    if (name.empty() || name == " ")
        return false;
    if (!CanBeKept(name)) {
        ShowMessage("This name can't be the name of a file. Please choose another one.");
        return false;
    }
    const auto isTaken = [&name](const MacroSet& set) {
        return LastName(set.Name) == LastName(name);
    };
    if (std::any_of(MacroSets.begin(), MacroSets.end(), isTaken)) {
        ShowMessage("There is a macro set of this name already. Please choose another one.");
        return false;
    }
    if (!IsAbsent(MacroFileName(name))) {
        ShowMessage("There is a file of this name in the folder Macros. Please choose another "
                    "one.");
        return false;
    }
    MacroSets.push_back(OneMacroSet(name)[0]);
    ChooseMacroSet(static_cast<std::int16_t>(MacroSets.size() - 1));
    return true;
}

void ChooseMacroSet(std::int16_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= MacroSets.size())
        Raise(SubscriptOutOfRange, "MacroSets");
    CurrentMacroSet = index;
    CurrentMacroSetName = CurrentSet().Name;
}

void ResetMacros() {
    CurrentMacroSetName.clear();
    MacroSets = OneMacroSet("Default");
    CurrentMacroSet = 0;
}

} // namespace mw
