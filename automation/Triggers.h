// Triggers: the client's own answers to lines of the output.
//
// The output calls CheckTriggers once for each completed line, the server's and the client's own;
// the editor frmTrigger changes the table of the current macro set (automation/Macros.h) in place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

// Sends the reaction of every trigger of the current set whose text occurs in line, in the order of
// the table. An entry 0 without a text switches all of them off. Reactions are sent as stored: no
// aliases, no echo, and no guard against loops. Raises Subscript out of range when there is no
// current set.
void CheckTriggers(std::string_view line);

// The editor's operations, on the current set's table. They raise Subscript out of range for an
// index outside it, or when there is no current set.

// Adds an entry at the end, in place of a last one without a text. A "~" in the reaction becomes
// "-": in the file it would end the reaction. False after a message when a text is empty. Raises
// Overflow when the table is full.
bool AddTrigger(const std::string& trigger, const std::string& react);

// Stores over an entry, by the same rules.
bool ChangeTrigger(std::int16_t index, const std::string& trigger, const std::string& react);

// Removes an entry and closes the gap. The last one leaves an empty entry 0.
void DeleteTrigger(std::int16_t index);

} // namespace mw
