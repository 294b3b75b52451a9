#include "terminal/Output.h"

#include "automation/CommandBox.h"
#include "automation/Triggers.h"
#include "base/Globals.h"
#include "base/Numbers.h"
#include "terminal/AutoLog.h"
#include "ui/OutputControls.h"

#include <algorithm>
#include <limits>

namespace mw {
namespace {

std::size_t LineFeedPosition() {
    static Search lineFeed{"\n"};
    return Find(PendingLine, lineFeed);
}

// Takes the first length characters of PendingLine as a line.
void HandOnLine(std::size_t length) {
    const std::string line(View(PendingLine).substr(0, length));
    TakeFront(PendingLine, length);
    CheckTriggers(line);
    WriteLogLine(line);
}

bool HandOnCompletedLine() {
    const std::size_t lineFeed = LineFeedPosition();
    if (lineFeed == std::string_view::npos)
        return false;
    HandOnLine(lineFeed + 1);
    return true;
}

void HandOnLines() {
    // Meant: one line a call, however many have been completed.
    HandOnCompletedLine();
    while (View(PendingLine).size() > kLongestPendingLine) {
        if (!HandOnCompletedLine())
            HandOnLine(View(PendingLine).size());
    }
}

void TrimOutput() {
    const std::size_t length = rtfOutPut::TextLength();
    if (length <= kLongestOutput)
        return;
    OutputRedrawOn = false;
    rtfOutPut::SetRedraw(false);
    rtfOutPut::RemoveFirst(length - kKeptOutput);
    rtfOutPut::SetRedraw(true);
    OutputRedrawOn = true;
}

void MoveScrollBarToEnd() {
    constexpr std::size_t kLargest = std::numeric_limits<std::int16_t>::max();
    const auto length = static_cast<std::int16_t>(std::min(rtfOutPut::TextLength(), kLargest));
    vslRTF::SetMaxAndValue(length);
    if (length > 500)
        vslRTF::SetChange(RoundToInt16(length / 50.0), RoundToInt16(length / 10.0));
    else
        vslRTF::SetChange(10, 100);
}

} // namespace

void AppendOutput(std::string& text) {
    std::erase(text, '\r');
    Append(PendingLine, text);
    HandOnLines();
    TrimOutput();
    rtfOutPut::Append(text, CurrentColour, OutputFontName, OutputFontSize);
    rtfOutPut::MoveCaretToEnd();
    if (!ScrollBackActive)
        MoveScrollBarToEnd();
    AfterOutputAppend();
}

void AppendWaitingLines() {
    while (LineFeedPosition() != std::string_view::npos) {
        std::string nothing;
        AppendOutput(nothing);
    }
}

void AppendStatus(std::string_view text) {
    rtfOutPut::Append(text, kPlainWhite, OutputFontName, OutputFontSize);
    rtfOutPut::MoveCaretToEnd();
}

void vslRTF_Change() {
    if (vslRTF::Value() == vslRTF::Max()) {
        ScrollBackActive = false;
        rtfScroll::Hide();
    } else if (!ScrollBackActive) {
        rtfScroll::ShowCopyOfOutput();
        ScrollBackActive = true;
    }
}

void ResetOutput() {
    CurrentColour = kPlainWhite;
    TakeFront(PendingLine, View(PendingLine).size());
    ScrollBackActive = false;
    OutputRedrawOn = true;
}

} // namespace mw
