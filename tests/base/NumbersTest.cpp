#include "base/Numbers.h"

#include "base/Error.h"
#include "support/ErrorOf.h"

#include <clocale>
#include <gtest/gtest.h>

namespace mw {
namespace {

std::int32_t Int16Error(std::string_view text) {
    return ErrorOf([text] { ToInt16(text); });
}

std::int32_t Int32Error(std::string_view text) {
    return ErrorOf([text] { ToInt32(text); });
}

TEST(Numbers, TextsThatAreNumeric) {
    for (const char* text :
         {"0", "1", "-1", "+1", " 12 ", "1.", ".5", "1.5", "1e3", "1E+3", "2e-1", "&H0", "&hff",
          "&HFFFFFFFFF", "&O17", "99999999999999999999", "1e400", "  -3.25e2"})
        EXPECT_TRUE(IsNumeric(text)) << text;
}

TEST(Numbers, TextsThatAreNotNumeric) {
    for (const char* text : {"",    " ",   "   ",  "40a0", "1,000", "$5",   "1 2", ".",   "-",
                             "+",   "e3",  "1e",   "1e+",  "1.2.3", "&H",   "&HG", "&O",  "&O8",
                             "&o7", "--1", "0x10", "inf",  "nan",   "True", "\t1", "1\n", "-&H1"})
        EXPECT_FALSE(IsNumeric(text)) << text;
}

TEST(Numbers, HalvesRoundToEven) {
    EXPECT_EQ(ToInt16("0.5"), 0);
    EXPECT_EQ(ToInt16("1.5"), 2);
    EXPECT_EQ(ToInt16("2.5"), 2);
    EXPECT_EQ(ToInt32("-2.5"), -2);
    EXPECT_EQ(RoundToInt16(10.5), 10);
    EXPECT_EQ(RoundToInt16(52.5), 52);
    EXPECT_EQ(RoundToInt32(11.5), 12);
}

TEST(Numbers, HexadecimalAndOctalDigitsGiveTheirUnsignedValue) {
    EXPECT_EQ(ToInt32("&HFFFF"), 65535);
    EXPECT_EQ(ToInt32("&HFFFFFFFF"), -1);
    EXPECT_EQ(ToInt16("&HFFFFFFFF"), -1);
    EXPECT_EQ(ToInt32("&h8c8c8c"), 0x8c8c8c);
    EXPECT_EQ(ToInt16("&H50"), 80);
    EXPECT_EQ(ToInt16("&O17"), 15);
}

TEST(Numbers, WhatDoesNotFitIsOverflow) {
    EXPECT_EQ(ToInt16("32767"), 32767);
    EXPECT_EQ(ToInt16("-32768"), -32768);
    EXPECT_EQ(ToInt16("32767.4"), 32767);
    EXPECT_EQ(ToInt32("-2147483648"), -2147483647 - 1);
    for (const char* text : {"32768", "32767.5", "-32769", "&HFFFF", "1e400", "-1e400"})
        EXPECT_EQ(Int16Error(text), Overflow) << text;
    for (const char* text : {"2147483648", "&HFFFFFFFFF", "&O77777777777", "1e99"})
        EXPECT_EQ(Int32Error(text), Overflow) << text;
}

TEST(Numbers, WhatIsTooSmallToTellFromZeroIsZero) {
    EXPECT_EQ(ToInt16("1e-400"), 0);
    EXPECT_EQ(ToInt16("-1E-400"), 0);
}

TEST(Numbers, WhatIsNoNumberIsTypeMismatch) {
    for (const char* text : {"", " ", "40a0", "&H", "&Hxyz", "True"}) {
        EXPECT_EQ(Int16Error(text), TypeMismatch) << text;
        EXPECT_EQ(Int32Error(text), TypeMismatch) << text;
    }
}

TEST(Numbers, BooleansAreWordsInAnyCaseOrNumbers) {
    for (const char* text :
         {"True", "TRUE", "true", "tRuE", "1", "-1", " 2 ", "0.1", "&H1", "1e400"})
        EXPECT_TRUE(ToBoolean(text)) << text;
    for (const char* text : {"False", "FALSE", "false", "0", " 0 ", "0.0", "&H0"})
        EXPECT_FALSE(ToBoolean(text)) << text;
    for (const char* text : {"", "Yes", "Truely", "Tru", "T"})
        EXPECT_EQ(ErrorOf([text] { ToBoolean(text); }), TypeMismatch) << text;
}

TEST(Numbers, BooleansAreWrittenAsWords) {
    EXPECT_EQ(BooleanText(true), "True");
    EXPECT_EQ(BooleanText(false), "False");
}

TEST(Numbers, ALongRowOfDigitsIsReadToItsEnd) {
    EXPECT_TRUE(IsNumeric(std::string(100000, '9')));
    EXPECT_EQ(Int32Error(std::string(100000, '9')), Overflow);
    EXPECT_FALSE(IsNumeric(std::string(100000, '9') + "x"));
}

TEST(Numbers, TheLocaleMakesNoDifference) {
    const char* const german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_TRUE(IsNumeric("1.5"));
    EXPECT_FALSE(IsNumeric("1,5"));
    EXPECT_EQ(ToInt16("2.6"), 3);
    if (german != nullptr)
        std::setlocale(LC_ALL, "C");
}

} // namespace
} // namespace mw
