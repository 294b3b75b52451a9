// The command line's box.
//
// Its events come back as the handlers of automation/CommandLine.h. None of the calls nests.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mw::cboInput {

std::string Text();

// Replaces the text in the edit field; the caret goes to its end.
void SetText(std::string_view text);

// Length of the text in characters.
std::size_t TextLength();

// Selects length characters from start. A length of 0 puts the caret there.
void Select(std::size_t start, std::size_t length);

void SetFocus();

// Mirrors of the history list (automation/CommandBox.h): the box shows it when it drops down.
void AddItem(std::string_view text);
void RemoveFirstItem();

} // namespace mw::cboInput
