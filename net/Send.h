// Sending to the game.
//
// The command line, triggers and macro keys send lines through here; connecting and receiving are
// Connection's business.
#pragma once

#include <cstdint>
#include <string_view>

namespace mw {

inline std::int16_t LastSentChar = 0; // code of the character that SendChar sent last

// Sends one character, code 0 to 255, when the socket is connected; else does nothing.
void SendChar(std::int16_t code);

// Sends a command line: each character by itself, a CR in place of each EscapeChar, and a CR at the
// end. The CRs are handed to the socket whatever its state; it drops them unless connected.
void SendLine(std::string_view text);

} // namespace mw
