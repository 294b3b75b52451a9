#include "base/Lines.h"

#include "base/Error.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

using Lines = RuleTest;

std::vector<std::string> AllLines(std::string_view text) {
    LineReader reader{text};
    std::vector<std::string> lines;
    while (!AtEnd(reader))
        lines.push_back(ReadLine(reader));
    return lines;
}

using Texts = std::vector<std::string>;

TEST_F(Lines, EndWithCarriageReturnAndLineFeedOrWithLineFeedAlone) {
    EXPECT_EQ(AllLines("a\r\nb\nc\r\n"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(AllLines("a\r\n\r\n\nb"), (Texts{"a", "", "", "b"}));
}

TEST_F(Lines, TheEndIsReachedWithOrWithoutAFinalLineEnd) {
    EXPECT_EQ(AllLines("a"), (Texts{"a"}));
    EXPECT_EQ(AllLines("a\n"), (Texts{"a"}));
    EXPECT_TRUE(AllLines("").empty());
}

TEST_F(Lines, ACarriageReturnInsideALineStays) {
    EXPECT_EQ(AllLines("a\rb\r\r\n"), (Texts{"a\rb\r"}));
}

TEST_F(Lines, KeepBlanksAndEveryByte) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        if (code != '\n' && code != '\r')
            all += static_cast<char>(code);
    EXPECT_EQ(AllLines("  " + all + "  \r\n"), (Texts{"  " + all + "  "}));
}

TEST_F(Lines, ReadingPastTheEndIsAnError) {
    LineReader reader{""};
    EXPECT_EQ(ErrorOf([&reader] { ReadLine(reader); }), InputPastEnd);
}

TEST_F(Lines, EachLineLetsEventsRun) {
    AllLines("a\nb\nc");
    EXPECT_EQ(fakes::EventRuns, 3);
}

TEST_F(Lines, AreAppendedWithCarriageReturnAndLineFeed) {
    std::string text;
    for (const char* line : {"a", "", " b "})
        AppendLine(text, line);
    EXPECT_EQ(text, "a\r\n\r\n b \r\n");
    EXPECT_EQ(AllLines(text), (Texts{"a", "", " b "}));
}

TEST_F(Lines, TheValueIsWhatFollowsTheFirstEqualsSign) {
    EXPECT_EQ(ValueAfterEquals("Name=Quillmere"), "Quillmere");
    EXPECT_EQ(ValueAfterEquals("Esc=a=b"), "a=b");
    EXPECT_EQ(ValueAfterEquals("Esc="), "");
    EXPECT_EQ(ValueAfterEquals("no sign"), "no sign");
    EXPECT_EQ(ValueAfterEquals(""), "");
    EXPECT_EQ(ValueAfterEquals("=x "), "x ");
}

TEST_F(Lines, LoseTheirOuterBlanksAndNothingElse) {
    EXPECT_EQ(TrimBlanks("  two words "), "two words");
    EXPECT_EQ(TrimBlanks("\ta\r"), "\ta\r");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanks(""), "");
}

TEST_F(Lines, ContainsTextMindsLetterCase) {
    EXPECT_TRUE(ContainsText("xMwGreyx", "MwGrey"));
    EXPECT_TRUE(ContainsText("abc", ""));
    EXPECT_FALSE(ContainsText("xmwgreyx", "MwGrey"));
}

} // namespace
} // namespace mw
