// The wall clock.
#pragma once

#include <string>

namespace mw {

// Present date and time in the system's general date format.
std::string GeneralDate();

} // namespace mw
