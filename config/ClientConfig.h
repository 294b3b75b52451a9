// The client configuration file Data\client.cfg: palette, escape character, names of the macro sets
// (docs/formats.md).
//
// Read once while the program starts and written once when it stops.
#pragma once

#include "automation/Macros.h"
#include "config/Palette.h"

#include <string>
#include <string_view>
#include <vector>

namespace mw {

// What the file holds. Of the sets it keeps the names alone.
struct ClientConfig {
    PaletteTable Colours{};
    std::string Escape;
    std::vector<MacroSet> Sets;
};

// The file's text for config.
std::string FormatClientConfig(const ClientConfig& config);

// Reads text over config and returns the result: what the file does not mention keeps its value. A
// line that no section knows shows its two messages and raises EndProgram; behind the sections one
// is shown and reading just ends. Raises Type mismatch or Overflow for a colour that is no number,
// Overflow for more than 32,768 sets, Input past end of file when a section is cut off or the text
// is empty. The last line is never looked at.
ClientConfig ParseClientConfig(std::string_view text, ClientConfig config);

// Sets the defaults, reads the fonts' start values and loads the file. Raises as LoadClientConfig.
void InitClientConfig();

// Reads the file into Palette, EscapeChar and MacroSets, or writes it from them when there is none.
// Raises what ReadFile and ParseClientConfig raise; nothing is changed then.
void LoadClientConfig();

// Writes the file. Failures are silent.
void SaveClientConfig();

} // namespace mw
