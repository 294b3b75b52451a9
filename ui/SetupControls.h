// The controls of the setup dialog frmSetup.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace mw {

struct FontChoice {
    std::string Name;
    std::string Size; // in points, as text

    bool operator==(const FontChoice&) const = default;
};

// Swatches count from 0, in the order of kSwatches (config/Setup.h). Colours are 0x00BBGGRR.
void PaintSwatch(std::size_t swatch, std::int32_t colour);

// Lets the player choose a colour, beginning with preset. Nothing when that is cancelled. Nests.
std::optional<std::int32_t> ShowColourChooser(std::int32_t preset);

// Lets the player choose a font and returns what the chooser holds then, preset when it is
// cancelled. Nests.
FontChoice ShowFontChooser(const FontChoice& preset);

// lblFontName and lblFontSize. The name is shown in the font itself when inItself is set.
void ShowFont(const FontChoice& font, bool inItself);

// Fills txtEscChar; a change of its text calls txtEscChar_Change (config/Setup.h).
void SetEscapeText(const std::string& text);

} // namespace mw
