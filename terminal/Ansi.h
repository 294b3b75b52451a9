// Colour escape sequences of the game text.
//
// The walk calls DecodeAnsi whenever an ESC stands at the front of IncomingBuffer. A sequence only
// ever changes CurrentColour (terminal/Output.h): the output is a scrolling log, so cursor
// movement, erasing and background colours are consumed and ignored.
#pragma once

namespace mw {

// True: a sequence is looked up whole. False: its parameters are read one by one. Nothing switches
// it off.
inline bool WholeSequenceMode = true;

// Takes one escape sequence off the front of IncomingBuffer (which must begin with ESC) and sets
// CurrentColour. Leaves the buffer as it is, and sets white, while the sequence has no end yet.
// Answers the server's terminal probe with one send. Raises nothing.
void DecodeAnsi();

} // namespace mw
