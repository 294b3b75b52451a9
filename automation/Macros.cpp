#include "automation/Macros.h"

#include "base/Error.h"

namespace mw {
namespace {

std::uint8_t KeyIndex(std::int16_t code) {
    if (code < 0 || code > 255)
        Raise(SubscriptOutOfRange, "KeyTable");
    return static_cast<std::uint8_t>(code);
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

void ResetMacros() {
    MacroSets = OneMacroSet("Default");
    CurrentMacroSet = 0;
}

} // namespace mw
