#include "automation/Aliases.h"

#include "base/Error.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

#include <ostream>

namespace mw {
namespace {

struct Case {
    const char* Name;
    std::vector<AliasEntry> Aliases;
    const char* Line;
    const char* Expanded;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.Name; }

const Case kCases[] = {
    {"TheEmptyTableChangesNothing", {{}}, "look", "look"},
    {"AWholeLineIsReplaced", {{"l", "look", true}}, "l", "look"},
    {"TheEndOfAWordDoesNotCountOnPurpose", {{"l", "look", true}}, "lo", "looko"},
    {"AnAliasAlsoRewritesALongerWordOnPurpose", {{"n", "go north", true}}, "north", "go northorth"},
    {"TheRestOfTheLineStays", {{"gt", "tell group", true}}, "gt hi  all ", "tell group hi  all "},
    {"TheEarlierOfTwoWins",
     {{"k", "kick", true}, {"kill", "slay", true}},
     "kill orc",
     "kickill orc"},
    {"TheLongerWinsWhenItStandsFirst",
     {{"kill", "slay", true}, {"k", "kick", true}},
     "kill orc",
     "slay orc"},
    {"ADisabledOneIsPassedOver",
     {{"k", "kick", false}, {"kill", "slay", true}},
     "kill orc",
     "slay orc"},
    {"ADisabledOneAloneChangesNothing", {{"k", "kick", false}}, "k", "k"},
    {"CaseMatters", {{"N", "north", true}}, "north", "north"},
    {"CaseMattersTheOtherWayToo", {{"n", "north", true}}, "North", "North"},
    {"ItIsLookedForOnlyAtTheStart", {{"l", "look", true}}, "sell", "sell"},
    {"ABlankInFrontPreventsIt", {{"l", "look", true}}, " l", " l"},
    {"AnAliasLongerThanTheLineDoesNotMatch", {{"look", "x", true}}, "loo", "loo"},
    {"OnlyOneReplacementIsMade", {{"a", "b", true}, {"b", "c", true}}, "a", "b"},
    {"TheReplacementIsNotExpandedAgain", {{"a", "aa", true}}, "a", "aa"},
    {"TheRestIsNotExpanded", {{"a", "x", true}}, "a;a", "x;a"},
    {"AReplacementMayBeEmpty", {{"a", "", true}}, "abc", "bc"},
    {"AReplacementMayHoldTheEscapeCharacter", {{"rest", "sit;sleep", true}}, "rest", "sit;sleep"},
    {"AnAliasMayHoldBlanks", {{"go up", "climb", true}}, "go up tree", "climb tree"},
    {"AnAliasMayHoldTheEscapeCharacter", {{"n;", "run ", true}}, "n;s", "run s"},
    {"AnEmptyAliasMatchesEveryLineOnPurpose", {{"", "say ", true}}, "hello", "say hello"},
    {"AnEmptyAliasThatIsDisabledMatchesNone", {{"", "say ", false}}, "hello", "hello"},
    {"AnEmptyAliasHidesThoseBehindIt", {{"", ">", true}, {"l", "look", true}}, "l", ">l"},
    {"AnEmptyAliasBehindAMatchDoesNotCount", {{"l", "look", true}, {"", ">", true}}, "l", "look"},
    {"AnEmptyLineIsNeverChanged", {{"l", "look", true}}, "", ""},
    {"AnEmptyLineIsNotChangedByAnEmptyAlias", {{"", "say ", true}}, "", ""},
    {"OfTwoEqualOnesTheFirstCounts", {{"a", "1", true}, {"a", "2", true}}, "a", "1"},
    {"HighCharactersAreCompared", {{"\xe4", "ae", true}}, "\xe4\xf6", "ae\xf6"},
    {"ATableWithoutEntriesChangesNothing", {}, "look", "look"},
};

class AliasExpansion : public testing::TestWithParam<Case> {};

TEST_P(AliasExpansion, RewritesTheStartOfALine) {
    EXPECT_EQ(ExpandAlias(GetParam().Aliases, GetParam().Line), GetParam().Expanded);
}

INSTANTIATE_TEST_SUITE_P(Lines, AliasExpansion, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.Name; });

class AliasesOfTheSets : public RuleTest {
protected:
    AliasesOfTheSets() {
        MacroSets.resize(2);
        MacroSets[0].Aliases = {{"k", "kick", true}};
        MacroSets[1].Aliases = {{"k", "kill", true}};
    }
};

TEST_F(AliasesOfTheSets, AreTakenFromTheCurrentSet) {
    EXPECT_EQ(ExpandAlias("k"), "kick");
    CurrentMacroSet = 1;
    EXPECT_EQ(ExpandAlias("k"), "kill");
}

TEST_F(AliasesOfTheSets, AreNotChangedByUse) {
    const std::vector<MacroSet> before = MacroSets;
    ExpandAlias("kk");
    EXPECT_EQ(MacroSets, before);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(AliasesOfTheSets, NeedACurrentSet) {
    for (const int index : {2, -1}) {
        CurrentMacroSet = static_cast<std::int16_t>(index);
        EXPECT_EQ(ErrorOf([] { ExpandAlias("k"); }), SubscriptOutOfRange) << "set " << index;
    }
}

} // namespace
} // namespace mw
