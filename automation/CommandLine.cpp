#include "automation/CommandLine.h"

#include "automation/Aliases.h"
#include "automation/CommandBox.h"
#include "automation/MacroKeys.h"
#include "base/Globals.h"
#include "net/Connection.h"
#include "net/Send.h"
#include "terminal/Output.h"
#include "ui/InputControls.h"
#include "ui/MessageBox.h"

#include <string>

namespace mw {
namespace {

void SetModifier(std::int16_t keyCode, bool down) {
    if (keyCode == kCtrlKey)
        CtrlDown = down;
    else if (keyCode == kAltKey)
        AltDown = down;
    else if (keyCode == kShiftKey)
        ShiftDown = down;
}

void SendTypedLine() {
    const std::string typed = cboInput::Text();
    const std::string sent = ExpandAlias(typed);
    SendLine(sent);
    std::string lineBreak = "\r\n"; // ends the game's prompt, with echo or without
    AppendOutput(lineBreak);
    if (!typed.empty())
        AddToHistory(typed);
    SelectHistory(NewestIndex());
    if (!KeepSentText)
        ClearCommand();
    if (EchoOn) {
        std::string echo = sent + "\r\n";
        AppendOutput(echo);
    }
    // Last, so that the appends above still see what the key before this one was.
    LastKeyWasEnter = true;
}

} // namespace

void frmOutput_KeyDown(std::int16_t keyCode) {
    SwallowKeyPress = false; // a direction's key that typed nothing leaves nothing to swallow
    if (keyCode != 0)
        HandleMacroKey(keyCode);
    SetModifier(keyCode, true);
}

void frmOutput_KeyPress(std::int16_t& character) {
    if (!SwallowKeyPress)
        return;
    SwallowKeyPress = false;
    character = 0;
}

void frmOutput_KeyUp(std::int16_t keyCode) { SetModifier(keyCode, false); }

void cboInput_KeyDown(std::int16_t keyCode) {
    frmOutput_KeyDown(keyCode);
    if (keyCode != kEnterKey) {
        LastKeyWasEnter = false;
    } else if (!Connected) {
        ShowMessage("You need to connect to a mud first");
        ClearCommand();
    } else {
        SendTypedLine();
    }
}

void cboInput_KeyPress(std::int16_t& character) { frmOutput_KeyPress(character); }

void cboInput_KeyUp(std::int16_t keyCode) { frmOutput_KeyUp(keyCode); }

} // namespace mw
