// The colour palette: 17 slots, named in the order of the configuration file.
//
// The colour decoder picks slots, the configuration file and the setup dialog write them. A colour
// is 0x00BBGGRR: red in the low byte. "L" slots are of normal intensity, "B" slots bright.
#pragma once

#include <array>
#include <cstdint>

namespace mw {

enum Slot {
    MwBlack,
    MwGrey,
    MwLGrey,
    MwLRed,
    MwBRed,
    MwLGreen,
    MwBGreen,
    MwYellow,
    MwOrange,
    MwLBlue,
    MwBBlue,
    MwLPurple,
    MwBPurple,
    MwLCyan,
    MwBCyan,
    MwWhite,
    MwDefault,
};

using PaletteTable = std::array<std::int32_t, MwDefault + 1>;

constexpr std::int32_t Rgb(std::int32_t red, std::int32_t green, std::int32_t blue) {
    return red | (green << 8) | (blue << 16);
}

inline constexpr PaletteTable kDefaultPalette = {
    Rgb(0, 0, 0),       // MwBlack
    Rgb(140, 140, 140), // MwGrey
    Rgb(211, 211, 211), // MwLGrey
    Rgb(140, 0, 0),     // MwLRed
    Rgb(255, 0, 0),     // MwBRed
    Rgb(0, 140, 0),     // MwLGreen
    Rgb(0, 255, 0),     // MwBGreen
    Rgb(255, 255, 0),   // MwYellow
    Rgb(255, 165, 0),   // MwOrange
    Rgb(0, 0, 160),     // MwLBlue
    Rgb(0, 0, 255),     // MwBBlue
    Rgb(140, 0, 140),   // MwLPurple
    Rgb(255, 0, 255),   // MwBPurple
    Rgb(0, 140, 140),   // MwLCyan
    Rgb(0, 255, 255),   // MwBCyan
    Rgb(255, 255, 255), // MwWhite
    Rgb(200, 200, 200), // MwDefault
};

// The colours in use. Zeros until the defaults are set at start-up.
inline PaletteTable Palette{};

} // namespace mw
