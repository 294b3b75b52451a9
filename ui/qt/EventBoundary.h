// Where the platform's events enter the client's handlers.
//
// Every slot whose handler can raise calls it through RunHandler, so that an error is shown and the
// program goes on.
#pragma once

#include <functional>

namespace mw {

// Runs handler. An Error is shown in a message box, unless a box of the same handler (by name) is
// still open: a timer that fails at every tick shows one. EndProgram ends the event loop with
// status 1. Nests while a box is open.
void RunHandler(const char* name, const std::function<void()>& handler);

// Runs what the start-up needs to succeed. False, with the Error shown, when it did not: the
// program is to end with status 1 and to write nothing. EndProgram has shown its own boxes.
bool RunAtStart(const std::function<void()>& work);

} // namespace mw
