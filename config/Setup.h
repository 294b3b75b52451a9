// The setup dialog: colours, font of the output, escape character.
//
// Every change takes effect at once; closing the dialog in any way leaves it. Colours and escape
// character reach their file when the program stops. The dialog has slips that are meant to stay.
#pragma once

#include "config/Palette.h"

#include <cstddef>
#include <string>

namespace mw {

struct Swatch {
    const char* Control;
    const char* Colour; // as the player reads it
    Slot PaletteSlot;
};

// Black and white have none.
inline constexpr Swatch kSwatches[] = {
    {"picGrey", "Grey", MwGrey},         {"picLGrey", "Light grey", MwLGrey},
    {"picLRed", "Red", MwLRed},          {"picBRed", "Bright red", MwBRed},
    {"picLGreen", "Green", MwLGreen},    {"picBGreen", "Bright green", MwBGreen},
    {"PicYellow", "Yellow", MwYellow},   {"picOrange", "Orange", MwOrange},
    {"picLBlue", "Blue", MwLBlue},       {"picBBlue", "Bright blue", MwBBlue},
    {"picLPurple", "Purple", MwLPurple}, {"picBPurple", "Bright purple", MwBPurple},
    {"picLCyan", "Cyan", MwLCyan},       {"picBCyan", "Bright cyan", MwBCyan},
    {"picMwdef", "Default", MwDefault},
};

// The dialog opens: swatches, fonts and escape character are shown. Meant: picGrey is painted
// twice, the second time with light grey, and picLGrey is not painted.
void frmSetup_Load();

// Lets the player choose the colour of the swatch's slot. Meant: after a Cancel what the chooser
// held last is stored, black at first; and picGrey is painted, whichever swatch was clicked. Nests.
void Swatch_Click(std::size_t swatch);

// Lets the player choose the font of new output. Meant: what the settings keep is the output's base
// font. Nests.
void cmdFont_Click();

// Shows the palette's colours on all swatches, the output's base font, and ";" as the escape
// character; new output is in Courier 10. Meant: the palette stays as it is, and the font is
// written where nobody reads it.
void cmdDefault_Click();

// The escape character's box was edited: its whole text is the escape character from now on. An
// empty text changes nothing.
void txtEscChar_Change(const std::string& text);

} // namespace mw
