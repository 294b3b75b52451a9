#include "automation/Aliases.h"
#include "automation/Triggers.h"
#include "base/Error.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

#include <functional>

namespace mw {
namespace {

using Texts = std::vector<std::string>;

class AliasEditing : public RuleTest {
protected:
    std::vector<AliasEntry>& Table = CurrentSet().Aliases;
};

using Entries = std::vector<AliasEntry>;

TEST_F(AliasEditing, TheFirstAliasFillsTheEmptyEntryZero) {
    EXPECT_EQ(AddAlias("l", "look"), 0);
    EXPECT_EQ(Table, (Entries{{"l", "look", true}}));
}

TEST_F(AliasEditing, FurtherAliasesGoToTheEnd) {
    AddAlias("l", "look");
    EXPECT_EQ(AddAlias("l", "again"), 1);
    EXPECT_EQ(AddAlias(" two words ", ""), 2);
    EXPECT_EQ(Table,
              (Entries{{"l", "look", true}, {"l", "again", true}, {" two words ", "", true}}));
}

TEST_F(AliasEditing, AnEmptyLastEntryIsReused) {
    Table = {{"a", "1", true}, {"", "left over", false}};
    EXPECT_EQ(AddAlias("b", "2"), 1);
    EXPECT_EQ(Table, (Entries{{"a", "1", true}, {"b", "2", true}}));
}

TEST_F(AliasEditing, AnEmptyAliasIsRefused) {
    EXPECT_EQ(AddAlias("", "look"), -1);
    EXPECT_EQ(fakes::Messages, (Texts{"There is no alias"}));
    EXPECT_EQ(Table, Entries(1));
    AddAlias("l", "look");
    EXPECT_FALSE(ChangeAlias(0, "", "x"));
    EXPECT_EQ(fakes::Messages.size(), 2u);
    EXPECT_EQ(Table, (Entries{{"l", "look", true}}));
}

TEST_F(AliasEditing, AChangeKeepsWhetherTheEntryIsEnabled) {
    AddAlias("l", "look");
    EnableAlias(0, false);
    EXPECT_TRUE(ChangeAlias(0, "ll", "look twice"));
    EXPECT_EQ(Table, (Entries{{"ll", "look twice", false}}));
    EnableAlias(0, true);
    EXPECT_TRUE(Table[0].IsEnabled);
}

TEST_F(AliasEditing, ADeletionDisablesAllOthersOnPurpose) {
    Table = {{"a", "1", true}, {"b", "2", true}, {"c", "3", true}};
    DeleteAlias(1);
    EXPECT_EQ(Table, (Entries{{"a", "1", false}, {"c", "3", false}}));
}

TEST_F(AliasEditing, DeletingTheLastOneLeavesTheEmptyEntry) {
    AddAlias("l", "look");
    DeleteAlias(0);
    EXPECT_EQ(Table, Entries(1));
}

TEST_F(AliasEditing, TheListSkipsTheGapsThatFilesLeave) {
    Table = {{}, {"b", "", true}, {}, {"d", "", true}};
    EXPECT_EQ(ListedAliases(), (std::vector<std::int16_t>{1, 3}));
    DeleteAlias(1);
    EXPECT_EQ(ListedAliases(), (std::vector<std::int16_t>{2}));
}

TEST_F(AliasEditing, AnIndexOutsideTheTableIsOutOfRange) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{1}}) {
        EXPECT_EQ(ErrorOf([index] { DeleteAlias(index); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([index] { EnableAlias(index, true); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([index] { ChangeAlias(index, "a", "b"); }), SubscriptOutOfRange);
    }
}

TEST_F(AliasEditing, AFullTableIsOverflow) {
    Table.assign(32768, {"a", "b", true});
    EXPECT_EQ(ErrorOf([] { AddAlias("x", "y"); }), Overflow);
    EXPECT_EQ(Table.size(), 32768u);
}

class TriggerEditing : public RuleTest {
protected:
    const std::vector<TriggerEntry>& Table() { return CurrentSet().Triggers.Entries(); }
};

using TriggerEntries = std::vector<TriggerEntry>;

TEST_F(TriggerEditing, TheFirstTriggerFillsEntryZeroAndOthersFollow) {
    EXPECT_TRUE(AddTrigger("hungry", "eat"));
    EXPECT_TRUE(AddTrigger("thirsty", "drink"));
    EXPECT_EQ(Table(), (TriggerEntries{{"hungry", "eat"}, {"thirsty", "drink"}}));
}

TEST_F(TriggerEditing, EmptyTextsAreRefusedTheTriggerFirst) {
    EXPECT_FALSE(AddTrigger("", ""));
    EXPECT_FALSE(AddTrigger("", "eat"));
    EXPECT_FALSE(AddTrigger("hungry", ""));
    EXPECT_EQ(fakes::Messages,
              (Texts{"No trigger entered", "No trigger entered", "No action entered"}));
    EXPECT_EQ(Table(), TriggerEntries(1));
    AddTrigger("hungry", "eat");
    EXPECT_FALSE(ChangeTrigger(0, "", "x"));
    EXPECT_FALSE(ChangeTrigger(0, "x", ""));
    EXPECT_EQ(Table(), (TriggerEntries{{"hungry", "eat"}}));
}

TEST_F(TriggerEditing, ATildeInAReactionBecomesAHyphen) {
    AddTrigger("~hi~", "say ~hello~");
    EXPECT_EQ(Table()[0], (TriggerEntry{"~hi~", "say -hello-"}));
    ChangeTrigger(0, "x", "~\r\n~~");
    EXPECT_EQ(Table()[0], (TriggerEntry{"x", "-\r\n--"}));
}

TEST_F(TriggerEditing, ADeletionClosesTheGap) {
    CurrentSet().Triggers = {{"a", "1"}, {"b", "2"}, {"c", "3"}};
    DeleteTrigger(0);
    EXPECT_EQ(Table(), (TriggerEntries{{"b", "2"}, {"c", "3"}}));
    DeleteTrigger(0);
    DeleteTrigger(0);
    EXPECT_EQ(Table(), TriggerEntries(1));
}

TEST_F(TriggerEditing, AnIndexOutsideTheTableIsOutOfRange) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{1}}) {
        EXPECT_EQ(ErrorOf([index] { DeleteTrigger(index); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([index] { ChangeTrigger(index, "a", "b"); }), SubscriptOutOfRange);
    }
}

TEST_F(TriggerEditing, AFullTableIsOverflowAndStaysAsItWas) {
    CurrentSet().Triggers = TriggerEntries(32768, {"a", "b"});
    EXPECT_EQ(ErrorOf([] { AddTrigger("x", "y"); }), Overflow);
    EXPECT_EQ(Table().size(), 32768u);
}

TEST_F(TriggerEditing, WhatIsEditedTakesEffectWithTheNextLine) {
    AddTrigger("hungry", "eat");
    CheckTriggers("You are hungry.\n");
    AddTrigger("You", "smile");
    CheckTriggers("You are hungry.\n");
    DeleteTrigger(0);
    CheckTriggers("You are hungry.\n");
    EXPECT_EQ(fakes::Sent(), "eat\reat\rsmile\rsmile\r");
}

TEST_F(TriggerEditing, EachSetHasItsOwnTriggersAtOnce) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    MacroSets[0].Triggers = {{"hungry", "one"}};
    MacroSets[1].Triggers = {{"hungry", "two"}};
    for (const std::int16_t set : {std::int16_t{0}, std::int16_t{1}, std::int16_t{0}}) {
        CurrentMacroSet = set;
        CheckTriggers("hungry\n");
    }
    EXPECT_EQ(fakes::Sent(), "one\rtwo\rone\r");
}

// A reaction may lead to the table being edited: the check then goes on as a loop over the table
// as it has become.
class EditsMeanwhile : public RuleTest {
protected:
    // Runs edit when the first reaction goes out.
    void WhenFirstSent(const std::function<void()>& edit) {
        fakes::OnSend = [edit, done = false]() mutable {
            if (!done) {
                done = true;
                edit();
            }
        };
    }
};

TEST_F(EditsMeanwhile, AnEntryDeletedByAReactionDoesNotFire) {
    CurrentSet().Triggers = {{"x", "1"}, {"x", "2"}, {"x", "3"}};
    WhenFirstSent([] { DeleteTrigger(2); });
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sent(), "1\r2\r");
}

TEST_F(EditsMeanwhile, AnEntryAddedByAReactionFires) {
    CurrentSet().Triggers = {{"x", "1"}};
    WhenFirstSent([] { AddTrigger("x", "2"); });
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sent(), "1\r2\r");
}

TEST_F(EditsMeanwhile, ADeletionInFrontLetsTheNextEntrySlipThroughAsInALoop) {
    CurrentSet().Triggers = {{"x", "1"}, {"x", "2"}, {"x", "3"}};
    WhenFirstSent([] { DeleteTrigger(0); });
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sent(), "1\r3\r");
}

TEST_F(EditsMeanwhile, AnotherSetChosenByAReactionDoesNotChangeThisCheck) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    MacroSets[0].Triggers = {{"x", "1"}, {"x", "2"}};
    MacroSets[1].Triggers = {{"x", "other"}};
    WhenFirstSent([] { CurrentMacroSet = 1; });
    CheckTriggers("x\n");
    EXPECT_EQ(fakes::Sent(), "1\r2\r");
}

class SetEditing : public RuleTest {};

TEST_F(SetEditing, ANewSetIsEmptyAndBecomesTheCurrentOne) {
    CurrentSet().Aliases = {{"a", "b", true}};
    EXPECT_TRUE(AddMacroSet("Second"));
    ASSERT_EQ(MacroSets.size(), 2u);
    EXPECT_EQ(MacroSets[1], OneMacroSet("Second")[0]);
    EXPECT_EQ(CurrentMacroSet, 1);
    EXPECT_EQ(CurrentMacroSetName, "Second");
}

TEST_F(SetEditing, AnEmptyNameOrASingleBlankCancels) {
    EXPECT_FALSE(AddMacroSet(""));
    EXPECT_FALSE(AddMacroSet(" "));
    EXPECT_EQ(MacroSets.size(), 1u);
    EXPECT_TRUE(fakes::Messages.empty());
    EXPECT_TRUE(AddMacroSet("  "));
}

TEST_F(SetEditing, ANameThatTheFilesCannotKeepIsRefused) {
    for (const char* name :
         {"a/b", "..", "[End]", "C:x", "a\\b", "a\tb", "x=[End]", "x=y=[", "x=.."})
        EXPECT_FALSE(AddMacroSet(name)) << name;
    EXPECT_EQ(MacroSets.size(), 1u);
    EXPECT_EQ(fakes::Messages,
              Texts(9, "This name can't be the name of a file. Please choose another one."));
}

TEST_F(SetEditing, TheNameOfAnotherSetIsRefusedSinceItsFileWouldBeLost) {
    ASSERT_TRUE(AddMacroSet("a=b"));
    for (const char* name : {"Default", "x=Default", "x=y=Default", "a=b", "b", "c=b"})
        EXPECT_FALSE(AddMacroSet(name)) << name;
    EXPECT_EQ(MacroSets.size(), 2u);
    EXPECT_EQ(fakes::Messages,
              Texts(6, "There is a macro set of this name already. Please choose another one."));
    EXPECT_TRUE(AddMacroSet("Default=x"));
    EXPECT_TRUE(AddMacroSet("default"));
}

TEST_F(SetEditing, TwentyTwoSetsMayExistAlthoughTheTextSaysTwentyOnPurpose) {
    while (MacroSets.size() < 22) {
        ASSERT_TRUE(MayAddMacroSet());
        AddMacroSet("x" + std::to_string(MacroSets.size()));
    }
    EXPECT_FALSE(MayAddMacroSet());
    EXPECT_EQ(fakes::Messages, (Texts{"There is a maximum of 20 macrosets"}));
}

TEST_F(SetEditing, ChoosingASetMakesItCurrentAndRecordsItsName) {
    AddMacroSet("Second");
    ChooseMacroSet(0);
    EXPECT_EQ(CurrentMacroSet, 0);
    EXPECT_EQ(CurrentMacroSetName, "Default");
    EXPECT_EQ(ErrorOf([] { ChooseMacroSet(2); }), SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([] { ChooseMacroSet(-1); }), SubscriptOutOfRange);
    EXPECT_EQ(CurrentMacroSet, 0);
}

} // namespace
} // namespace mw
