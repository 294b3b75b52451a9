#include "terminal/Ansi.h"

#include "config/Palette.h"
#include "terminal/IncomingBuffer.h"
#include "terminal/Output.h"
#include "ui/Socket.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace mw {
namespace {

constexpr std::string_view kProbeAnswer = "SMWCLIENT\r";

struct CodeColour {
    std::string_view Code;
    Slot Colour;
};

// Codes are compared whole; what is not listed is white. The rows "1;31m", "1;34m" and "1;5;34m"
// break the pattern of the bright columns, and "1;30m" is missing from it: all meant.
constexpr CodeColour kCodes[] = {
    {"0;30m", MwBlack},     {"0;0;30m", MwBlack},   {"0;5;30m", MwBlack},   {"0;31m", MwLRed},
    {"0;0;31m", MwLRed},    {"0;5;31m", MwLRed},    {"0;32m", MwLGreen},    {"0;0;32m", MwLGreen},
    {"0;5;32m", MwLGreen},  {"0;33m", MwOrange},    {"0;0;33m", MwOrange},  {"0;5;33m", MwOrange},
    {"0;34m", MwLBlue},     {"0;0;34m", MwLBlue},   {"0;5;34m", MwLBlue},   {"0;35m", MwLPurple},
    {"0;0;35m", MwLPurple}, {"0;5;35m", MwLPurple}, {"0;36m", MwLCyan},     {"0;0;36m", MwLCyan},
    {"0;5;36m", MwLCyan},   {"0;37m", MwLGrey},     {"0;0;37m", MwLGrey},   {"0;5;37m", MwLGrey},

    {"0;1;30m", MwGrey},    {"1;5;30m", MwGrey},    {"0;1;31m", MwBRed},    {"1;5;31m", MwBRed},
    {"1;31m", MwGrey},      {"0;1;32m", MwBGreen},  {"1;5;32m", MwBGreen},  {"1;32m", MwBGreen},
    {"0;1;33m", MwYellow},  {"1;5;33m", MwYellow},  {"1;33m", MwYellow},    {"0;1;34m", MwBBlue},
    {"1;5;34m", MwLBlue},   {"1;34m", MwLBlue},     {"0;1;35m", MwBPurple}, {"1;5;35m", MwBPurple},
    {"1;35m", MwBPurple},   {"0;1;36m", MwBCyan},   {"1;5;36m", MwBCyan},   {"1;36m", MwBCyan},
    {"0;1;37m", MwWhite},   {"1;5;37m", MwWhite},   {"1;37m", MwWhite},

    {"0m", MwWhite},        {"30m", MwBlack},       {"2K", MwWhite},
};

void SetColour(Slot slot) { CurrentColour = Palette[slot]; }

void DecodeWhole() {
    static Search nextM{"m"};
    static Search nextK{"K"};
    // Meant: the end is looked for in the whole buffer, so that a sequence without its "m" swallows
    // text up to the next one.
    std::size_t end = Find(IncomingBuffer, nextM);
    if (end == std::string_view::npos)
        end = Find(IncomingBuffer, nextK);
    if (end == std::string_view::npos) {
        SetColour(MwWhite);
        return;
    }
    // Everything behind the two introducer characters, the final letter included. The second
    // introducer is not looked at.
    const std::string_view code = View(IncomingBuffer).substr(2, end - 1);
    const auto* const row = std::find_if(std::begin(kCodes), std::end(kCodes),
                                         [code](const CodeColour& c) { return c.Code == code; });
    SetColour(row == std::end(kCodes) ? MwWhite : row->Colour);
    const bool probe = code == "2K";
    TakeFront(IncomingBuffer, end + 1);
    if (probe)
        wskTCP::SendData(kProbeAnswer);
}

struct ParameterColour {
    std::string_view Parameter;
    Slot Normal;
    Slot Bold;
};

constexpr ParameterColour kParameters[] = {
    {"30", MwGrey, MwGrey},     {"31", MwLRed, MwBRed},     {"32", MwLGreen, MwBGreen},
    {"33", MwOrange, MwYellow}, {"34", MwLBlue, MwBBlue},   {"35", MwLPurple, MwBPurple},
    {"36", MwLCyan, MwBCyan},   {"37", MwDefault, MwWhite},
};

void ApplyParameter(std::string_view parameter, bool& bold) {
    if (parameter == "1") {
        bold = true;
        return;
    }
    if (parameter == "5")
        return;
    const auto* const row =
        std::find_if(std::begin(kParameters), std::end(kParameters),
                     [parameter](const ParameterColour& p) { return p.Parameter == parameter; });
    if (row == std::end(kParameters))
        CurrentColour = Rgb(0, 0, 255); // meant: a fixed colour, not a slot
    else
        SetColour(bold ? row->Bold : row->Normal);
}

// Meant: the ESC and the introducer count as part of the first parameter, which is therefore never
// one of those listed.
void DecodeParameters() {
    constexpr int kMostSteps = 100;
    std::string parameter;
    bool bold = false;
    for (int step = 1; step <= kMostSteps && !View(IncomingBuffer).empty(); ++step) {
        const char ch = View(IncomingBuffer).front();
        TakeFront(IncomingBuffer, 1);
        if (ch >= 'A' && ch <= 'Z') {
            if (ch == 'K' && View(IncomingBuffer).starts_with("Autodetecting"))
                wskTCP::SendData(kProbeAnswer);
            return;
        }
        if (ch != 'm' && ch != ';') {
            parameter += ch;
            continue;
        }
        ApplyParameter(parameter, bold);
        parameter.clear();
        if (ch == 'm')
            return;
    }
}

} // namespace

void DecodeAnsi() {
    if (WholeSequenceMode)
        DecodeWhole();
    else
        DecodeParameters();
}

} // namespace mw
