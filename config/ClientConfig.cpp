#include "config/ClientConfig.h"

#include "base/Error.h"
#include "base/Globals.h"
#include "base/Lines.h"
#include "base/Numbers.h"
#include "config/FileHandler.h"
#include "config/MRegistry.h"
#include "ui/MessageBox.h"

#include <array>
#include <charconv>
#include <limits>

namespace mw {
namespace {

constexpr const char* kFile = "Data\\client.cfg";

constexpr std::array<std::string_view, MwDefault + 1> kColourKeys = {
    "MwBlack",   "MwGrey",   "MwLGrey",  "MwLRed",  "MwBRed",    "MwLGreen",
    "MwBGreen",  "MwYellow", "MwOrange", "MwLBlue", "MwBBlue",   "MwLPurple",
    "MwBPurple", "MwLCyan",  "MwBCyan",  "MwWhite", "MwDefault",
};

// The two wordings differ, and are meant to.
constexpr std::string_view kColourMessage = "An Error has occured loading the configuration file";
constexpr std::string_view kConfigMessage = "And error as occured loading the configuration file";

std::string Hexadecimal(std::int32_t value) {
    char digits[8];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), static_cast<std::uint32_t>(value), 16);
    std::string text(std::begin(digits), end.ptr);
    for (char& c : text)
        c = static_cast<char>(c >= 'a' ? c - 'a' + 'A' : c);
    return text;
}

bool IsHeader(std::string_view line) { return line.starts_with('['); }

[[noreturn]] void RefuseLine(std::string_view message, const std::string& line) {
    ShowMessage(message);
    ShowMessage(ShownLine(line));
    throw EndProgram{};
}

// Each section reads lines up to a header and returns that one. The lines it knows come first: a
// header that holds one of its keys is taken for the key, on purpose.

std::string ReadColours(LineReader& reader, PaletteTable& colours) {
    while (true) {
        std::string line = ReadLine(reader);
        std::size_t slot = 0;
        while (slot < kColourKeys.size() && !ContainsText(line, kColourKeys[slot]))
            ++slot;
        if (slot < kColourKeys.size())
            colours[slot] = ToInt32(ValueAfterEquals(line));
        else if (IsHeader(line))
            return line;
        else
            RefuseLine(kColourMessage, line);
    }
}

std::string ReadConfig(LineReader& reader, std::string& escape) {
    while (true) {
        std::string line = ReadLine(reader);
        if (ContainsText(line, "Esc"))
            escape = ValueAfterEquals(line);
        else if (IsHeader(line))
            return line;
        else
            RefuseLine(kConfigMessage, line);
    }
}

std::string ReadSetNames(LineReader& reader, std::vector<MacroSet>& sets) {
    for (std::size_t index = 0;; ++index) {
        std::string line = ReadLine(reader);
        if (IsHeader(line))
            return line;
        if (index > std::numeric_limits<std::int16_t>::max())
            Raise(Overflow, "ReadSetNames");
        // Meant: a second section begins at 0 again and cuts the table back.
        sets.resize(index + 1);
        Edit(sets[index].Triggers).assign(1, {});
        sets[index].Aliases.assign(1, {});
        sets[index].Name = ValueAfterEquals(line);
    }
}

} // namespace

std::string FormatClientConfig(const ClientConfig& config) {
    std::string text;
    AppendLine(text, "[Colours]");
    for (std::size_t slot = 0; slot < kColourKeys.size(); ++slot)
        AppendLine(text,
                   std::string(kColourKeys[slot]) + "=&H" + Hexadecimal(config.Colours[slot]));
    AppendLine(text, "[Config]");
    AppendLine(text, "Esc=" + config.Escape);
    AppendLine(text, "[Macros]");
    for (const MacroSet& set : config.Sets)
        AppendLine(text, set.Name);
    AppendLine(text, "[END]");
    return text;
}

ClientConfig ParseClientConfig(std::string_view text, ClientConfig config) {
    LineReader reader{text};
    std::string line = ReadLine(reader);
    while (!AtEnd(reader)) {
        if (line.starts_with("[Colours]")) {
            line = ReadColours(reader, config.Colours);
        } else if (line.starts_with("[Config]")) {
            line = ReadConfig(reader, config.Escape);
        } else if (line.starts_with("[Macros]")) {
            line = ReadSetNames(reader, config.Sets);
        } else {
            if (!line.starts_with("[END]")) {
                ShowMessage(kColourMessage);
                ShowMessage(ShownLine(line));
            }
            break;
        }
    }
    return config;
}

void InitClientConfig() {
    Palette = kDefaultPalette;
    EscapeChar = ";";
    // Meant: the size goes to the name and the name to the size. The main frame's load overwrites
    // both.
    OutputFontName = SettingAtStart("Output", "Font", "10");
    OutputFontSize = SettingAtStart("Output", "Name", "Courier");
    MacroSets.front().Name = "Default";
    KeepSentText = false;
    EchoOn = false;
    LoadClientConfig();
}

void LoadClientConfig() {
    if (IsAbsent(kFile)) {
        SaveClientConfig();
        return;
    }
    ClientConfig config = ParseClientConfig(ReadFile(kFile), {Palette, EscapeChar, MacroSets});
    Palette = config.Colours;
    EscapeChar = config.Escape;
    MacroSets = std::move(config.Sets);
}

void SaveClientConfig() { WriteFile(kFile, FormatClientConfig({Palette, EscapeChar, MacroSets})); }

} // namespace mw
