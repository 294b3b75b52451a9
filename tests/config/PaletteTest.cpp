#include "config/Palette.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>

namespace mw {
namespace {

struct SlotRow {
    const char* Name;
    Slot Number;
    std::int32_t Red, Green, Blue;
    std::int32_t Written;
};

void PrintTo(const SlotRow& row, std::ostream* out) { *out << row.Name; }

// In the order of the configuration file.
const SlotRow kRows[] = {
    {"MwBlack", MwBlack, 0, 0, 0, 0x0},
    {"MwGrey", MwGrey, 140, 140, 140, 0x8C8C8C},
    {"MwLGrey", MwLGrey, 211, 211, 211, 0xD3D3D3},
    {"MwLRed", MwLRed, 140, 0, 0, 0x8C},
    {"MwBRed", MwBRed, 255, 0, 0, 0xFF},
    {"MwLGreen", MwLGreen, 0, 140, 0, 0x8C00},
    {"MwBGreen", MwBGreen, 0, 255, 0, 0xFF00},
    {"MwYellow", MwYellow, 255, 255, 0, 0xFFFF},
    {"MwOrange", MwOrange, 255, 165, 0, 0xA5FF},
    {"MwLBlue", MwLBlue, 0, 0, 160, 0xA00000},
    {"MwBBlue", MwBBlue, 0, 0, 255, 0xFF0000},
    {"MwLPurple", MwLPurple, 140, 0, 140, 0x8C008C},
    {"MwBPurple", MwBPurple, 255, 0, 255, 0xFF00FF},
    {"MwLCyan", MwLCyan, 0, 140, 140, 0x8C8C00},
    {"MwBCyan", MwBCyan, 0, 255, 255, 0xFFFF00},
    {"MwWhite", MwWhite, 255, 255, 255, 0xFFFFFF},
    {"MwDefault", MwDefault, 200, 200, 200, 0xC8C8C8},
};

class DefaultColour : public testing::TestWithParam<SlotRow> {};

TEST_P(DefaultColour, StandsInItsSlotWithRedInTheLowByte) {
    const SlotRow& row = GetParam();
    EXPECT_EQ(kDefaultPalette[row.Number], row.Written);
    EXPECT_EQ(Rgb(row.Red, row.Green, row.Blue), row.Written);
}

INSTANTIATE_TEST_SUITE_P(Slots, DefaultColour, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.Name; });

TEST(PaletteSlots, AreSeventeenInTheOrderOfTheFile) {
    EXPECT_EQ(kDefaultPalette.size(), 17u);
    ASSERT_EQ(std::size(kRows), 17u);
    for (std::size_t i = 0; i < std::size(kRows); ++i)
        EXPECT_EQ(static_cast<std::size_t>(kRows[i].Number), i) << kRows[i].Name;
}

const PaletteTable kAtProgramStart = Palette;

TEST(PaletteSlots, HoldZerosUntilTheDefaultsAreSet) {
    EXPECT_EQ(std::count(kAtProgramStart.begin(), kAtProgramStart.end(), 0), 17);
}

} // namespace
} // namespace mw
