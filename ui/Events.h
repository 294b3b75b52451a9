// Letting the platform's events run during long work.
#pragma once

namespace mw {

// Handles the events that wait, unless it did so just before, and returns at once. Nests.
void DoEvents();

} // namespace mw
