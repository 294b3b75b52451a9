#include "config/Setup.h"

#include "base/Globals.h"
#include "config/MRegistry.h"
#include "ui/OutputControls.h"
#include "ui/SetupControls.h"
#include "ui/UserSettings.h"

#include <iterator>

namespace mw {
namespace {

constexpr const char* kSection = "Settings";
constexpr std::size_t kGrey = 0; // picGrey
constexpr std::size_t kLGrey = 1;

const FontChoice kBaseFont{rtfOutPut::kBaseFontName, rtfOutPut::kBaseFontSize};

// What the colour chooser holds; it lives as long as the dialog.
std::int32_t HeldColour = 0;

void Paint(std::size_t swatch) { PaintSwatch(swatch, Palette[kSwatches[swatch].PaletteSlot]); }

} // namespace

void frmSetup_Load() {
    HeldColour = 0;
    Paint(kGrey);
    PaintSwatch(kGrey, Palette[MwLGrey]); // meant: and picLGrey not at all
    for (std::size_t swatch = kLGrey + 1; swatch < std::size(kSwatches); ++swatch)
        Paint(swatch);
    SetEscapeText(EscapeChar);
    ShowFont({OutputFontName, OutputFontSize}, false);
}

void Swatch_Click(std::size_t swatch) {
    HeldColour = ShowColourChooser(HeldColour).value_or(HeldColour);
    Palette[kSwatches[swatch].PaletteSlot] = HeldColour;
    PaintSwatch(kGrey, HeldColour); // meant: not the one that was clicked
}

void cmdFont_Click() {
    const FontChoice chosen = ShowFontChooser({OutputFontName, OutputFontSize});
    OutputFontSize = chosen.Size;
    OutputFontName = chosen.Name;
    KeepSetting(kSection, "Font", kBaseFont.Size);
    KeepSetting(kSection, "Name", kBaseFont.Name);
    ShowFont(chosen, true);
}

void cmdDefault_Click() {
    for (std::size_t swatch = 0; swatch < std::size(kSwatches); ++swatch)
        Paint(swatch);
    ShowFont(kBaseFont, false);
    SetEscapeText(";");
    OutputFontName = "Courier";
    OutputFontSize = "10";
    SaveUserSetting(kApplicationName, kSection, "Font", OutputFontSize);
    SaveUserSetting(kApplicationName, kSection, "Name", OutputFontName);
}

void txtEscChar_Change(const std::string& text) {
    if (text.empty())
        return;
    EscapeChar = text;
    SaveUserSetting(kApplicationName, kSection, "EscChar", text);
}

} // namespace mw
