// Any lines and keys of a player, with any aliases, triggers and macros.
//
// kCut cuts the input into steps. Each begins with the letter of a row of kSteps.
#include "automation/Aliases.h"
#include "automation/CommandBox.h"
#include "automation/CommandLine.h"
#include "automation/Macros.h"
#include "automation/Triggers.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "base/Lines.h"
#include "fuzz/Fresh.h"
#include "net/Connection.h"
#include "terminal/Output.h"
#include "ui/Socket.h"

#include <algorithm>
#include <iterator>

namespace mw {
namespace {

// "a" is 97, and each further character adds 256.
std::int16_t CodeOf(const std::string& text) {
    const std::size_t code =
        text.empty() ? 0 : static_cast<unsigned char>(text[0]) + 256 * (text.size() - 1);
    return static_cast<std::int16_t>(code);
}

// "0" is 0; what stands before it is below.
std::int16_t IndexOf(const std::string& text) {
    return static_cast<std::int16_t>(text.empty() ? 0 : text[0] - '0');
}

bool Flag(const std::string& text, char letter) { return text.find(letter) != std::string::npos; }

std::string BeforeEquals(const std::string& text) { return text.substr(0, text.find('=')); }

// What goes out for a typed line, as it is described.
std::string Expected(std::string line) {
    for (const AliasEntry& entry : CurrentSet().Aliases) {
        if (entry.IsEnabled && !line.empty() && line.starts_with(entry.Alias)) {
            line.replace(0, entry.Alias.size(), entry.Replace);
            break;
        }
    }
    if (EscapeChar.size() == 1)
        std::ranges::replace(line, EscapeChar[0], '\r');
    return line + '\r';
}

// A macro of the Enter key may replace what was typed.
void PressEnter(const std::string& line) {
    cboInput_Change();
    fakes::Input = line;
    fakes::SelStart = line.size();
    fakes::SelLength = 0;
    fakes::Sends.clear();
    cboInput_KeyDown(kEnterKey);
    const bool isTyped = MacroSets[0].NormKey.empty() && !CtrlDown && !AltDown;
    if (isTyped && Connected && fakes::SocketState == SocketConnected)
        Must(fakes::Sent().starts_with(Expected(line)));
    Must(!isTyped || Connected || (fakes::Sends.empty() && fakes::Input.empty()));
}

void PressKey(const std::string& key) { cboInput_KeyDown(CodeOf(key)); }

void PressKeyInOutput(const std::string& key) { frmOutput_KeyDown(CodeOf(key)); }

void ReleaseKey(const std::string& key) { cboInput_KeyUp(CodeOf(key)); }

void TypeCharacter(const std::string& text) {
    std::int16_t character = CodeOf(text);
    cboInput_KeyPress(character);
    Must(character == 0 || character == CodeOf(text));
}

void RecallLine(const std::string& way) {
    if (Flag(way, 'u'))
        RecallOlder();
    else
        RecallNewer();
}

void NewAlias(const std::string& text) { AddAlias(BeforeEquals(text), ValueAfterEquals(text)); }

void NewTrigger(const std::string& text) { AddTrigger(BeforeEquals(text), ValueAfterEquals(text)); }

void ChangeEntry(const std::string& text) {
    const std::string entry = text.substr(std::min<std::size_t>(2, text.size()));
    const std::int16_t index = IndexOf(text.substr(std::min<std::size_t>(1, text.size())));
    if (text.starts_with('a'))
        ChangeAlias(index, BeforeEquals(entry), ValueAfterEquals(entry));
    else if (text.starts_with('t'))
        ChangeTrigger(index, BeforeEquals(entry), ValueAfterEquals(entry));
    else
        EnableAlias(index, !entry.empty());
}

void DeleteEntry(const std::string& text) {
    const std::int16_t index = IndexOf(text.substr(std::min<std::size_t>(1, text.size())));
    if (text.starts_with('a'))
        DeleteAlias(index);
    else
        DeleteTrigger(index);
}

// "nF1=text" without the "F1=": a table, a key, and the text.
void NewMacro(const std::string& text) {
    if (text.size() < 2)
        return;
    MacroSet& set = CurrentSet();
    KeyTable& table = text[0] == 'c' ? set.CtrlKey : text[0] == 'a' ? set.AltKey : set.NormKey;
    SetKeyText(table, static_cast<unsigned char>(text[1]), text.substr(2));
}

void NewSet(const std::string& name) {
    if (MayAddMacroSet())
        AddMacroSet(name);
}

void UseSet(const std::string& index) { CurrentMacroSet = IndexOf(index); }

void SetFlags(const std::string& flags) {
    KeepSentText = Flag(flags, 'k');
    EchoOn = Flag(flags, 'e');
    Connected = !Flag(flags, 'd');
    fakes::SocketState = Flag(flags, 's') ? SocketClosed : SocketConnected;
}

void SetEscape(const std::string& text) { EscapeChar = text; }

struct Step {
    char Letter;
    void (*Do)(const std::string& rest);
};

constexpr Step kSteps[] = {
    {'>', PressEnter},    {'k', PressKey},    {'o', PressKeyInOutput}, {'u', ReleaseKey},
    {'p', TypeCharacter}, {'h', RecallLine},  {'a', NewAlias},         {'t', NewTrigger},
    {'c', ChangeEntry},   {'d', DeleteEntry}, {'m', NewMacro},         {'n', NewSet},
    {'s', UseSet},        {'f', SetFlags},    {'e', SetEscape},
};

void MustBeSound() {
    Must(History == fakes::Items && History.size() <= kLongestHistory);
    Must(std::ranges::none_of(History, &std::string::empty));
    Must(HistoryIndex >= -1 && HistoryIndex <= NewestIndex());
    Must(fakes::SelStart + fakes::SelLength <= fakes::Input.size());
    Must(fakes::Sends.empty() || fakes::Sends.back() == "\r"); // whole lines
    Must(View(PendingLine).size() <= kLongestPendingLine);
    for (const MacroSet& set : MacroSets)
        Must(!set.Aliases.empty() && !set.Triggers.Entries().empty());
}

void Take(const std::string& piece) {
    const auto* const step =
        std::ranges::find(kSteps, piece.empty() ? '>' : piece[0], &Step::Letter);
    if (step == std::end(kSteps))
        return;
    try {
        step->Do(piece.substr(std::min<std::size_t>(1, piece.size())));
    } catch (const Error& error) { // a key beyond all, an entry or a set that is not there
        Must(error.Number == SubscriptOutOfRange);
    }
    MustBeSound();
    fakes::Calls.clear();
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const Fresh fresh;
    mw::Connected = true;
    for (const std::string& piece : Pieces(Text(bytes, count)))
        mw::Take(piece);
    return 0;
}
