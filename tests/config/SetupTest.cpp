#include "config/Setup.h"

#include "base/Globals.h"
#include "config/ClientConfig.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "terminal/Ansi.h"
#include "terminal/IncomingBuffer.h"
#include "terminal/Output.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace mw {
namespace {

using Steps = std::vector<std::string>;
using Settings = std::map<std::string, std::string>;

constexpr std::size_t kSwatchCount = std::size(kSwatches);

// The palette with a colour of its own in each slot.
PaletteTable DistinctColours() {
    PaletteTable colours{};
    for (std::size_t slot = 0; slot < colours.size(); ++slot)
        colours[slot] = Rgb(static_cast<std::int32_t>(slot), 16, 32);
    return colours;
}

class SetupRules : public RuleTest {
protected:
    SetupRules() { Palette = DistinctColours(); }

    static std::string Painted(std::size_t swatch, std::int32_t colour) {
        std::ostringstream call;
        call << "Swatch " << swatch << ' ' << std::hex << colour;
        return call.str();
    }

    // The calls that begin with that word, in order.
    static Steps Calls(const std::string& verb) {
        Steps found;
        std::ranges::copy_if(fakes::Calls, std::back_inserter(found),
                             [&](const std::string& call) { return call.starts_with(verb + ' '); });
        return found;
    }

    // As the box does: what fills it changes it.
    static void LetTheBoxTellOfItsChanges() {
        fakes::OnCall = [](const std::string& call) {
            const std::string verb = "txtEscChar ";
            if (call.starts_with(verb))
                txtEscChar_Change(call.substr(verb.size()));
        };
    }

    static Steps Choose(std::size_t swatch, std::optional<std::int32_t> colour) {
        fakes::Calls.clear();
        fakes::NextColour = colour;
        Swatch_Click(swatch);
        return fakes::Calls;
    }

    static void ChooseFont(const std::optional<FontChoice>& font) {
        fakes::Calls.clear();
        fakes::NextFont = font;
        cmdFont_Click();
    }

    // What the settings store holds of the font.
    static Settings FontInStore() {
        Settings found;
        for (const auto& [path, values] : fakes::Registry) {
            for (const auto& [name, value] : values)
                found[path + "\\" + name] = value.Data.substr(0, value.Data.size() - 1);
        }
        return found;
    }
};

TEST_F(SetupRules, FifteenSwatchesStandForAllSlotsButBlackAndWhite) {
    std::set<int> slots;
    std::set<std::string> controls;
    std::set<std::string> colours;
    for (const Swatch& swatch : kSwatches) {
        slots.insert(swatch.PaletteSlot);
        controls.insert(swatch.Control);
        colours.insert(swatch.Colour);
    }
    EXPECT_EQ(kSwatchCount, 15u);
    EXPECT_EQ(slots.size(), 15u);
    EXPECT_EQ(controls.size(), 15u);
    EXPECT_EQ(colours.size(), 15u);
    EXPECT_FALSE(slots.contains(MwBlack));
    EXPECT_FALSE(slots.contains(MwWhite));
}

struct Row {
    const char* Control;
    std::size_t Swatch;
    Slot PaletteSlot;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.Control; }

class EachSwatch : public SetupRules, public testing::WithParamInterface<Row> {};

const Row kRows[] = {
    {"picGrey", 0, MwGrey},     {"picLGrey", 1, MwLGrey},      {"picLRed", 2, MwLRed},
    {"picBRed", 3, MwBRed},     {"picLGreen", 4, MwLGreen},    {"picBGreen", 5, MwBGreen},
    {"PicYellow", 6, MwYellow}, {"picOrange", 7, MwOrange},    {"picLBlue", 8, MwLBlue},
    {"picBBlue", 9, MwBBlue},   {"picLPurple", 10, MwLPurple}, {"picBPurple", 11, MwBPurple},
    {"picLCyan", 12, MwLCyan},  {"picBCyan", 13, MwBCyan},     {"picMwdef", 14, MwDefault},
};

INSTANTIATE_TEST_SUITE_P(Swatches, EachSwatch, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.Control); });

TEST_P(EachSwatch, HasItsOwnSlot) {
    const Swatch& swatch = kSwatches[GetParam().Swatch];
    EXPECT_STREQ(swatch.Control, GetParam().Control);
    EXPECT_EQ(swatch.PaletteSlot, GetParam().PaletteSlot);
}

TEST_P(EachSwatch, StoresTheChosenColourInItsSlotAndInNoOther) {
    PaletteTable expected = Palette;
    expected[GetParam().PaletteSlot] = 0x123456;
    frmSetup_Load();
    Choose(GetParam().Swatch, 0x123456);
    EXPECT_EQ(Palette, expected);
}

TEST_P(EachSwatch, ShowsTheNewColourOnPicGreyOnPurpose) {
    frmSetup_Load();
    EXPECT_EQ(Choose(GetParam().Swatch, 0x123456),
              (Steps{"ShowColourChooser 0", "Swatch 0 123456"}));
}

TEST_P(EachSwatch, ShowsItsSlotAfterDefault) {
    cmdDefault_Click();
    const Steps painted = Calls("Swatch");
    ASSERT_EQ(painted.size(), kSwatchCount);
    EXPECT_EQ(painted[GetParam().Swatch],
              Painted(GetParam().Swatch, Palette[GetParam().PaletteSlot]));
}

class Opening : public SetupRules {};

TEST_F(Opening, PaintsPicGreyTwiceAndPicLGreyNotOnPurpose) {
    Steps expected = {Painted(0, Palette[MwGrey]), Painted(0, Palette[MwLGrey])};
    for (std::size_t swatch = 2; swatch < kSwatchCount; ++swatch)
        expected.push_back(Painted(swatch, Palette[kSwatches[swatch].PaletteSlot]));
    frmSetup_Load();
    EXPECT_EQ(Calls("Swatch"), expected);
}

TEST_F(Opening, ShowsTheFontAndTheEscapeCharacter) {
    OutputFontName = "Times";
    OutputFontSize = "14";
    EscapeChar = "||";
    frmSetup_Load();
    EXPECT_EQ(Calls("txtEscChar"), Steps{"txtEscChar ||"});
    EXPECT_EQ(Calls("ShowFont"), Steps{"ShowFont Times 14"});
}

TEST_F(Opening, ChangesNothingButWhatFillingTheEscapeBoxWrites) {
    LetTheBoxTellOfItsChanges();
    EscapeChar = "#";
    const PaletteTable before = Palette;
    frmSetup_Load();
    EXPECT_EQ(Palette, before);
    EXPECT_EQ(EscapeChar, "#");
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(OutputFontSize, "10");
    EXPECT_EQ(fakes::UserSettings, (Settings{{"MwClient/Settings/EscChar", "#"}}));
    EXPECT_TRUE(FontInStore().empty());
}

TEST_F(Opening, WithoutAnEscapeCharacterWritesNone) {
    LetTheBoxTellOfItsChanges();
    EscapeChar.clear();
    frmSetup_Load();
    EXPECT_EQ(EscapeChar, "");
    EXPECT_TRUE(fakes::UserSettings.empty());
}

TEST_F(Opening, FilesAreLeftForTheStop) {
    const FreshFolder folder;
    frmSetup_Load();
    Choose(3, 0x123456);
    ChooseFont(FontChoice{"Times", "14"});
    cmdDefault_Click();
    txtEscChar_Change("#");
    EXPECT_TRUE(folder.IsEmpty());
}

class ColourChooser : public SetupRules {
protected:
    ColourChooser() { frmSetup_Load(); }
};

TEST_F(ColourChooser, IsNotPresetWithTheSlotsColour) {
    EXPECT_EQ(Choose(3, 0x0000AA).front(), "ShowColourChooser 0");
}

TEST_F(ColourChooser, StoresBlackAfterItsFirstCancelOnPurpose) {
    EXPECT_EQ(Choose(3, std::nullopt), (Steps{"ShowColourChooser 0", "Swatch 0 0"}));
    EXPECT_EQ(Palette[MwBRed], 0);
}

TEST_F(ColourChooser, StoresTheColourItLastHeldAfterALaterCancelOnPurpose) {
    Choose(3, 0x445566);
    EXPECT_EQ(Choose(9, std::nullopt), (Steps{"ShowColourChooser 445566", "Swatch 0 445566"}));
    EXPECT_EQ(Palette[MwBRed], 0x445566);
    EXPECT_EQ(Palette[MwBBlue], 0x445566);
    Choose(6, 0x000001);
    Choose(3, std::nullopt);
    EXPECT_EQ(Palette[MwBRed], 0x000001);
}

TEST_F(ColourChooser, BeginsWithBlackEachTimeTheDialogOpens) {
    Choose(3, 0x445566);
    frmSetup_Load();
    EXPECT_EQ(Choose(9, std::nullopt).front(), "ShowColourChooser 0");
    EXPECT_EQ(Palette[MwBBlue], 0);
}

TEST_F(ColourChooser, TakesBlackAndWhiteAsItTakesAnyColour) {
    Choose(3, 0xFFFFFF);
    EXPECT_EQ(Palette[MwBRed], 0xFFFFFF);
    Choose(3, 0);
    EXPECT_EQ(Palette[MwBRed], 0);
    EXPECT_EQ(Palette[MwBlack], DistinctColours()[MwBlack]);
    EXPECT_EQ(Palette[MwWhite], DistinctColours()[MwWhite]);
}

TEST_F(ColourChooser, GivesTheColourToTheNextColourSequenceAndNotToTheTextUnderWay) {
    const std::string_view red = "\x1b[0;1;31m";
    Append(IncomingBuffer, red);
    DecodeAnsi();
    ASSERT_EQ(CurrentColour, Palette[MwBRed]);
    const std::int32_t before = CurrentColour;
    Choose(3, 0x00AA00);
    EXPECT_EQ(CurrentColour, before);
    Append(IncomingBuffer, red);
    DecodeAnsi();
    EXPECT_EQ(CurrentColour, 0x00AA00);
}

class FontButton : public SetupRules {};

TEST_F(FontButton, BeginsWithTheFontOfTheOutput) {
    OutputFontName = "Times";
    OutputFontSize = "14";
    ChooseFont(FontChoice{"Arial", "9"});
    EXPECT_EQ(fakes::Calls.front(), "ShowFontChooser Times 14");
}

TEST_F(FontButton, GivesTheChosenFontToNewOutputAndShowsItInItself) {
    ChooseFont(FontChoice{"Times", "14"});
    EXPECT_EQ(OutputFontName, "Times");
    EXPECT_EQ(OutputFontSize, "14");
    EXPECT_EQ(Calls("ShowFont"), Steps{"ShowFont Times 14 in itself"});
    std::string text = "Hello";
    AppendOutput(text);
    ASSERT_EQ(fakes::Runs.size(), 1u);
    EXPECT_EQ(fakes::Runs[0].FontName, "Times");
    EXPECT_EQ(fakes::Runs[0].FontSize, "14");
}

// The key "Font" has the size and the key "Name" the name, of the box's own font.
const Settings kBaseFontInStore = {{"SOFTWARE\\MwClient\\Settings\\Font", "10"},
                                   {"SOFTWARE\\MwClient\\Settings\\Name", "Courier"}};

TEST_F(FontButton, KeepsTheBaseFontInTheStoreInsteadOfTheChosenOneOnPurpose) {
    ChooseFont(FontChoice{"Times", "14"});
    EXPECT_EQ(FontInStore(), kBaseFontInStore);
    EXPECT_TRUE(fakes::UserSettings.empty());
}

TEST_F(FontButton, WritesAfterACancelTooOnPurpose) {
    OutputFontName = "Times";
    OutputFontSize = "14";
    ChooseFont(std::nullopt);
    EXPECT_EQ(FontInStore(), kBaseFontInStore);
    EXPECT_EQ(OutputFontName, "Times");
    EXPECT_EQ(OutputFontSize, "14");
    EXPECT_EQ(Calls("ShowFont"), Steps{"ShowFont Times 14 in itself"});
}

TEST_F(FontButton, TellsOfAStoreThatCantBeWrittenAndGoesOn) {
    fakes::CreateCode = 5;
    ChooseFont(FontChoice{"Times", "14"});
    EXPECT_EQ(Calls("Panel").size(), 2u);
    EXPECT_EQ(OutputFontName, "Times");
    EXPECT_EQ(Calls("ShowFont"), Steps{"ShowFont Times 14 in itself"});
}

class DefaultButton : public SetupRules {};

TEST_F(DefaultButton, LeavesThePaletteAsItIsOnPurpose) {
    const PaletteTable before = Palette;
    cmdDefault_Click();
    EXPECT_EQ(Palette, before);
}

TEST_F(DefaultButton, PaintsEverySwatchOnceInItsOwnColour) {
    Steps expected;
    for (std::size_t swatch = 0; swatch < kSwatchCount; ++swatch)
        expected.push_back(Painted(swatch, Palette[kSwatches[swatch].PaletteSlot]));
    cmdDefault_Click();
    EXPECT_EQ(Calls("Swatch"), expected);
}

TEST_F(DefaultButton, SetsTheFontAndWritesItWhereNobodyReadsItOnPurpose) {
    OutputFontName = "Times";
    OutputFontSize = "14";
    cmdDefault_Click();
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(OutputFontSize, "10");
    EXPECT_EQ(fakes::UserSettings,
              (Settings{{"MwClient/Settings/Font", "10"}, {"MwClient/Settings/Name", "Courier"}}));
    EXPECT_TRUE(FontInStore().empty());
    EXPECT_EQ(Calls("ShowFont"), Steps{"ShowFont Courier 10"});
}

TEST_F(DefaultButton, SetsTheEscapeCharacterThroughItsBox) {
    EscapeChar = "||";
    cmdDefault_Click();
    EXPECT_EQ(Calls("txtEscChar"), Steps{"txtEscChar ;"});
    EXPECT_EQ(EscapeChar, "||") << "the box has not told of a change";
    LetTheBoxTellOfItsChanges();
    cmdDefault_Click();
    EXPECT_EQ(EscapeChar, ";");
    EXPECT_EQ(fakes::UserSettings["MwClient/Settings/EscChar"], ";");
}

TEST_F(DefaultButton, LeavesTheColourThatTheChooserHolds) {
    frmSetup_Load();
    Choose(3, 0x445566);
    cmdDefault_Click();
    Choose(9, std::nullopt);
    EXPECT_EQ(Palette[MwBBlue], 0x445566);
}

struct Escape {
    const char* Name;
    std::string Text;
};

void PrintTo(const Escape& row, std::ostream* out) { *out << row.Name; }

class EscapeTexts : public SetupRules, public testing::WithParamInterface<Escape> {};

const Escape kEscapes[] = {
    {"OneCharacter", "#"}, {"TwoCharacters", "||"},   {"ManyCharacters", std::string(1000, 'x')},
    {"ABlank", " "},       {"AnEqualsSign", "="},     {"ABracket", "["},
    {"ItsOwnKey", "Esc"},  {"AByteAbove127", "\xA7"},
};

INSTANTIATE_TEST_SUITE_P(Rows, EscapeTexts, testing::ValuesIn(kEscapes),
                         [](const auto& row) { return row.param.Name; });

TEST_P(EscapeTexts, AreTakenWhole) {
    txtEscChar_Change(GetParam().Text);
    EXPECT_EQ(EscapeChar, GetParam().Text);
    EXPECT_EQ(fakes::UserSettings, (Settings{{"MwClient/Settings/EscChar", GetParam().Text}}));
    EXPECT_TRUE(FontInStore().empty());
}

TEST_P(EscapeTexts, ComeBackFromTheFile) {
    const FreshFolder folder;
    std::filesystem::create_directory(folder.Path / "Data");
    txtEscChar_Change(GetParam().Text);
    SaveClientConfig();
    EscapeChar = "before";
    LoadClientConfig();
    // The reader takes what stands behind the first equals sign, so all of it.
    EXPECT_EQ(EscapeChar, GetParam().Text);
}

class EscapeBox : public SetupRules {};

TEST_F(EscapeBox, EmptiedKeepsTheCharacterBefore) {
    txtEscChar_Change("#");
    txtEscChar_Change("");
    EXPECT_EQ(EscapeChar, "#");
    EXPECT_EQ(fakes::UserSettings, (Settings{{"MwClient/Settings/EscChar", "#"}}));
}

TEST_F(EscapeBox, EmptyAtFirstWritesNothing) {
    txtEscChar_Change("");
    EXPECT_EQ(EscapeChar, ";");
    EXPECT_TRUE(fakes::UserSettings.empty());
}

TEST_F(EscapeBox, GrowsByEachCharacterTyped) {
    txtEscChar_Change("|");
    EXPECT_EQ(EscapeChar, "|");
    txtEscChar_Change("||");
    EXPECT_EQ(EscapeChar, "||");
}

} // namespace
} // namespace mw
