// The timers of the output window.
//
// A started timer calls its handler (tmrConnect_Timer, tmrLog_Timer of net/Connection.h) again and
// again until it is stopped. Neither call nests.
#pragma once

namespace mw {

enum class Timer { Connect, Log };

// Starts the timer, or starts its interval anew. intervalMs is in milliseconds.
void StartTimer(Timer timer, int intervalMs);

void StopTimer(Timer timer);

} // namespace mw
