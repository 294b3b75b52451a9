#include "config/FileHandler.h"

#include <gtest/gtest.h>
#include <ostream>

namespace mw {
namespace {

using namespace std::string_literals;

struct Name {
    const char* What;
    std::string Text;
    bool IsFileName;
    bool IsRelativeName;
};

void PrintTo(const Name& name, std::ostream* out) { *out << name.What; }

const Name kNames[] = {
    // One component: both or neither.
    {"AWord", "rain.wav", true, true},
    {"TwoWords", "rain storm.wav", true, true},
    {"NoExtension", "rain", true, true},
    {"OnlyAnExtension", ".wav", true, true},
    {"TwoDotsInside", "a..wav", true, true},
    {"TwoDotsInFront", "..wav", true, true},
    {"TwoDotsBehind", "rain..", true, true},
    {"ThreeDots", "...", true, true},
    {"ABlank", " ", true, true},
    {"HighCharacters", "caf\xe9\x80.wav", true, true},
    {"Percents", "%2e%2e%2fetc", true, true},
    {"Tilde", "~", true, true},
    {"DataIsNoFolderHere", "Data", true, true},
    {"TheLongest", std::string(240, 'x'), true, true},
    {"NothingButAnExtensionToCome", "", true, false},
    {"Dot", ".", false, false},
    {"TwoDots", "..", false, false},
    {"ADrive", "C:", false, false},
    {"AFileOnADrive", "C:rain.wav", false, false},
    {"AStream", "rain.wav:hidden", false, false},
    {"ANul", "rain\0.wav"s, false, false},
    {"ALineFeed", "ra\nin.wav", false, false},
    {"ACarriageReturn", "rain.wav\r", false, false},
    {"ATab", "\train.wav", false, false},
    {"AnEsc", "\x1b[0m.wav", false, false},
    {"TheLastControlCharacter", "a\x1f.wav", false, false},
    {"OneLongerThanTheLongest", std::string(241, 'x'), false, false},
    {"FarTooLong", std::string(5000, 'x'), false, false},
    {"TooLongInUnicode", std::string(200, '\xe9'), false, false},

    // Several components that stay below.
    {"ASlashInside", "weather/rain.wav", false, true},
    {"ABackslashInside", "weather\\rain.wav", false, true},
    {"SlashesOfBothKinds", "a/b\\c/rain.wav", false, true},
    {"DotsAreNoComponentOfTheirOwn", "..a/b../c.wav", false, true},
    {"EachComponentAsLongAsItMayBe", std::string(240, 'x') + "/" + std::string(240, 'y'), false,
     true},

    // Those that lead away, or nowhere.
    {"ASlash", "/", false, false},
    {"ABackslash", "\\", false, false},
    {"AnAbsolutePath", "/etc/passwd", false, false},
    {"AnAbsolutePathByABackslash", "\\rain.wav", false, false},
    {"AServersShare", "\\\\server\\share\\rain.wav", false, false},
    {"ADrivesPath", "C:\\rain.wav", false, false},
    {"ADriveFurtherDown", "a/C:/rain.wav", false, false},
    {"ASlashBehind", "weather/", false, false},
    {"ABackslashBehind", "weather\\", false, false},
    {"TwoSlashes", "weather//rain.wav", false, false},
    {"ASlashAndABackslash", "weather/\\rain.wav", false, false},
    {"Up", "../rain.wav", false, false},
    {"UpByABackslash", "..\\rain.wav", false, false},
    {"UpInside", "weather/../rain.wav", false, false},
    {"UpInsideByBackslashes", "weather\\..\\rain.wav", false, false},
    {"UpBySlashesOfBothKinds", "weather/..\\..\\rain.wav", false, false},
    {"UpAndAway", "weather/../../../rain.wav", false, false},
    {"UpAtTheEnd", "weather/..", false, false},
    {"HereInside", "weather/./rain.wav", false, false},
    {"HereInFront", "./rain.wav", false, false},
    {"AControlCharacterFurtherDown", "weather/ra\nin.wav", false, false},
    {"ANulBeforeASlash", "a\0/rain.wav"s, false, false},
    {"AComponentThatIsTooLong", "a/" + std::string(241, 'x'), false, false},
};

class Names : public testing::TestWithParam<Name> {};

TEST_P(Names, AreOfOneFileOrNot) { EXPECT_EQ(IsFileName(GetParam().Text), GetParam().IsFileName); }

TEST_P(Names, LeadToAPlaceBelowOrNot) {
    EXPECT_EQ(IsRelativeName(GetParam().Text), GetParam().IsRelativeName);
}

INSTANTIATE_TEST_SUITE_P(Names, Names, testing::ValuesIn(kNames),
                         [](const auto& row) { return row.param.What; });

} // namespace
} // namespace mw
