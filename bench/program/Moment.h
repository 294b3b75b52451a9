// Points in time.
#pragma once

#include <chrono>

namespace bench {

using Moment = std::chrono::steady_clock::time_point;
using Milliseconds = std::chrono::duration<double, std::milli>;

inline Moment Now() { return std::chrono::steady_clock::now(); }

inline double MsSince(Moment start) { return Milliseconds(Now() - start).count(); }

} // namespace bench
