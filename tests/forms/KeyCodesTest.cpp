#include "ui/qt/KeyCodes.h"

#include <gtest/gtest.h>
#include <ostream>

namespace mw {
namespace {

struct Case {
    const char* Name;
    int Key;
    Qt::KeyboardModifiers Modifiers;
    std::int16_t Code;
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.Name; }

constexpr Qt::KeyboardModifiers kNone = Qt::NoModifier;
constexpr Qt::KeyboardModifiers kKeypad = Qt::KeypadModifier;

const Case kCases[] = {
    {"Backspace", Qt::Key_Backspace, kNone, 8},
    {"Tab", Qt::Key_Tab, kNone, 9},
    {"BackTab", Qt::Key_Backtab, Qt::ShiftModifier, 9},
    {"Return", Qt::Key_Return, kNone, 13},
    {"KeypadEnter", Qt::Key_Enter, kKeypad, 13},
    {"Shift", Qt::Key_Shift, Qt::ShiftModifier, 16},
    {"Control", Qt::Key_Control, Qt::ControlModifier, 17},
    {"Alt", Qt::Key_Alt, Qt::AltModifier, 18},
    {"AltGrIsNeitherControlNorAlt", Qt::Key_AltGr, kNone, 0},
    {"AltGrWithItsGroup", Qt::Key_AltGr, Qt::GroupSwitchModifier, 0},
    {"Pause", Qt::Key_Pause, kNone, 19},
    {"CapsLock", Qt::Key_CapsLock, kNone, 20},
    {"Escape", Qt::Key_Escape, kNone, 27},
    {"Space", Qt::Key_Space, kNone, 32},
    {"PageUp", Qt::Key_PageUp, kNone, 33},
    {"PageDown", Qt::Key_PageDown, kNone, 34},
    {"End", Qt::Key_End, kNone, 35},
    {"Home", Qt::Key_Home, kNone, 36},
    {"Left", Qt::Key_Left, kNone, 37},
    {"Up", Qt::Key_Up, kNone, 38},
    {"Right", Qt::Key_Right, kNone, 39},
    {"Down", Qt::Key_Down, kNone, 40},
    {"Print", Qt::Key_Print, kNone, 44},
    {"Insert", Qt::Key_Insert, kNone, 45},
    {"Delete", Qt::Key_Delete, kNone, 46},
    {"Meta", Qt::Key_Meta, kNone, 91},
    {"LeftSuper", Qt::Key_Super_L, kNone, 91},
    {"RightSuper", Qt::Key_Super_R, kNone, 92},
    {"Menu", Qt::Key_Menu, kNone, 93},
    {"NumLock", Qt::Key_NumLock, kNone, 144},
    {"ScrollLock", Qt::Key_ScrollLock, kNone, 145},
    {"Semicolon", Qt::Key_Semicolon, kNone, 186},
    {"Equal", Qt::Key_Equal, kNone, 187},
    {"Comma", Qt::Key_Comma, kNone, 188},
    {"Minus", Qt::Key_Minus, kNone, 189},
    {"Period", Qt::Key_Period, kNone, 190},
    {"Slash", Qt::Key_Slash, kNone, 191},
    {"QuoteLeft", Qt::Key_QuoteLeft, kNone, 192},
    {"BracketLeft", Qt::Key_BracketLeft, kNone, 219},
    {"Backslash", Qt::Key_Backslash, kNone, 220},
    {"BracketRight", Qt::Key_BracketRight, kNone, 221},
    {"Apostrophe", Qt::Key_Apostrophe, kNone, 222},

    {"ShiftOne", Qt::Key_Exclam, Qt::ShiftModifier, 49},
    {"ShiftTwo", Qt::Key_At, Qt::ShiftModifier, 50},
    {"ShiftThree", Qt::Key_NumberSign, Qt::ShiftModifier, 51},
    {"ShiftFour", Qt::Key_Dollar, Qt::ShiftModifier, 52},
    {"ShiftFive", Qt::Key_Percent, Qt::ShiftModifier, 53},
    {"ShiftSix", Qt::Key_AsciiCircum, Qt::ShiftModifier, 54},
    {"ShiftSeven", Qt::Key_Ampersand, Qt::ShiftModifier, 55},
    {"ShiftEight", Qt::Key_Asterisk, Qt::ShiftModifier, 56},
    {"ShiftNine", Qt::Key_ParenLeft, Qt::ShiftModifier, 57},
    {"ShiftZero", Qt::Key_ParenRight, Qt::ShiftModifier, 48},
    {"ShiftSemicolon", Qt::Key_Colon, Qt::ShiftModifier, 186},
    {"ShiftEqual", Qt::Key_Plus, Qt::ShiftModifier, 187},
    {"ShiftComma", Qt::Key_Less, Qt::ShiftModifier, 188},
    {"ShiftMinus", Qt::Key_Underscore, Qt::ShiftModifier, 189},
    {"ShiftPeriod", Qt::Key_Greater, Qt::ShiftModifier, 190},
    {"ShiftSlash", Qt::Key_Question, Qt::ShiftModifier, 191},
    {"ShiftQuoteLeft", Qt::Key_AsciiTilde, Qt::ShiftModifier, 192},
    {"ShiftBracketLeft", Qt::Key_BraceLeft, Qt::ShiftModifier, 219},
    {"ShiftBackslash", Qt::Key_Bar, Qt::ShiftModifier, 220},
    {"ShiftBracketRight", Qt::Key_BraceRight, Qt::ShiftModifier, 221},
    {"ShiftApostrophe", Qt::Key_QuoteDbl, Qt::ShiftModifier, 222},

    {"KeypadAsterisk", Qt::Key_Asterisk, kKeypad, 106},
    {"KeypadPlus", Qt::Key_Plus, kKeypad, 107},
    {"KeypadMinus", Qt::Key_Minus, kKeypad, 109},
    {"KeypadPeriod", Qt::Key_Period, kKeypad, 110},
    {"KeypadCommaOfOtherLayouts", Qt::Key_Comma, kKeypad, 110},
    {"KeypadSlash", Qt::Key_Slash, kKeypad, 111},

    {"KeypadNineWithoutNumLock", Qt::Key_PageUp, kKeypad, 33},
    {"KeypadThreeWithoutNumLock", Qt::Key_PageDown, kKeypad, 34},
    {"KeypadOneWithoutNumLock", Qt::Key_End, kKeypad, 35},
    {"KeypadSevenWithoutNumLock", Qt::Key_Home, kKeypad, 36},
    {"KeypadFourWithoutNumLock", Qt::Key_Left, kKeypad, 37},
    {"KeypadEightWithoutNumLock", Qt::Key_Up, kKeypad, 38},
    {"KeypadSixWithoutNumLock", Qt::Key_Right, kKeypad, 39},
    {"KeypadTwoWithoutNumLock", Qt::Key_Down, kKeypad, 40},
    {"KeypadFiveWithoutNumLock", Qt::Key_Clear, kKeypad, 12},
    {"KeypadZeroWithoutNumLock", Qt::Key_Insert, kKeypad, 45},
    {"KeypadPeriodWithoutNumLock", Qt::Key_Delete, kKeypad, 46},

    {"LetterWithShift", Qt::Key_K, Qt::ShiftModifier, 75},
    {"LetterWithControl", Qt::Key_K, Qt::ControlModifier, 75},
    {"LetterWithAlt", Qt::Key_K, Qt::AltModifier, 75},
    {"LetterWithAll", Qt::Key_K, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier, 75},
    {"DigitWithControl", Qt::Key_7, Qt::ControlModifier, 55},
    {"KeypadDigitWithControl", Qt::Key_7, kKeypad | Qt::ControlModifier, 103},
    {"FunctionKeyWithShift", Qt::Key_F5, Qt::ShiftModifier, 116},

    {"UnknownKey", Qt::Key_unknown, kNone, 0},
    {"F25HasNoCode", Qt::Key_F25, kNone, 0},
    {"UmlautHasNoCode", Qt::Key_Adiaeresis, kNone, 0},
    {"VolumeKeyHasNoCode", Qt::Key_VolumeUp, kNone, 0},
    {"DeadKeyHasNoCode", Qt::Key_Dead_Acute, kNone, 0},
    {"NoKeyAtAll", 0, kNone, 0},
};

class KeyCodes : public testing::TestWithParam<Case> {};

TEST_P(KeyCodes, OfOneKey) {
    const Case& row = GetParam();
    EXPECT_EQ(KeyCodeOf(QKeyEvent(QEvent::KeyPress, row.Key, row.Modifiers)), row.Code);
    EXPECT_EQ(KeyCodeOf(QKeyEvent(QEvent::KeyRelease, row.Key, row.Modifiers)), row.Code);
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyCodes, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.Name; });

// A key of X, with its name there and its place on the keyboard.
struct XKey {
    const char* Name;
    int Key;
    quint32 Keysym;
    quint32 Place;
    std::int16_t Code;
};

void PrintTo(const XKey& row, std::ostream* out) { *out << row.Name; }

const XKey kXKeys[] = {
    {"LeftAlt", Qt::Key_Alt, 0xffe9, 64, 18},
    {"LeftAltWithShift", Qt::Key_Meta, 0xffe7, 64, 18},
    {"RightAltWithShift", Qt::Key_Meta, 0xffe8, 108, 18},
    {"LeftSuper", Qt::Key_Meta, 0xffeb, 133, 91},
    {"RightSuper", Qt::Key_Meta, 0xffec, 134, 91},

    {"CyrillicAtThePlaceOfQ", 0x0419, 0x6ca, 24, 'Q'},
    {"CyrillicAtThePlaceOfP", 0x0417, 0x6da, 33, 'P'},
    {"CyrillicBehindP", 0x0425, 0x6c8, 34, 0},
    {"CyrillicBeforeA", 0x042A, 0x6df, 37, 0},
    {"CyrillicAtThePlaceOfA", 0x0424, 0x6c6, 38, 'A'},
    {"GreekAtThePlaceOfL", 0x039B, 0x7eb, 46, 'L'},
    {"CyrillicBehindL", 0x0416, 0x6d6, 47, 0},
    {"CyrillicBeforeZ", 0x0401, 0x6a3, 51, 0},
    {"HebrewAtThePlaceOfZ", 0x05D6, 0xce6, 52, 'Z'},
    {"CyrillicAtThePlaceOfM", 0x042C, 0x6d8, 58, 'M'},
    {"CyrillicBehindM", 0x0411, 0x6c2, 59, 0},
    {"CyrillicBeforeQ", 0x0401, 0x6a3, 23, 0},
    {"LatinCountsByItsName", Qt::Key_A, 0x61, 24, 'A'},
    {"LatinBeyondTheFirst256", 0x0153, 0x13bd, 32, 0},
    {"SignAtThePlaceOfALetter", 0x20AC, 0x20ac, 26, 0},
    {"LayoutSwitch", 0, 0xfe08, 38, 0},
};

class KeyCodesOnX : public testing::TestWithParam<XKey> {};

TEST_P(KeyCodesOnX, OfOneKey) {
    const XKey& row = GetParam();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        const QKeyEvent event(type, row.Key, kNone, row.Place, row.Keysym, 0);
        EXPECT_EQ(KeyCodeOf(event), row.Code);
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyCodesOnX, testing::ValuesIn(kXKeys),
                         [](const auto& row) { return row.param.Name; });

struct KeyRun {
    const char* Name;
    int First;
    int Last;
    Qt::KeyboardModifiers Modifiers;
    std::int16_t FirstCode;
};

void PrintTo(const KeyRun& row, std::ostream* out) { *out << row.Name; }

const KeyRun kRuns[] = {
    {"Digits", Qt::Key_0, Qt::Key_9, kNone, 48},
    {"KeypadDigits", Qt::Key_0, Qt::Key_9, kKeypad, 96},
    {"Letters", Qt::Key_A, Qt::Key_Z, kNone, 65},
    {"FunctionKeys", Qt::Key_F1, Qt::Key_F24, kNone, 112},
};

class KeyCodeRuns : public testing::TestWithParam<KeyRun> {};

TEST_P(KeyCodeRuns, GoUpByOne) {
    const KeyRun& row = GetParam();
    for (int key = row.First; key <= row.Last; ++key) {
        EXPECT_EQ(KeyCodeOf(QKeyEvent(QEvent::KeyPress, key, row.Modifiers)),
                  row.FirstCode + key - row.First);
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyCodeRuns, testing::ValuesIn(kRuns),
                         [](const auto& row) { return row.param.Name; });

TEST(KeyCodesOfAllKeys, StayWithinTheMacroTables) {
    for (int key = 0; key < 0x200; ++key) {
        for (const int offset : {0, 0x01000000}) {
            for (const auto modifiers : {kNone, kKeypad}) {
                const int code = KeyCodeOf(QKeyEvent(QEvent::KeyPress, key + offset, modifiers));
                ASSERT_GE(code, 0) << key + offset;
                ASSERT_LE(code, 255) << key + offset;
            }
        }
    }
}

struct Typing {
    const char* Name;
    QString Text;
    std::int16_t Character;
};

void PrintTo(const Typing& row, std::ostream* out) { *out << row.Name; }

const Typing kTyping[] = {
    {"Letter", "a", 97},
    {"Digit", "5", 53},
    {"EAcute", QString(QChar(0xE9)), 0xE9},
    {"Euro", QString(QChar(0x20AC)), 0x80},
    {"YDiaeresis", QString(QChar(0xFF)), 0xFF},
    {"CyrillicIsAQuestionMark", QString(QChar(0x0416)), '?'},
    {"EmojiIsAQuestionMark", QString::fromUcs4(U"\U0001F600"), '?'},
    {"Return", "\r", 13},
    {"ControlLetter", QString(QChar(11)), 11},
    {"NothingTyped", "", 0},
};

class Characters : public testing::TestWithParam<Typing> {};

TEST_P(Characters, OfOneKey) {
    const QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, kNone, GetParam().Text);
    EXPECT_EQ(CharacterOf(event), GetParam().Character);
}

INSTANTIATE_TEST_SUITE_P(Typed, Characters, testing::ValuesIn(kTyping),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace mw
