#include "automation/Macros.h"

#include "base/Error.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

class MacroSetList : public RuleTest {};

TEST_F(MacroSetList, BeginsWithOneEmptySetNamedDefault) {
    ASSERT_EQ(MacroSets.size(), 1u);
    EXPECT_EQ(CurrentMacroSet, 0);
    EXPECT_EQ(MacroSets[0].Name, "Default");
    for (std::int16_t code = 0; code <= 255; ++code) {
        EXPECT_EQ(KeyText(MacroSets[0].ShiftKey, code), "");
        EXPECT_EQ(KeyText(MacroSets[0].AltKey, code), "");
        EXPECT_EQ(KeyText(MacroSets[0].CtrlKey, code), "");
        EXPECT_EQ(KeyText(MacroSets[0].NormKey, code), "");
    }
}

TEST_F(MacroSetList, HoldsTheEmptyEntry0InEachTable) {
    EXPECT_EQ(MacroSets[0].Triggers, std::vector<TriggerEntry>(1));
    EXPECT_EQ(MacroSets[0].Aliases, std::vector<AliasEntry>(1));
    EXPECT_EQ(MacroSets[0].Triggers.Entries()[0].Trigger, "");
    EXPECT_EQ(MacroSets[0].Aliases[0].Alias, "");
    EXPECT_FALSE(MacroSets[0].Aliases[0].IsEnabled);
}

TEST_F(MacroSetList, GrowsBySetsThatHoldTheirEntries0) {
    MacroSets.resize(22);
    EXPECT_EQ(MacroSets[0].Name, "Default");
    EXPECT_EQ(MacroSets[21], OneMacroSet("")[0]);
    EXPECT_EQ(MacroSets[21].Triggers.Entries().size(), 1u);
    EXPECT_EQ(MacroSets[21].Aliases.size(), 1u);
}

TEST_F(MacroSetList, HasACurrentSetWhileTheIndexLiesInside) {
    MacroSets.resize(2);
    EXPECT_EQ(&CurrentSet(), &MacroSets[0]);
    CurrentMacroSet = 1;
    EXPECT_EQ(&CurrentSet(), &MacroSets[1]);
    for (const int index : {2, 32767, -1, -32768}) {
        CurrentMacroSet = static_cast<std::int16_t>(index);
        EXPECT_EQ(ErrorOf([] { CurrentSet(); }), SubscriptOutOfRange) << index;
    }
}

TEST_F(MacroSetList, MadeForANameIsOneSet) {
    const std::vector<MacroSet> sets = OneMacroSet("Fights");
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].Name, "Fights");
}

TEST_F(MacroSetList, ReturnsToItsStart) {
    MacroSets.resize(3);
    MacroSets[0].Name = "Other";
    CurrentMacroSet = 2;
    ResetMacros();
    EXPECT_EQ(MacroSets, OneMacroSet("Default"));
    EXPECT_EQ(CurrentMacroSet, 0);
}

class KeyTexts : public RuleTest {
protected:
    KeyTable Table;
};

TEST_F(KeyTexts, AreKeptForCodes0To255) {
    for (std::int16_t code = 0; code <= 255; ++code)
        SetKeyText(Table, code, "text " + std::to_string(code));
    for (std::int16_t code = 0; code <= 255; ++code)
        EXPECT_EQ(KeyText(Table, code), "text " + std::to_string(code));
}

TEST_F(KeyTexts, AreReplacedAndCleared) {
    SetKeyText(Table, 75, "kill ");
    SetKeyText(Table, 75, "kick ");
    EXPECT_EQ(KeyText(Table, 75), "kick ");
    SetKeyText(Table, 75, "");
    EXPECT_EQ(KeyText(Table, 75), "");
    EXPECT_EQ(Table, KeyTable());
}

TEST_F(KeyTexts, OfOtherCodesAreAnError) {
    for (const int other : {-1, 256, 331, -32768}) {
        const auto code = static_cast<std::int16_t>(other);
        EXPECT_EQ(ErrorOf([&] { KeyText(Table, code); }), SubscriptOutOfRange) << code;
        EXPECT_EQ(ErrorOf([&] { SetKeyText(Table, code, "x"); }), SubscriptOutOfRange) << code;
        EXPECT_EQ(ErrorOf([&] { SetKeyText(Table, code, ""); }), SubscriptOutOfRange) << code;
    }
    EXPECT_TRUE(Table.empty());
}

} // namespace
} // namespace mw
