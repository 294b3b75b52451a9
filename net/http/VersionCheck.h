// The check for a newer client: one line on the maker's web site, compared with the own version.
//
// The splash runs it as its last loading stage. What it finds is written into the splash's labels
// and into the prompt frmUpdate, which stays open beside the start. The answer is kept and never
// looked at again, on purpose: the check runs at every start.
#pragma once

#include "base/Version.h"

#include <optional>
#include <string>
#include <string_view>

namespace mw {

inline bool updateAvailable = false; // a newer client is published
inline std::string PublishedVersion; // its number in decimal form, empty before the first check

// The version as one number: major + minor / 10 + revision / 100. Meant: 1.12.0 is 2.2, as 2.2.0.
float FoldVersion(const Version& version);

// The number that a version file publishes: a decimal number with a point, white space after it
// left aside. An empty file publishes 0. Nothing when it is no such number or out of range.
std::optional<float> ParsePublishedVersion(std::string_view body);

// The shortest decimal form that is read back as the same number: "1.25", "2".
std::string DecimalForm(float number);

// Fetches the published version (waits up to three seconds). When it is greater than own, tells so
// in the splash and opens the prompt. Every failure is silent.
void CheckForUpdate(const Version& own = kOwnVersion);

// The prompt has been made: it shows both versions, until CheckForUpdate writes its lines over
// them.
void frmUpdate_Load();

// The player's answer, when the prompt is gone. dontShow: "Dont show me this again" was ticked.
void cmdNo_Click(bool dontShow);
void cmdYes_Click(bool dontShow); // opens the maker's web site too

// The state at program start. Used by tests.
void ResetVersionCheck();

} // namespace mw
