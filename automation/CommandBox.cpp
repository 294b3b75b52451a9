#include "automation/CommandBox.h"

#include "base/Globals.h"
#include "ui/InputControls.h"

namespace mw {
namespace {

std::string Draft; // what was typed before the first Up

} // namespace

std::int16_t NewestIndex() {
    return static_cast<std::int16_t>(static_cast<int>(History.size()) - 1);
}

void AddToHistory(const std::string& line) {
    History.push_back(line);
    Draft.clear();
    cboInput::AddItem(line);
    if (History.size() > kLongestHistory) {
        History.erase(History.begin());
        cboInput::RemoveFirstItem();
    }
}

void SelectHistory(std::int16_t index) {
    HistoryIndex = index;
    if (index >= 0)
        cboInput::SetText(History[static_cast<std::size_t>(index)]);
}

void ClearCommand() {
    HistoryIndex = -1;
    cboInput::SetText("");
}

void RecallOlder() {
    if (HistoryIndex < 0)
        Draft = cboInput::Text();
    if (HistoryIndex != 0)
        SelectHistory(HistoryIndex < 0 ? NewestIndex()
                                       : static_cast<std::int16_t>(HistoryIndex - 1));
}

void RecallNewer() {
    if (HistoryIndex < 0)
        return;
    if (HistoryIndex < NewestIndex()) {
        SelectHistory(static_cast<std::int16_t>(HistoryIndex + 1));
    } else {
        HistoryIndex = -1;
        cboInput::SetText(Draft);
    }
}

void cboInput_Change() { HistoryIndex = -1; }

void AfterOutputAppend() {
    const std::size_t length = cboInput::TextLength();
    if (KeepSentText && LastKeyWasEnter)
        cboInput::Select(0, length);
    else
        cboInput::Select(length, 0);
}

void ResetCommandBox() {
    History.clear();
    HistoryIndex = -1;
    Draft.clear();
}

} // namespace mw
