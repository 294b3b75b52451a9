// The walk over received text.
//
// Connection calls it after each arrival. Escape sequences go to the colour decoder, sound triggers
// to their parser, the two stop commands to the players, and everything else in runs of one colour
// to the output.
#pragma once

#include "terminal/IncomingBuffer.h"

namespace mw {

// The most that may wait behind an escape sequence without an end; with more, its ESC is dropped.
inline constexpr std::size_t kLongestSequence = 65536;

// Walks IncomingBuffer to its end, or to an escape sequence whose end has not arrived: that one
// stays in front until more text comes. Line breaks are held back until text follows them, and
// dropped at the end of the walk. Runs to its end without letting events in. Raises what
// AppendOutput and ParseSoundTrigger raise.
void ProcessIncoming();

// Walks to the end of the buffer at last, when nothing more will come: a sequence without its end
// loses its ESC and is shown as text. Raises as ProcessIncoming does.
void FinishIncoming();

// Empties the buffer. Used by tests.
void ResetIncoming();

} // namespace mw
