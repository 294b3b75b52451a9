// Single string settings, kept in the machine-wide registry below "SOFTWARE".
//
// Window placement, fonts and menu switches are kept here, by application, section and key, all
// three trimmed of outer blanks. Misuse and failures are numbered errors; callers decide whether to
// show or swallow them.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

// Base of the application-defined error numbers, and the numbers of this module above it.
inline constexpr std::int32_t kErrorBase = -2147221504;
inline constexpr std::int32_t kNoAppName = kErrorBase + 1000;
inline constexpr std::int32_t kNoSection = kErrorBase + 1001;
inline constexpr std::int32_t kNoKey = kErrorBase + 1002;
inline constexpr std::int32_t kSystemError = kErrorBase + 2000; // + the system's code or the type

// The application name of all of this program's settings.
inline constexpr const char* kApplicationName = "MwClient";

// Keeps value. Raises kNoAppName, kNoSection or kNoKey for an empty name, kSystemError + the
// system's code when the section can't be made or the value not be set.
void WriteSetting(const std::string& application, const std::string& section,
                  const std::string& key, const std::string& value);

// The value kept, or fallback when section or value is not there. Raises the same errors for empty
// names, kSystemError + code when the section can't be opened, kSystemError + type (in 32 bits,
// whatever the type) for a value that is no string.
std::string ReadSetting(const std::string& application, const std::string& section,
                        const std::string& key, const std::string& fallback);

// ReadSetting for the start of the program: of this program, and a failure gives the fallback and a
// notice.
std::string SettingAtStart(const std::string& section, const std::string& key,
                           const std::string& fallback);

// WriteSetting of this program; a failure gives a notice.
void KeepSetting(const std::string& section, const std::string& key, const std::string& value);

} // namespace mw
