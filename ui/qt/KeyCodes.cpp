#include "ui/qt/KeyCodes.h"

#include "ui/qt/Text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace mw {
namespace {

struct KeyRow {
    int Key;
    std::int16_t Code;
};

constexpr KeyRow kKeys[] = {
    {Qt::Key_Backspace, 8},    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},      {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},      {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},       {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},         {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},       {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},        {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},          {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},        {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},      {Qt::Key_Delete, 46},
    {Qt::Key_Meta, 91},        {Qt::Key_Super_L, 91},
    {Qt::Key_Super_R, 92},     {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},  {Qt::Key_Equal, 187},
    {Qt::Key_Comma, 188},      {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},     {Qt::Key_Slash, 191},
    {Qt::Key_QuoteLeft, 192},  {Qt::Key_BracketLeft, 219},
    {Qt::Key_Backslash, 220},  {Qt::Key_BracketRight, 221},
    {Qt::Key_Apostrophe, 222},
};

// What X calls the Alt keys while Shift is held; for Qt they are Meta then, as the Super keys are.
constexpr quint32 kMetaL = 0xffe7;
constexpr quint32 kMetaR = 0xffe8;

// With Shift a key reports the character above its own. Which one that is depends on the keyboard;
// these are the ones of the keyboard that the codes are made for.
constexpr KeyRow kShifted[] = {
    {Qt::Key_Exclam, 49},     {Qt::Key_At, 50},          {Qt::Key_NumberSign, 51},
    {Qt::Key_Dollar, 52},     {Qt::Key_Percent, 53},     {Qt::Key_AsciiCircum, 54},
    {Qt::Key_Ampersand, 55},  {Qt::Key_Asterisk, 56},    {Qt::Key_ParenLeft, 57},
    {Qt::Key_ParenRight, 48}, {Qt::Key_Colon, 186},      {Qt::Key_Plus, 187},
    {Qt::Key_Less, 188},      {Qt::Key_Underscore, 189}, {Qt::Key_Greater, 190},
    {Qt::Key_Question, 191},  {Qt::Key_AsciiTilde, 192}, {Qt::Key_BraceLeft, 219},
    {Qt::Key_Bar, 220},       {Qt::Key_BraceRight, 221}, {Qt::Key_QuoteDbl, 222},
};

constexpr KeyRow kKeypad[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
};

// The letters by their place, which X numbers from 24 on.
constexpr quint32 kFirstPlace = 24;
constexpr std::string_view kLetters("QWERTYUIOP\0\0\0\0ASDFGHJKL\0\0\0\0\0ZXCVBNM", 35);

template <std::size_t Size> std::int16_t Lookup(const KeyRow (&rows)[Size], int key) {
    const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                         [key](const KeyRow& r) { return r.Key == key; });
    return row == std::end(rows) ? std::int16_t{0} : row->Code;
}

// first + (key - firstKey), for the runs of keys whose codes run as well.
std::int16_t Nth(int key, int firstKey, int first) {
    return static_cast<std::int16_t>(first + key - firstKey);
}

// A letter of another script has the code of the Latin one at its place.
std::int16_t CodeOfPlace(const QKeyEvent& event) {
    const auto letter = static_cast<char32_t>(event.key());
    const quint32 place = event.nativeScanCode() - kFirstPlace;
    if (place >= kLetters.size() || !QChar::isLetter(letter) ||
        QChar::script(letter) == QChar::Script_Latin)
        return 0;
    return kLetters[place];
}

} // namespace

std::int16_t KeyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return Nth(key, Qt::Key_0, keypad ? 96 : 48);
    if (keypad && Lookup(kKeypad, key) != 0)
        return Lookup(kKeypad, key);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return Nth(key, Qt::Key_A, 65);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return Nth(key, Qt::Key_F1, 112);
    if (event.nativeVirtualKey() == kMetaL || event.nativeVirtualKey() == kMetaR)
        return Lookup(kKeys, Qt::Key_Alt);
    const std::int16_t code = std::max(Lookup(kKeys, key), Lookup(kShifted, key));
    return code != 0 ? code : CodeOfPlace(event);
}

std::int16_t CharacterOf(const QKeyEvent& event) {
    const std::string typed = FromQString(event.text());
    if (typed.empty())
        return 0;
    return static_cast<unsigned char>(typed.front());
}

} // namespace mw
