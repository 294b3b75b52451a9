#include "base/CodePage.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace mw {
namespace {

std::string Byte(int code) { return {static_cast<char>(code)}; }

std::u16string Character(int code) { return {static_cast<char16_t>(code)}; }

struct Row {
    int Byte;
    int Character;
};

// The bytes that stand for another character than the one of their number.
const Row kRows[] = {
    {0x80, 0x20AC}, {0x82, 0x201A}, {0x83, 0x0192}, {0x84, 0x201E}, {0x85, 0x2026}, {0x86, 0x2020},
    {0x87, 0x2021}, {0x88, 0x02C6}, {0x89, 0x2030}, {0x8A, 0x0160}, {0x8B, 0x2039}, {0x8C, 0x0152},
    {0x8E, 0x017D}, {0x91, 0x2018}, {0x92, 0x2019}, {0x93, 0x201C}, {0x94, 0x201D}, {0x95, 0x2022},
    {0x96, 0x2013}, {0x97, 0x2014}, {0x98, 0x02DC}, {0x99, 0x2122}, {0x9A, 0x0161}, {0x9B, 0x203A},
    {0x9C, 0x0153}, {0x9E, 0x017E}, {0x9F, 0x0178},
};

int CharacterOf(int byte) {
    for (const Row& row : kRows) {
        if (row.Byte == byte)
            return row.Character;
    }
    return byte;
}

TEST(CodePage, GivesEachByteItsCharacter) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(ToUnicode(Byte(byte)), Character(CharacterOf(byte))) << "byte " << byte;
}

TEST(CodePage, GivesEachCharacterItsByte) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(FromUnicode(Character(CharacterOf(byte))), Byte(byte)) << "byte " << byte;
}

TEST(CodePage, LeavesTheFiveUndefinedBytesTheirNumber) {
    for (const int byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(ToUnicode(Byte(byte)), Character(byte)) << byte;
}

TEST(CodePage, BringsEveryTextOfBytesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += Byte(byte);
    EXPECT_EQ(ToUnicode(all).size(), 256u);
    EXPECT_EQ(FromUnicode(ToUnicode(all)), all);
}

TEST(CodePage, HasAQuestionMarkForWhatItLacks) {
    EXPECT_EQ(FromUnicode(u"\u0100\u0151\u4e2d\u20a9\u2010\ufffd"), "??????");
    EXPECT_EQ(FromUnicode(u"a\u0107b"), "a?b");
}

TEST(CodePage, LacksTheControlsWhoseBytesStandForOtherCharacters) {
    for (const Row& row : kRows)
        EXPECT_EQ(FromUnicode(Character(row.Byte)), "?") << row.Byte;
}

TEST(CodePage, HasOneQuestionMarkForACharacterOfTwoUnits) {
    EXPECT_EQ(FromUnicode(u"a\U0001F600b"), "a?b");
    EXPECT_EQ(FromUnicode(u"\U0001F600\U0001F601"), "??");
}

TEST(CodePage, StandsHalfACharacter) {
    EXPECT_EQ(FromUnicode(u"a"s + Character(0xD83D) + u"b"), "a?b");
    EXPECT_EQ(FromUnicode(Character(0xD83D)), "?");
}

TEST(CodePage, KeepsNulsAndEmptyTexts) {
    EXPECT_EQ(ToUnicode(""), u"");
    EXPECT_EQ(FromUnicode(u""), "");
    EXPECT_EQ(ToUnicode("a\0b"s), u"a\0b"s);
    EXPECT_EQ(FromUnicode(u"a\0b"s), "a\0b"s);
}

} // namespace
} // namespace mw
