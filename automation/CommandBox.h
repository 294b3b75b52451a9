// The command line's history and its caret rule.
//
// The history is the list that the command line's box drops down: the lines sent, oldest first, as
// typed. It starts empty with the program and is not kept.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mw {

inline constexpr std::size_t kLongestHistory = 25;

inline std::vector<std::string> History;
inline std::int16_t HistoryIndex = -1; // the entry that stands in the edit field, -1 for none

// Adds a line at the end, the same line again too; the oldest goes when there are more than 25.
void AddToHistory(const std::string& line);

// Index of the line sent last, -1 when there is none.
std::int16_t NewestIndex();

// Puts an entry into the edit field. -1 selects none and leaves the text.
void SelectHistory(std::int16_t index);

// Empties the edit field; no entry is selected then.
void ClearCommand();

// The next older or newer entry, as the Up and Down keys ask for. Going down past the newest brings
// back what was typed before the first Up.
void RecallOlder();
void RecallNewer();

// The player has edited the text: no entry is selected any more.
void cboInput_Change();

// The caret rule, run after every append to the output. The caret goes to the end of the text;
// with "Keep Sent Text", and when Enter was the last key, the whole text is selected instead, so
// that the next key replaces it.
void AfterOutputAppend();

// Empties the history. Used by tests.
void ResetCommandBox();

} // namespace mw
