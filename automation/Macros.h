// The macro sets: named bundles of key texts, triggers and aliases.
//
// One set is current. Aliases, triggers and the Ctrl and Alt keys are taken from it; the plain keys
// always from set 0. The editors change the tables in place.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace mw {

struct TriggerEntry {
    std::string Trigger; // text looked for in each output line
    std::string React;   // text sent when it is found

    bool operator==(const TriggerEntry&) const = default;
};

// A set's triggers. Changed as a whole or through Edit, and no other way, so that whoever derives
// something from a table can tell by its version whether that still holds.
class TriggerTable {
public:
    TriggerTable() = default;
    TriggerTable(std::vector<TriggerEntry> entries);
    TriggerTable(std::initializer_list<TriggerEntry> entries);

    // Never without an entry 0.
    const std::vector<TriggerEntry>& Entries() const { return Table; }

    // No two tables of different contents bear the same one.
    std::uint64_t Version() const { return Edition; }

    bool operator==(const TriggerTable& other) const { return Table == other.Table; }

private:
    friend std::vector<TriggerEntry>& Edit(TriggerTable& table);

    std::vector<TriggerEntry> Table = std::vector<TriggerEntry>(1);
    std::uint64_t Edition = 0;
};

// The entries, to be changed at once; the table gets a new version.
std::vector<TriggerEntry>& Edit(TriggerTable& table);

struct AliasEntry {
    std::string Alias;   // text that a typed line begins with
    std::string Replace; // text put in its place
    bool IsEnabled = false;

    bool operator==(const AliasEntry&) const = default;
};

// Texts by key code 0 to 255. Only those that are not empty are held: a set has 1,024 keys and
// seldom a dozen texts.
using KeyTable = std::map<std::uint8_t, std::string>;

// The text of a key, empty when it has none. Raises Subscript out of range unless 0 <= code <= 255.
const std::string& KeyText(const KeyTable& table, std::int16_t code);

// Gives a key its text; an empty one clears it. Raises as KeyText does.
void SetKeyText(KeyTable& table, std::int16_t code, const std::string& text);

struct MacroSet {
    std::string Name;
    KeyTable ShiftKey; // kept in the files, never played
    KeyTable AltKey;
    KeyTable CtrlKey;
    KeyTable NormKey;
    TriggerTable Triggers;
    std::vector<AliasEntry> Aliases = std::vector<AliasEntry>(1); // never without an entry 0

    bool operator==(const MacroSet&) const = default;
};

// One empty set of that name.
std::vector<MacroSet> OneMacroSet(const std::string& name);

inline std::vector<MacroSet> MacroSets = OneMacroSet("Default");
inline std::int16_t CurrentMacroSet = 0;

// The set at CurrentMacroSet. Raises Subscript out of range when there is none.
MacroSet& CurrentSet();

// The name of the set chosen last in the macro editor. Nothing reads it.
inline std::string CurrentMacroSetName;

// An index that is one past the last of a table whose indices are 16-bit numbers. Raises Overflow
// when the table is full.
std::int16_t NextIndex(std::size_t size);

// False, after "There is a maximum of 20 macrosets", when no set may be added. Up to 22 may be, on
// purpose.
bool MayAddMacroSet();

// The file of a set, below the application folder.
std::string MacroFileName(const std::string& setName);

// Adds an empty set of that name and makes it the current one. Returns whether a set was added. An
// empty name or a single blank adds nothing. When the name is read back it has lost all up to its
// first "=", on purpose; so one is refused with a message that can't be a file's, or begins with
// "[" as a section does, or would when it is read back; and so is that of another set, whose file
// it would take then or now, and that of a file which no set has.
bool AddMacroSet(const std::string& name);

// Makes a set the current one. Raises Subscript out of range when there is none at index.
void ChooseMacroSet(std::int16_t index);

// Back to the one empty set "Default". Used by tests.
void ResetMacros();

} // namespace mw
