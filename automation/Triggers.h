// Triggers: the client's own answers to lines of the output.
//
// The output calls CheckTriggers once for each completed line, the server's and the client's own.
// The tables belong to the macro sets (automation/Macros.h).
#pragma once

#include <string_view>

namespace mw {

// Sends the reaction of every trigger of the current set whose text occurs in line, in the order of
// the table. An entry 0 without a text switches all of them off. Reactions are sent as stored: no
// aliases, no echo, and no guard against loops. Raises Subscript out of range when there is no
// current set.
void CheckTriggers(std::string_view line);

} // namespace mw
