// Macro keys: one key press sends stored commands.
//
// Function keys, Alt and Ctrl letters play texts of the macro sets; the numeric keypad walks. Every
// key that goes down in the command line or the output window is offered here first.
#pragma once

#include <cstdint>
#include <string_view>

namespace mw {

// The command of a keypad key, by virtual-key code; empty for every other key.
std::string_view KeypadCommand(std::int16_t keyCode);

// True when the key, with the modifiers now held, has a macro. Raises as HandleMacroKey does.
bool HasMacro(std::int16_t keyCode);

// Plays the key's macro: each part that ends in EscapeChar is sent, a last part without it goes
// into the command line. Then sends the keypad command of the key, if it has one, and has the
// key's character swallowed. Raises Subscript out of range unless 0 <= keyCode <= 255, or when the
// macro set it needs is not there.
void HandleMacroKey(std::int16_t keyCode);

} // namespace mw
