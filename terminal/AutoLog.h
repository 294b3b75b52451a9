// The session log: completed output lines, each with date and time, appended to a text file.
//
// Output writes lines, Connection opens and closes. Nothing switches the log on yet; what is
// written once it is on is settled here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

inline bool AutoLogOn = false;
inline std::string LogFilePath;
inline std::int16_t LogFileNumber = 0;
inline bool LogFileOpen = false;

// Opens LogFilePath for appending; a log that is still open is closed first. Raises Path/File
// access error when it can't be opened.
void OpenLog();

// Closes the log if one is open.
void CloseLog();

// Writes date and time, ": " and the line as one quoted record, if the log is on and open. The line
// ends in its LF, so the closing quote stands at the start of the file's next line. Quotes inside
// are not doubled. A failed write is ignored.
void WriteLogLine(std::string_view line);

} // namespace mw
