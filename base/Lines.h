// Lines of a text that was read from a file, and the key and value lines among them.
//
// The readers of the client's files walk their text with a LineReader. Lines end with CR LF or with
// LF alone; those that are written end with CR LF.
#pragma once

#include <string>
#include <string_view>

namespace mw {

struct LineReader {
    std::string_view Text; // must outlive the reader
    std::size_t Next = 0;  // where the next line begins
};

// True when no line follows, whether or not the last one had a line end.
bool AtEnd(const LineReader& reader);

// The next line without its line end. Raises Input past end of file when there is none. Lets
// pending events run.
std::string ReadLine(LineReader& reader);

// Adds line and its line end to the end of text.
void AppendLine(std::string& text, std::string_view line);

// The text after the first "=" of a line; the whole line when it has none.
std::string ValueAfterEquals(std::string_view line);

// text without the blanks (space characters) at its ends.
std::string_view TrimBlanks(std::string_view text);

// True when part occurs anywhere in text. Letter case counts.
bool ContainsText(std::string_view text, std::string_view part);

} // namespace mw
