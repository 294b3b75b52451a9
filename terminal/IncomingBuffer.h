// Received text that the walk has not consumed yet.
//
// Connection appends what it has cleaned of telnet commands; the walk (terminal/Incoming.h), the
// colour decoder and the sound trigger parser take from the front.
#pragma once

#include "base/TextQueue.h"

namespace mw {

inline TextQueue IncomingBuffer;

// True after a CR or LF was taken from the buffer and nothing else since: only there a sound
// trigger is recognised.
inline bool AtLineStart = false;

} // namespace mw
