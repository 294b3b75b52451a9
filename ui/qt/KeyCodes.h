// Qt key events as virtual-key codes.
#pragma once

#include <cstdint>

#include <QKeyEvent>

namespace mw {

// The virtual-key code of the key, whatever modifiers are held: letters 65 to 90, F1 to F12 112 to
// 123, keypad digits 96 to 105 (33 to 40 without Num Lock), Enter of either kind 13. Letters of
// another script count by their place, as the Latin ones there. 0 for a key without one, AltGr
// among them.
std::int16_t KeyCodeOf(const QKeyEvent& event);

// The 8-bit character that the key types, 0 when it types none.
std::int16_t CharacterOf(const QKeyEvent& event);

} // namespace mw
