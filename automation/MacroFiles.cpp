#include "automation/MacroFiles.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "config/FileHandler.h"
#include "ui/MessageBox.h"

#include <algorithm>
#include <array>

namespace mw {
namespace {

struct KeyWord {
    std::string_view Word;
    KeyTable MacroSet::*Table;
};

// In the order in which the writer goes through them for each key code.
constexpr std::array<KeyWord, 4> kKeyWords = {{
    {"AltKey", &MacroSet::AltKey},
    {"CTRLkey", &MacroSet::CtrlKey},
    {"NormKey", &MacroSet::NormKey},
    {"ShiftKey", &MacroSet::ShiftKey},
}};

std::int16_t ReadKeyIndex(std::string_view keyWord, const std::string& line) {
    const std::size_t equals = line.find('=');
    const std::string code = equals == std::string::npos
                                 ? std::string()
                                 : line.substr(keyWord.size(), equals - keyWord.size());
    if (!IsNumeric(code)) {
        ShowMessage("An Error has occured loading the macros");
        ShowMessage("GetArrayPoint " + ShownLine(code));
        ShowMessage("Error Point \r\n" + ShownLine(line) + "\r\n");
        throw EndProgram{};
    }
    return ToInt16(code);
}

std::int16_t ReadTriggerIndex(const std::string& line) {
    const std::string value = ValueAfterEquals(line);
    if (IsNumeric(value))
        return ToInt16(value);
    ShowMessage("An error has occured loading a trigger value");
    ShowMessage(ShownLine(line));
    ShowMessage(ShownLine(value));
    return 0;
}

// The entry at index; the table grows to hold it and never shrinks.
template <typename Entry> Entry& EntryAt(std::vector<Entry>& table, std::int16_t index) {
    if (index < 0)
        Raise(SubscriptOutOfRange, "EntryAt");
    const auto position = static_cast<std::size_t>(index);
    table.resize(std::max(table.size(), position + 1));
    return table[position];
}

void ReadAlias(LineReader& reader, MacroSet& set) {
    AliasEntry& entry = EntryAt(set.Aliases, ReadTriggerIndex(ReadLine(reader)));
    entry.Alias = ValueAfterEquals(ReadLine(reader));
    entry.Replace = ValueAfterEquals(ReadLine(reader));
    entry.IsEnabled = ToBoolean(ValueAfterEquals(ReadLine(reader)));
}

void ReadTrigger(LineReader& reader, MacroSet& set) {
    TriggerEntry& entry = EntryAt(Edit(set.Triggers), ReadTriggerIndex(ReadLine(reader)));
    entry.Trigger = ValueAfterEquals(ReadLine(reader));
    ReadReaction(reader); // meant: what is read is not stored, the entry keeps its reaction
}

[[noreturn]] void RefuseLine(const MacroSet& set, const std::string& line) {
    ShowMessage("An error has occured in loading a macroset");
    ShowMessage("Macroset " + set.Name);
    ShowMessage("Curreadline " + ShownLine(line));
    throw EndProgram{};
}

void ReadItem(LineReader& reader, const std::string& line, MacroSet& set) {
    const auto* const key =
        std::find_if(kKeyWords.begin(), kKeyWords.end(),
                     [&line](const KeyWord& k) { return line.starts_with(k.Word); });
    if (key != kKeyWords.end())
        SetKeyText(set.*(key->Table), ReadKeyIndex(key->Word, line), ValueAfterEquals(line));
    else if (line.starts_with("[Alias]"))
        ReadAlias(reader, set);
    else if (line.starts_with("[Trigger]"))
        ReadTrigger(reader, set);
    else
        RefuseLine(set, line);
}

void AppendKeys(std::string& text, const MacroSet& set) {
    for (std::int16_t code = 0; code <= 255; ++code) {
        for (const KeyWord& key : kKeyWords) {
            const std::string& macro = KeyText(set.*(key.Table), code);
            if (!macro.empty())
                AppendLine(text, std::string(key.Word) + std::to_string(code) + "=" + macro);
        }
    }
}

void AppendTriggers(std::string& text, const std::vector<TriggerEntry>& triggers) {
    for (std::size_t i = 0; i < triggers.size(); ++i) {
        if (triggers[i].Trigger.empty())
            continue;
        AppendLine(text, "[Trigger]");
        AppendLine(text, "Value=" + std::to_string(i));
        AppendLine(text, "Trigger=" + triggers[i].Trigger);
        AppendLine(text, "React=" + triggers[i].React);
        AppendLine(text, "~");
    }
}

void AppendAliases(std::string& text, const std::vector<AliasEntry>& aliases) {
    for (std::size_t i = 0; i < aliases.size(); ++i) {
        if (aliases[i].Alias.empty())
            continue;
        AppendLine(text, "[Alias]");
        AppendLine(text, "Value=" + std::to_string(i));
        AppendLine(text, "Alias=" + aliases[i].Alias);
        AppendLine(text, "Replace=" + aliases[i].Replace);
        AppendLine(text, "IsEnabled=" + std::string(BooleanText(aliases[i].IsEnabled)));
    }
}

} // namespace

std::string FormatMacroSet(const MacroSet& set) {
    std::string text;
    AppendKeys(text, set);
    AppendTriggers(text, set.Triggers.Entries());
    AppendAliases(text, set.Aliases);
    AppendLine(text, "[End]");
    return text;
}

MacroSet ParseMacroSet(std::string_view text, MacroSet set) {
    LineReader reader{text};
    std::string line = ReadLine(reader);
    while (!AtEnd(reader) && !line.starts_with("[End]")) {
        ReadItem(reader, line, set);
        line = ReadLine(reader);
    }
    return set;
}

std::string ReadReaction(LineReader& reader) {
    std::string joined;
    for (std::string line = ReadLine(reader); !line.starts_with('~'); line = ReadLine(reader))
        joined += line;
    return joined;
}

std::size_t LoadMacroSet(const std::string& name, std::int16_t index) {
    if (!IsFileName(name))
        return 0;
    if (IsAbsent(MacroFileName(name))) {
        SaveMacroSet(name, index);
        return 0;
    }
    const auto position = static_cast<std::size_t>(index);
    const std::string text = ReadFile(MacroFileName(name));
    MacroSets.at(position) = ParseMacroSet(text, MacroSets.at(position));
    return text.size();
}

void SaveMacroSet(const std::string& name, std::int16_t index) {
    if (IsFileName(name))
        WriteFile(MacroFileName(name),
                  FormatMacroSet(MacroSets.at(static_cast<std::size_t>(index))));
}

void LoadAllMacroSets() {
    std::size_t entries = 0;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < MacroSets.size(); ++i) {
        CurrentMacroSet = static_cast<std::int16_t>(i);
        bytes += LoadMacroSet(MacroSets[i].Name, CurrentMacroSet);
        entries += MacroSets[i].Triggers.Entries().size() + MacroSets[i].Aliases.size();
        if (entries > kMostEntries || bytes > kMostBytes)
            Raise(Overflow, "LoadAllMacroSets");
    }
    CurrentMacroSet = 0;
}

void SaveAllMacroSets() {
    for (std::size_t i = 0; i < MacroSets.size(); ++i)
        SaveMacroSet(MacroSets[i].Name, static_cast<std::int16_t>(i));
}

} // namespace mw
