#include "automation/TriggerFilter.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace mw {
namespace {

TriggerFilter FilterOf(const std::vector<std::string>& texts) {
    std::vector<TriggerEntry> entries;
    for (const std::string& text : texts)
        entries.push_back({text, ""});
    return BuildFilter(entries);
}

struct Case {
    const char* name;
    std::vector<std::string> texts;
    std::string line;
    bool passes;
};

void PrintTo(const Case& row, std::ostream* out) { *out << row.name; }

const Case kCases[] = {
    {"ALineThatIsTheText", {"hungry"}, "hungry", true},
    {"ATextAtTheBeginning", {"hungry"}, "hungry you are", true},
    {"ATextAtTheEnd", {"hungry"}, "you are hungry", true},
    {"ATextOfOneCharacter", {"x"}, "abcx", true},
    {"ATextOfThreeCharacters", {"rat"}, "a rat", true},
    {"ATextOfFourCharacters", {"rats"}, "many rats.", true},
    {"ATextOfManyCharacters", {"many brown rats"}, "how many brown rats.", true},
    {"TextsOfEveryLength", {"a", "bc", "def", "ghij", "klmno"}, "......def", true},
    {"NulAndTheHighestByte", {std::string("\0\xff", 2)}, std::string("a\0\xff", 3), true},
    {"ALineWithoutTheText", {"hungry"}, "You are well fed.", false},
    {"ALineShorterThanTheText", {"hungry"}, "hun", false},
    {"AnEmptyLine", {"hungry"}, "", false},
    {"AnotherLetterCase", {"hungry"}, "HUNGRY", false},
    {"AShortTextThatIsNotThere", {"x", "zq"}, "abc", false},
    {"NulsInAShorterLine", {std::string(4, '\0')}, std::string(3, '\0'), false},
    {"NoTextAtAll", {}, "anything", false},
    {"AnEntryWithoutAText", {"hungry", ""}, "anything", true},
    {"AnEntryWithoutATextAndAnEmptyLine", {""}, "", true},
};

class TriggerFiltering : public testing::TestWithParam<Case> {};

TEST_P(TriggerFiltering, LetsPassWhatMayMatch) {
    EXPECT_EQ(MayMatch(FilterOf(GetParam().texts), GetParam().line), GetParam().passes);
}

INSTANTIATE_TEST_SUITE_P(All, TriggerFiltering, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TriggerFilter, GoesByWhatIsRareAmongTheTexts) {
    const TriggerFilter filter = FilterOf({"the guard hits you", "the guard misses you",
                                           "the guard leaves you", "the guard finds you"});
    EXPECT_FALSE(MayMatch(filter, "the guard greets you"));
    EXPECT_TRUE(MayMatch(filter, "the guard misses you"));
}

TEST(TriggerFilter, LetsEveryLinePassThatHoldsAText) {
    std::mt19937 random(7);
    const auto text = [&random](std::size_t length) {
        std::string made;
        while (made.size() < length)
            made += "abc "[random() % 4];
        return made;
    };
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::string> texts;
        for (int i = 0; i <= round % 20; ++i)
            texts.push_back(text(1 + random() % 8));
        const std::string line =
            text(random() % 10) + texts[random() % texts.size()] + text(random() % 10);
        ASSERT_TRUE(MayMatch(FilterOf(texts), line)) << line;
    }
}

} // namespace
} // namespace mw
