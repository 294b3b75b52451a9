#include "automation/TriggerMatcher.h"

#include "support/RandomInputs.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace mw {
namespace {

using Indices = std::vector<std::size_t>;

std::vector<TriggerEntry> Table(const std::vector<std::string>& texts) {
    std::vector<TriggerEntry> entries;
    for (const std::string& text : texts)
        entries.push_back({text, ""});
    return entries;
}

// The straightforward check: each text is looked for by itself.
Indices PlainMatches(const std::vector<TriggerEntry>& entries, std::string_view line) {
    Indices matches;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (line.find(entries[i].Trigger) != std::string_view::npos)
            matches.push_back(i);
    return matches;
}

Indices Matches(const std::vector<std::string>& texts, std::string_view line) {
    return MatchesIn(BuildMatcher(Table(texts)), line);
}

TEST(TriggerMatching, FindsTextsAnywhereInTheLine) {
    EXPECT_EQ(Matches({"begin", "mid", "end", "none"}, "begin a middle end"), (Indices{0, 1, 2}));
}

TEST(TriggerMatching, FindsTextsInsideOtherTexts) {
    EXPECT_EQ(Matches({"You are hungry", "hungry", "are", "u", "ungr"}, "You are hungry."),
              (Indices{0, 1, 2, 3, 4}));
}

TEST(TriggerMatching, FindsATextThatOverlapsAnother) {
    EXPECT_EQ(Matches({"abcd", "cdef", "bcde"}, "abcdef"), (Indices{0, 1, 2}));
    EXPECT_EQ(Matches({"abcd", "bcx"}, "abcx"), (Indices{1}));
}

TEST(TriggerMatching, NamesEachEntryOnceHoweverOftenItOccurs) {
    EXPECT_EQ(Matches({"a", "aa"}, "aaaaaaaa"), (Indices{0, 1}));
}

TEST(TriggerMatching, NamesEqualTextsInTheOrderOfTheTable) {
    EXPECT_EQ(Matches({"x", "b", "x", "b"}, "b and x"), (Indices{0, 1, 2, 3}));
}

TEST(TriggerMatching, AnEntryWithoutATextIsInEveryLine) {
    EXPECT_EQ(Matches({"a", "", "b", ""}, "b"), (Indices{1, 2, 3}));
}

TEST(TriggerMatching, MindsLetterCaseAndEveryByte) {
    EXPECT_EQ(Matches({"Hungry", "\xff\x80", std::string("\0x", 2)},
                      std::string("\xff\x80\0xhungry", 10)),
              (Indices{1, 2}));
}

TEST(TriggerMatching, OfNoEntriesFindsNothing) {
    EXPECT_TRUE(Matches({}, "line").empty());
    EXPECT_TRUE(MatchesIn(TriggerMatcher(), "line").empty());
}

TEST(TriggerMatching, NestedTextsOfOneLetterAreAllFound) {
    std::vector<std::string> texts;
    for (std::size_t length = 1; length <= 500; ++length)
        texts.emplace_back(length, 'a');
    EXPECT_EQ(Matches(texts, std::string(300, 'a')).size(), 300u);
}

TEST(TriggerMatching, AgreesWithThePlainCheckOnRandomTablesAndLines) {
    constexpr unsigned kSeed = 20261;
    constexpr int kLines = 20; // a table
    std::mt19937 random(kSeed);
    const auto upTo = [&random](unsigned most) {
        return static_cast<unsigned>(random() % (most + 1));
    };
    const auto text = [&](unsigned longest) {
        std::string made;
        for (unsigned i = upTo(longest); i > 0; --i)
            made += static_cast<char>("abc\xff"[upTo(3)]);
        return made;
    };
    for (int round = RandomInputs(40000, kSeed) / kLines; round > 0; --round) {
        std::vector<std::string> texts;
        for (unsigned i = upTo(30); i > 0; --i)
            texts.push_back(text(6));
        const std::vector<TriggerEntry> table = Table(texts);
        const TriggerMatcher matcher = BuildMatcher(table);
        for (int i = 0; i < kLines; ++i) {
            const std::string line = "b" + text(40);
            ASSERT_EQ(MatchesIn(matcher, line), PlainMatches(table, line)) << round << " " << line;
        }
    }
}

} // namespace
} // namespace mw
