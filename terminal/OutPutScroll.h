// The hook on the output box's window messages.
//
// While it is installed OutputWindowMessage is told ReplaceSelection after each edit of the box,
// one a frame, and WindowDestroyed when the window goes; the box tells no others. The token of the
// previous handling is kept in the per-user store as decimal text as well, as a sign for a person
// who looks there; what is read back is never trusted.
#pragma once

#include <cstdint>

namespace mw {

// The messages that the hook knows, by the platform's numbers. VerticalScroll and ParentNotify are
// only handed on.
enum OutputMessage : std::int32_t {
    WindowDestroyed = 2,
    ReplaceSelection = 194,
    VerticalScroll = 277,
    ParentNotify = 528,
    SetCharacterFormat = 1092,
};

inline std::int32_t PreviousProcedure = 0; // token of the previous handling, 0 while not installed

// Hooks the output box and keeps the token of its previous handling.
void InstallOutputHook();

// Puts the previous handling back and forgets its token. Does nothing while no hook is installed.
void RemoveOutputHook();

// A message of the output box. Handed on in every case; the end of the window also removes the
// hook, and new text or a new format has the box repainted unless a trim is under way.
void OutputWindowMessage(std::int32_t message);

} // namespace mw
