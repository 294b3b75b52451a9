// The output view: the single way text reaches the screen.
//
// The walk over received text and the command line's echo append here. Completed lines go to the
// triggers and the session log, the box is kept short, the scroll bar in step, and the command
// line's caret rule runs last. frmOutput calls vslRTF_Change when the player scrolls.
#pragma once

#include "base/TextQueue.h"
#include "config/Palette.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

inline constexpr std::int32_t kPlainWhite = Rgb(255, 255, 255);

// An append that finds more than kLongestOutput characters in the box first cuts it to its last
// kKeptOutput.
inline constexpr std::size_t kLongestOutput = 15000;
inline constexpr std::size_t kKeptOutput = 8000;

// Text that waits for the triggers stays below this, so that a server that sends lines faster than
// they are handed on, or a line without end, can't make the client grow.
inline constexpr std::size_t kLongestPendingLine = 65536;

inline std::int32_t CurrentColour = kPlainWhite; // colour of the next run, 0x00BBGGRR
inline TextQueue PendingLine;                    // output that no completed line was made of yet
inline bool ScrollBackActive = false;            // the player looks at earlier output
inline bool OutputRedrawOn = true;               // false only while a trim is under way

// Appends text in CurrentColour and the output font; its CRs are removed, from the caller's string
// too. Hands one completed line to the triggers and the log, the first that waits, even when this
// call brought several; the others follow one a call. Raises Subscript out of range when there is
// no current macro set.
void AppendOutput(std::string& text);

// Hands on all completed lines that wait, by appends of nothing.
void AppendWaitingLines();

// A line of the client's own, in white, straight to the box: no triggers, no log, no trim.
void AppendStatus(std::string_view text);

// The scroll bar was moved. Away from its end a copy of the output is shown that stays as it is;
// at its end the copy goes.
void vslRTF_Change();

// The state at program start. Used by tests.
void ResetOutput();

} // namespace mw
