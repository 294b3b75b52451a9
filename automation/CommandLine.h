// The command line: keys, and Enter above all.
//
// frmInput calls the cboInput handlers; the output window forwards its own keys to the frmOutput
// handlers, so that macros and the keypad work in either window. Key codes are virtual-key codes;
// 0 stands for a key without one.
#pragma once

#include <cstdint>

namespace mw {

inline constexpr std::int16_t kEnterKey = 13;
inline constexpr std::int16_t kShiftKey = 16;
inline constexpr std::int16_t kCtrlKey = 17;
inline constexpr std::int16_t kAltKey = 18;

// A key has gone down. It is offered to the macro keys first, with the modifiers as they were
// before it. Enter sends the line, or refuses with a message when there is no connection. Raises
// what HandleMacroKey, ExpandAlias and AppendOutput raise.
void cboInput_KeyDown(std::int16_t keyCode);

// A character has been typed. It becomes 0 when it is to be discarded.
void cboInput_KeyPress(std::int16_t& character);

// A key has come up.
void cboInput_KeyUp(std::int16_t keyCode);

// The same keys in the output window. Enter means nothing there.
void frmOutput_KeyDown(std::int16_t keyCode);
void frmOutput_KeyPress(std::int16_t& character);
void frmOutput_KeyUp(std::int16_t keyCode);

} // namespace mw
