#include "automation/MacroKeys.h"

#include "automation/Macros.h"
#include "base/Globals.h"
#include "net/Send.h"
#include "ui/InputControls.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace mw {
namespace {

struct KeypadKey {
    std::int16_t Code;
    std::string_view Command;
};

// Keypad 0 (96) walks nowhere.
constexpr KeypadKey kKeypad[] = {
    {97, "southwest"},  {98, "south"}, {99, "southeast"},  {100, "west"},
    {101, "look"},      {102, "east"}, {103, "northwest"}, {104, "north"},
    {105, "northeast"}, {107, "down"}, {109, "up"},
};

// Meant: plain keys are taken from the first set whatever set is current.
const KeyTable& TableInForce() {
    if (CtrlDown)
        return CurrentSet().CtrlKey;
    if (AltDown)
        return CurrentSet().AltKey;
    return MacroSets.front().NormKey;
}

void PlayMacro(const std::string& macro) {
    std::string part;
    for (const char c : macro) {
        if (EscapeChar == std::string_view(&c, 1)) {
            SendLine(part);
            part.clear();
        } else {
            part += c;
        }
    }
    if (part.empty())
        return;
    cboInput::SetText(part);
    cboInput::Select(cboInput::TextLength(), 0);
}

} // namespace

std::string_view KeypadCommand(std::int16_t keyCode) {
    const auto* const key =
        std::find_if(std::begin(kKeypad), std::end(kKeypad),
                     [keyCode](const KeypadKey& k) { return k.Code == keyCode; });
    return key == std::end(kKeypad) ? std::string_view() : key->Command;
}

bool HasMacro(std::int16_t keyCode) { return !KeyText(TableInForce(), keyCode).empty(); }

void HandleMacroKey(std::int16_t keyCode) {
    PlayMacro(KeyText(TableInForce(), keyCode));
    const std::string_view command = KeypadCommand(keyCode);
    if (command.empty())
        return;
    SendLine(command);
    SwallowKeyPress = true;
}

} // namespace mw
