// The controls of the output window: the two text boxes and the scroll bar between them.
//
// rtfOutPut is a queue: what is appended and removed is applied to the window once a frame, and
// what a removal takes away again is never inserted. Lengths count what has been queued. None of
// the calls nests.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

namespace rtfOutPut {

// The font of the box itself, which text without a font of its own would have.
inline constexpr const char* kBaseFontName = "Courier";
inline constexpr const char* kBaseFontSize = "10";

// Characters in the box. A line break counts as one.
std::size_t TextLength();

// Appends text in a colour (0x00BBGGRR) and a font. LF breaks the line. A size that is no number
// of points from 1 to 200 stands for the box's own.
void Append(std::string_view text, std::int32_t colour, const std::string& fontName,
            const std::string& fontSize);

// Removes that many characters from the beginning.
void RemoveFirst(std::size_t count);

// Puts the caret behind the last character and scrolls there.
void MoveCaretToEnd();

// Told before and after a trim, which must not be painted by itself. Does nothing: the queue sees
// to that.
void SetRedraw(bool on);

// Asks for one repaint.
void Refresh();

// From here on OutputWindowMessage (terminal/OutPutScroll.h) is told of each edit of the box, when
// it is done, and of the window's end. Returns a token that stands for how the box handled that so
// far.
std::int32_t Hook();

// Undoes Hook.
void Unhook(std::int32_t token);

// Hands on the message that OutputWindowMessage was given. Does nothing: the box has handled it.
void CallPrevious(std::int32_t token, std::int32_t message);

} // namespace rtfOutPut

namespace rtfScroll {

// Shows the box with a formatted copy of rtfOutPut in its base font, or hides it; lays the window
// out anew.
void ShowCopyOfOutput();
void Hide();

} // namespace rtfScroll

namespace vslRTF {

std::int16_t Max();
std::int16_t Value();

// Moves the bar without a call of vslRTF_Change.
void SetMaxAndValue(std::int16_t maximum);

void SetChange(std::int16_t smallChange, std::int16_t largeChange);

} // namespace vslRTF
} // namespace mw
