#include "automation/MacroKeys.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

#include <map>
#include <ostream>

namespace mw {
namespace {

constexpr std::int16_t kF1 = 112;
constexpr std::int16_t kF5 = 116;
constexpr std::int16_t kK = 75;
constexpr std::int16_t kKeypad8 = 104;

struct Case {
    const char* Name;
    const char* Separator;
    const char* Macro;
    const char* Sent;
    const char* Input; // what the command line holds then; "typed" stood there
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.Name; }

const Case kCases[] = {
    {"AFinalEscapeCharacterSendsAll", ";", "n;n;", "n\rn\r", "typed"},
    {"ALastPartWithoutItGoesIntoTheCommandLine", ";", "n;n", "n\r", "n"},
    {"ATextWithoutItIsTypedOnly", ";", "kill ", "", "kill "},
    {"AnEscapeCharacterAloneSendsABareCr", ";", ";", "\r", "typed"},
    {"TwoInARowSendABareCrBetween", ";", "n;;s;", "n\r\rs\r", "typed"},
    {"ALeadingOneSendsABareCrFirst", ";", ";look", "\r", "look"},
    {"AnotherSeparatorIsHeeded", "|", "a|b;c", "a\r", "b;c"},
    {"ASeparatorOfNoneSplitsNothing", "", "a;b;", "", "a;b;"},
    {"ASeparatorOfTwoSplitsNothing", ";;", "a;;b;", "", "a;;b;"},
    {"ABlankIsAPart", ";", "n; ", "n\r", " "},
    {"NoMacroDoesNothing", ";", "", "", "typed"},
};

class PlayedMacro : public RuleTest, public testing::WithParamInterface<Case> {};

TEST_P(PlayedMacro, SendsItsPartsAndTypesTheLast) {
    EscapeChar = GetParam().Separator;
    SetKeyText(MacroSets[0].NormKey, kF1, GetParam().Macro);
    fakes::Input = "typed";
    HandleMacroKey(kF1);
    EXPECT_EQ(fakes::Sent(), GetParam().Sent);
    EXPECT_EQ(fakes::Input, GetParam().Input);
}

INSTANTIATE_TEST_SUITE_P(Macros, PlayedMacro, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.Name; });

class MacroKeys : public RuleTest {
protected:
    MacroKeys() {
        MacroSets.resize(2);
        for (const int set : {0, 1}) {
            const std::string number = std::to_string(set);
            MacroSet& s = MacroSets[static_cast<std::size_t>(set)];
            for (const std::int16_t key : {kF5, kK}) {
                SetKeyText(s.NormKey, key, "plain" + number + ";");
                SetKeyText(s.AltKey, key, "alt" + number + ";");
                SetKeyText(s.CtrlKey, key, "ctrl" + number + ";");
                SetKeyText(s.ShiftKey, key, "shift" + number + ";");
            }
        }
    }

    static std::string SentBy(std::int16_t key) {
        fakes::Sends.clear();
        HandleMacroKey(key);
        return fakes::Sent();
    }
};

TEST_F(MacroKeys, PlainComeFromTheFirstSetWhateverIsCurrentOnPurpose) {
    EXPECT_EQ(SentBy(kF5), "plain0\r");
    CurrentMacroSet = 1;
    EXPECT_EQ(SentBy(kF5), "plain0\r");
    EXPECT_EQ(SentBy(kK), "plain0\r");
}

TEST_F(MacroKeys, PlainNeedNoCurrentSet) {
    CurrentMacroSet = 2;
    EXPECT_EQ(SentBy(kF5), "plain0\r");
}

TEST_F(MacroKeys, WithAltComeFromTheCurrentSet) {
    AltDown = true;
    EXPECT_EQ(SentBy(kK), "alt0\r");
    CurrentMacroSet = 1;
    EXPECT_EQ(SentBy(kK), "alt1\r");
}

TEST_F(MacroKeys, WithCtrlComeFromTheCurrentSet) {
    CtrlDown = true;
    EXPECT_EQ(SentBy(kK), "ctrl0\r");
    CurrentMacroSet = 1;
    EXPECT_EQ(SentBy(kK), "ctrl1\r");
}

TEST_F(MacroKeys, WithCtrlAndAltAreCtrls) {
    CtrlDown = AltDown = true;
    EXPECT_EQ(SentBy(kK), "ctrl0\r");
}

TEST_F(MacroKeys, WithShiftAreThePlainOnesIsMeant) {
    ShiftDown = true;
    EXPECT_EQ(SentBy(kK), "plain0\r");
    CtrlDown = true;
    EXPECT_EQ(SentBy(kK), "ctrl0\r");
}

TEST_F(MacroKeys, AreNotPlayedFromAnotherTableWhenTheirsHasNone) {
    SetKeyText(MacroSets[0].CtrlKey, kK, "");
    SetKeyText(MacroSets[0].AltKey, kK, "");
    CtrlDown = true;
    EXPECT_EQ(SentBy(kK), "");
    CtrlDown = false;
    AltDown = true;
    EXPECT_EQ(SentBy(kK), "");
}

TEST_F(MacroKeys, WithAModifierNeedACurrentSet) {
    CurrentMacroSet = 2;
    AltDown = true;
    EXPECT_EQ(ErrorOf([] { HandleMacroKey(kK); }), SubscriptOutOfRange);
    AltDown = false;
    CtrlDown = true;
    EXPECT_EQ(ErrorOf([] { HandleMacroKey(kK); }), SubscriptOutOfRange);
    EXPECT_TRUE(fakes::Sends.empty());
}

TEST_F(MacroKeys, MayHaveAnyCodeFrom0To255) {
    SetKeyText(MacroSets[0].NormKey, 0, "zero;");
    SetKeyText(MacroSets[0].NormKey, 255, "last;");
    EXPECT_EQ(SentBy(0), "zero\r");
    EXPECT_EQ(SentBy(255), "last\r");
}

TEST_F(MacroKeys, OfOtherCodesAreAnError) {
    for (const int code : {-1, 256, 32767, -32768}) {
        const auto key = static_cast<std::int16_t>(code);
        EXPECT_EQ(ErrorOf([key] { HandleMacroKey(key); }), SubscriptOutOfRange) << code;
        EXPECT_EQ(ErrorOf([key] { HasMacro(key); }), SubscriptOutOfRange) << code;
    }
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(MacroKeys, PutTheirLastPartIntoTheCommandLineWithTheCaretAtItsEnd) {
    SetKeyText(MacroSets[0].NormKey, kF1, "kill ");
    fakes::Input = "half a command";
    HandleMacroKey(kF1);
    EXPECT_EQ(fakes::Input, "kill ");
    EXPECT_EQ(fakes::SelStart, 5u);
    EXPECT_EQ(fakes::SelLength, 0u);
    EXPECT_EQ(fakes::Calls, (std::vector<std::string>{"Input kill ", "Select 5 0"}));
}

TEST_F(MacroKeys, SendFirstAndTypeThen) {
    SetKeyText(MacroSets[0].NormKey, kF1, "n;s");
    HandleMacroKey(kF1);
    EXPECT_EQ(fakes::Calls,
              (std::vector<std::string>{"Send n", "Send \r", "Input s", "Select 1 0"}));
}

TEST_F(MacroKeys, LeaveTheCommandLineAloneWhenNothingIsLeftToType) {
    fakes::Input = "typed";
    fakes::SelStart = 2;
    EXPECT_EQ(SentBy(kF5), "plain0\r");
    EXPECT_EQ(fakes::Input, "typed");
    EXPECT_EQ(fakes::SelStart, 2u);
}

TEST_F(MacroKeys, AreNotEchoedNotExpandedAndNotInTheHistory) {
    EchoOn = true;
    CurrentSet().Aliases = {{"p", "x", true}};
    EXPECT_EQ(SentBy(kF5), "plain0\r");
    EXPECT_EQ(fakes::Shown, "");
    EXPECT_TRUE(fakes::Items.empty());
}

TEST_F(MacroKeys, SwallowNoCharacterUnlessTheKeypadWalks) {
    HandleMacroKey(kF5);
    EXPECT_FALSE(SwallowKeyPress);
}

TEST_F(MacroKeys, AreFoundByHasMacroWithTheModifiersHeld) {
    SetKeyText(MacroSets[1].AltKey, 'X', "x");
    EXPECT_TRUE(HasMacro(kK));
    EXPECT_FALSE(HasMacro('X'));
    AltDown = true;
    EXPECT_FALSE(HasMacro('X'));
    CurrentMacroSet = 1;
    EXPECT_TRUE(HasMacro('X'));
    EXPECT_FALSE(HasMacro(kKeypad8));
    EXPECT_TRUE(fakes::Calls.empty());
}

const std::map<int, std::string> kKeypad = {
    {97, "southwest"},  {98, "south"}, {99, "southeast"},  {100, "west"},
    {101, "look"},      {102, "east"}, {103, "northwest"}, {104, "north"},
    {105, "northeast"}, {107, "down"}, {109, "up"},
};

class Keypad : public RuleTest {};

TEST_F(Keypad, WalksByElevenKeysAndNoOther) {
    for (std::int16_t code = 0; code <= 255; ++code) {
        fakes::Sends.clear();
        SwallowKeyPress = false;
        HandleMacroKey(code);
        const auto row = kKeypad.find(code);
        const bool walks = row != kKeypad.end();
        EXPECT_EQ(fakes::Sent(), walks ? row->second + "\r" : "") << "key " << code;
        EXPECT_EQ(SwallowKeyPress, walks) << "key " << code;
        EXPECT_EQ(KeypadCommand(code), walks ? row->second : "") << "key " << code;
    }
    EXPECT_EQ(fakes::Input, "");
}

TEST_F(Keypad, HasNoCommandForCodesThatAreNoKeys) {
    for (const int code : {-1, 256, 360, -152})
        EXPECT_EQ(KeypadCommand(static_cast<std::int16_t>(code)), "") << code;
}

TEST_F(Keypad, WalksWithCtrlOrAltToo) {
    CtrlDown = true;
    HandleMacroKey(kKeypad8);
    CtrlDown = false;
    AltDown = true;
    HandleMacroKey(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "north\rnorth\r");
}

TEST_F(Keypad, WalksAfterTheMacroOfTheSameKeyIsMeant) {
    SetKeyText(CurrentSet().CtrlKey, kKeypad8, "open door;");
    CtrlDown = true;
    HandleMacroKey(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "open door\rnorth\r");
    EXPECT_TRUE(SwallowKeyPress);
}

TEST_F(Keypad, WalksAfterAMacroThatIsOnlyTyped) {
    SetKeyText(CurrentSet().NormKey, 109, "climb ");
    HandleMacroKey(109);
    EXPECT_EQ(fakes::Input, "climb ");
    EXPECT_EQ(fakes::Sent(), "up\r");
}

TEST_F(Keypad, WalksNowhereWithZeroButPlaysItsMacro) {
    SetKeyText(CurrentSet().NormKey, 96, "score;");
    HandleMacroKey(96);
    EXPECT_EQ(fakes::Sent(), "score\r");
    EXPECT_FALSE(SwallowKeyPress);
}

TEST_F(Keypad, LeavesTheCommandLineAlone) {
    fakes::Input = "typed";
    HandleMacroKey(kKeypad8);
    EXPECT_EQ(fakes::Input, "typed");
}

TEST_F(Keypad, SendsItsCommandThroughTheSendRules) {
    EscapeChar = "o";
    HandleMacroKey(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "n\rrth\r");
    fakes::SocketState = SocketClosed;
    fakes::Sends.clear();
    HandleMacroKey(kKeypad8);
    EXPECT_EQ(fakes::Sent(), "\r\r");
}

} // namespace
} // namespace mw
