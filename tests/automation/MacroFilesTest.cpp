#include "automation/MacroFiles.h"

#include "base/Error.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

using Texts = std::vector<std::string>;

const char* const kExample = "AltKey75=kill \r\n"
                             "NormKey112=look\r\n"
                             "[Trigger]\r\n"
                             "Value=0\r\n"
                             "Trigger=You are hungry\r\n"
                             "React=eat bread;drink water\r\n"
                             "~\r\n"
                             "[Alias]\r\n"
                             "Value=0\r\n"
                             "Alias=gt\r\n"
                             "Replace=tell group \r\n"
                             "IsEnabled=True\r\n"
                             "[End]\r\n";

MacroSet ExampleSet() {
    MacroSet set;
    set.Name = "Example";
    SetKeyText(set.AltKey, 75, "kill ");
    SetKeyText(set.NormKey, 112, "look");
    set.Triggers = {{"You are hungry", "eat bread;drink water"}};
    set.Aliases = {{"gt", "tell group ", true}};
    return set;
}

MacroSet Named(const std::string& name) { return OneMacroSet(name)[0]; }

class MacroFile : public RuleTest {
protected:
    MacroFile() { MakeFolder("Macros"); }

    std::int32_t ErrorReading(std::string_view text) {
        return ErrorOf([&] { ParseMacroSet(text, Named("Default")); });
    }

    FreshFolder Folder;
};

TEST_F(MacroFile, TheExampleIsWrittenByteForByte) {
    EXPECT_EQ(FormatMacroSet(ExampleSet()), kExample);
}

TEST_F(MacroFile, AnEmptySetIsOneLineAndReadingItChangesNothing) {
    EXPECT_EQ(FormatMacroSet(MacroSet()), "[End]\r\n");
    EXPECT_EQ(ParseMacroSet("[End]\r\n", ExampleSet()), ExampleSet());
}

TEST_F(MacroFile, KeysAreWrittenByCodeAndForEachCodeInFixedOrder) {
    MacroSet set;
    for (KeyTable* table : {&set.ShiftKey, &set.NormKey, &set.CtrlKey, &set.AltKey}) {
        SetKeyText(*table, 255, "z");
        SetKeyText(*table, 0, "a");
    }
    EXPECT_EQ(FormatMacroSet(set),
              "AltKey0=a\r\nCTRLkey0=a\r\nNormKey0=a\r\nShiftKey0=a\r\n"
              "AltKey255=z\r\nCTRLkey255=z\r\nNormKey255=z\r\nShiftKey255=z\r\n[End]\r\n");
}

TEST_F(MacroFile, EveryKeyTableComesBackWithItsBlanksAndEqualsSigns) {
    MacroSet set = Named("Default");
    SetKeyText(set.AltKey, 65, "a=b=c");
    SetKeyText(set.CtrlKey, 90, "  both  ");
    SetKeyText(set.NormKey, 123, ";;");
    SetKeyText(set.ShiftKey, 7, "kept, never played");
    EXPECT_EQ(ParseMacroSet(FormatMacroSet(set), Named("Default")), set);
}

TEST_F(MacroFile, ReactionsAreWrittenAndNotReadBackOnPurpose) {
    MacroSet expected = ExampleSet();
    Edit(expected.Triggers)[0].React = "";
    EXPECT_EQ(ParseMacroSet(kExample, Named("Example")), expected);
}

TEST_F(MacroFile, ATriggerKeepsTheReactionItHadInMemory) {
    MacroSet set = Named("Default");
    Edit(set.Triggers)[0].React = "from before";
    EXPECT_EQ(ParseMacroSet(kExample, set).Triggers.Entries()[0],
              (TriggerEntry{"You are hungry", "from before"}));
}

TEST_F(MacroFile, AReactionOfTwoLinesIsWrittenOnTwoLines) {
    MacroSet set;
    set.Triggers = {{"t", "one\r\ntwo"}};
    EXPECT_EQ(FormatMacroSet(set),
              "[Trigger]\r\nValue=0\r\nTrigger=t\r\nReact=one\r\ntwo\r\n~\r\n[End]\r\n");
    EXPECT_EQ(ParseMacroSet(FormatMacroSet(set), Named("")).Triggers.Entries()[0].Trigger, "t");
}

TEST_F(MacroFile, AReactionIsJoinedWithoutSeparatorsUpToATilde) {
    LineReader reader{"React=one\r\ntwo\r\n three~\r\n~rest\r\nnext\r\n"};
    EXPECT_EQ(ReadReaction(reader), "React=onetwo three~");
    EXPECT_EQ(ReadLine(reader), "next");
}

TEST_F(MacroFile, EmptyEntriesAreNotWrittenAndTheIndicesKeepTheGaps) {
    MacroSet set = Named("Default");
    set.Triggers = {{"", "lost"}, {"b", ""}, {"", ""}, {"d", ""}};
    set.Aliases = {{"", "lost", true}, {"", "", false}, {"c", "d", false}};
    const std::string text = FormatMacroSet(set);
    EXPECT_EQ(text.find("Value=0"), std::string::npos);
    const MacroSet read = ParseMacroSet(text, Named("Default"));
    EXPECT_EQ(read.Triggers, (std::vector<TriggerEntry>{{}, {"b", ""}, {}, {"d", ""}}));
    EXPECT_EQ(read.Aliases, (std::vector<AliasEntry>{{}, {}, {"c", "d", false}}));
}

TEST_F(MacroFile, ReadingAnEntryNeverShrinksItsTable) {
    MacroSet set = Named("Default");
    set.Aliases = {{"a", "1", true}, {"b", "2", true}};
    const MacroSet read =
        ParseMacroSet("[Alias]\nValue=0\nAlias=x\nReplace=y\nIsEnabled=0\n[End]\n", set);
    EXPECT_EQ(read.Aliases, (std::vector<AliasEntry>{{"x", "y", false}, {"b", "2", true}}));
}

TEST_F(MacroFile, ABooleanMayBeANumber) {
    const auto enabled = [](const std::string& value) {
        return ParseMacroSet("[Alias]\nValue=0\nAlias=x\nReplace=y\nIsEnabled=" + value +
                                 "\n[End]\n",
                             MacroSet())
            .Aliases[0]
            .IsEnabled;
    };
    EXPECT_TRUE(enabled("True"));
    EXPECT_TRUE(enabled("-1"));
    EXPECT_FALSE(enabled("false"));
    EXPECT_FALSE(enabled("0"));
}

TEST_F(MacroFile, ABooleanThatIsNoneIsTypeMismatch) {
    EXPECT_EQ(ErrorReading("[Alias]\nValue=0\nAlias=x\nReplace=y\nIsEnabled=maybe\n[End]\n"),
              TypeMismatch);
}

TEST_F(MacroFile, TheFourLinesOfAnAliasCountByPosition) {
    const MacroSet read =
        ParseMacroSet("[Alias]\nx=0\nReplace=first\nAlias=second\nTrue\n[End]\n", MacroSet());
    EXPECT_EQ(read.Aliases[0], (AliasEntry{"first", "second", true}));
}

TEST_F(MacroFile, TheEndStopsTheReadingAndTheRestIsIgnored) {
    EXPECT_EQ(ParseMacroSet("[End]\ngarbage\nmore\n", MacroSet()), MacroSet());
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(MacroFile, TheLastLineIsReadAndNeverLookedAt) {
    EXPECT_EQ(ParseMacroSet("garbage", MacroSet()), MacroSet());
    EXPECT_EQ(ParseMacroSet("NormKey112=look", MacroSet()), MacroSet());
    EXPECT_EQ(KeyText(ParseMacroSet("NormKey112=look\nNormKey113=x\n", MacroSet()).NormKey, 112),
              "look");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(MacroFile, AnUnknownLineShowsThreeMessagesAndEndsTheProgram) {
    EXPECT_THROW(ParseMacroSet(" AltKey65=x\n[End]\n", Named("Mine")), EndProgram);
    EXPECT_EQ(fakes::Messages, (Texts{"An error has occured in loading a macroset", "Macroset Mine",
                                      "Curreadline  AltKey65=x"}));
}

TEST_F(MacroFile, LinesThatAreUnknown) {
    for (const char* line : {"", "[Macros]", "altkey65=x", "CtrlKey65=x", "[alias]", "~"})
        EXPECT_THROW(ParseMacroSet(std::string(line) + "\n[End]\n", MacroSet()), EndProgram)
            << line;
}

TEST_F(MacroFile, AKeyWithoutANumericCodeShowsThreeMessagesAndEndsTheProgram) {
    EXPECT_THROW(ParseMacroSet("AltKeyK=x\n[End]\n", MacroSet()), EndProgram);
    EXPECT_EQ(fakes::Messages, (Texts{"An Error has occured loading the macros", "GetArrayPoint K",
                                      "Error Point \r\nAltKeyK=x\r\n"}));
}

TEST_F(MacroFile, AKeyWithoutACodeOrWithoutAnEqualsSignHasNoNumericCode) {
    for (const char* line : {"AltKey=x", "AltKey65", "AltKey"})
        EXPECT_THROW(ParseMacroSet(std::string(line) + "\n[End]\n", MacroSet()), EndProgram)
            << line;
    EXPECT_EQ(fakes::Messages[1], "GetArrayPoint ");
}

TEST_F(MacroFile, AKeyCodeOutsideTheTableIsOutOfRange) {
    EXPECT_EQ(ErrorReading("NormKey256=x\n[End]\n"), SubscriptOutOfRange);
    EXPECT_EQ(ErrorReading("NormKey-1=x\n[End]\n"), SubscriptOutOfRange);
    EXPECT_EQ(ErrorReading("NormKey32768=x\n[End]\n"), Overflow);
    EXPECT_EQ(ErrorReading("NormKey255=x\n[End]\n"), 0);
}

TEST_F(MacroFile, AnIndexThatIsNotNumericShowsThreeMessagesAndIsZero) {
    const MacroSet read = ParseMacroSet(
        "[Alias]\nValue=ten\nAlias=x\nReplace=y\nIsEnabled=True\n[End]\n", MacroSet());
    EXPECT_EQ(read.Aliases[0], (AliasEntry{"x", "y", true}));
    EXPECT_EQ(fakes::Messages,
              (Texts{"An error has occured loading a trigger value", "Value=ten", "ten"}));
    fakes::Messages.clear();
    EXPECT_EQ(ParseMacroSet("[Trigger]\nnone\nTrigger=t\n~\n[End]\n", MacroSet())
                  .Triggers.Entries()[0]
                  .Trigger,
              "t");
    EXPECT_EQ(fakes::Messages,
              (Texts{"An error has occured loading a trigger value", "none", "none"}));
}

TEST_F(MacroFile, AnIndexBelowZeroOrBeyond16BitsIsAnError) {
    EXPECT_EQ(ErrorReading("[Trigger]\nValue=-1\nTrigger=t\n~\n[End]\n"), SubscriptOutOfRange);
    EXPECT_EQ(ErrorReading("[Alias]\nValue=32768\nAlias=x\nReplace=y\nIsEnabled=0\n[End]\n"),
              Overflow);
}

TEST_F(MacroFile, AFileCutInsideABlockIsInputPastEnd) {
    EXPECT_EQ(ErrorReading(""), InputPastEnd);
    EXPECT_EQ(ErrorReading("[Alias]\nValue=0\nAlias=x\nReplace=y\n"), InputPastEnd);
    EXPECT_EQ(ErrorReading("[Trigger]\nValue=0\nTrigger=t\nReact=r\nmore\n"), InputPastEnd);
    EXPECT_EQ(ErrorReading("NormKey112=look\n[Trigger]\nValue=0\n"), InputPastEnd);
}

TEST_F(MacroFile, CutAnywhereTheFileIsReadOrRefusedAndNothingElse) {
    const std::string whole = kExample;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        fakes::Messages.clear();
        try {
            EXPECT_EQ(ParseMacroSet(whole.substr(0, length), MacroSet()).Triggers.Entries().size(),
                      1u);
        } catch (const Error& error) {
            EXPECT_TRUE(error.Number == InputPastEnd || error.Number == TypeMismatch) << length;
        } catch (const EndProgram&) {
            EXPECT_EQ(fakes::Messages.size(), 3u) << length;
        }
    }
}

TEST_F(MacroFile, AMissingFileIsWrittenFromTheSet) {
    MacroSets[0] = ExampleSet();
    LoadMacroSet("Example", 0);
    EXPECT_EQ(Folder.ContentOf("Macros/Example.mco"), kExample);
    EXPECT_EQ(MacroSets[0], ExampleSet());
}

TEST_F(MacroFile, ANewSetsFileHoldsOnlyItsEnd) {
    LoadMacroSet("New", 0);
    EXPECT_EQ(Folder.ContentOf("Macros/New.mco"), "[End]\r\n");
}

TEST_F(MacroFile, AllSetsAreLoadedAndTheFirstIsCurrentThen) {
    WriteFile("Macros\\A.mco", "NormKey112=a\n[End]\n");
    WriteFile("Macros\\B.mco", "NormKey112=b\n[End]\n");
    MacroSets = {Named("A"), Named("B"), Named("C")};
    CurrentMacroSet = 2;
    LoadAllMacroSets();
    EXPECT_EQ(KeyText(MacroSets[0].NormKey, 112), "a");
    EXPECT_EQ(KeyText(MacroSets[1].NormKey, 112), "b");
    EXPECT_EQ(Folder.ContentOf("Macros/C.mco"), "[End]\r\n");
    EXPECT_EQ(CurrentMacroSet, 0);
}

// A small file, named again and again, may ask for the largest tables each time.
TEST_F(MacroFile, MoreEntriesThanTheEditorsSetsHoldAreOverflow) {
    WriteFile("Macros\\Full.mco", "[Trigger]\nValue=32767\nTrigger=t\n~\n[Alias]\nValue=32767\n"
                                  "Alias=x\nReplace=y\nIsEnabled=0\n[End]\n");
    MacroSets.assign(22, Named("Full"));
    EXPECT_EQ(ErrorOf(LoadAllMacroSets), 0);
    EXPECT_EQ(MacroSets.back().Aliases.size(), 32768u);
    // The same number in 23 sets, of which each has a trigger and an alias at least; and one more.
    WriteFile("Macros\\Rest.mco", "[Alias]\nValue=32766\nAlias=x\nReplace=y\nIsEnabled=0\n[End]\n");
    for (const std::string last : {"32766", "32767"}) {
        WriteFile("Macros\\Half.mco", "[Trigger]\nValue=" + last + "\nTrigger=t\n~\n[End]\n");
        MacroSets.assign(21, Named("Full"));
        MacroSets.push_back(Named("Rest"));
        MacroSets.push_back(Named("Half"));
        EXPECT_EQ(ErrorOf(LoadAllMacroSets), last == "32766" ? 0 : Overflow);
    }
}

TEST_F(MacroFile, MoreBytesThanFourOfTheLargestFilesAreOverflow) {
    WriteFile("Macros\\Large.mco", "[End]\r\n");
    std::filesystem::resize_file(Folder.Path / "Macros/Large.mco", kLargestFile);
    WriteFile("Macros\\Byte.mco", "x");
    MacroSets.assign(4, Named("Large"));
    EXPECT_EQ(ErrorOf(LoadAllMacroSets), 0);
    MacroSets.push_back(Named("Byte"));
    EXPECT_EQ(ErrorOf(LoadAllMacroSets), Overflow);
}

TEST_F(MacroFile, OfAHundredSetsThatNameOneGoodFileIsRead) {
    WriteFile("Macros\\Good.mco", kExample);
    MacroSets.assign(100, Named("Good"));
    EXPECT_EQ(ErrorOf(LoadAllMacroSets), 0);
    EXPECT_EQ(KeyText(MacroSets.back().AltKey, 75), "kill ");
}

TEST_F(MacroFile, WhileASetIsLoadedItIsTheCurrentOne) {
    WriteFile("Macros\\B.mco", "garbage\n[End]\n");
    MacroSets = {Named("A"), Named("B")};
    EXPECT_THROW(LoadAllMacroSets(), EndProgram);
    EXPECT_EQ(CurrentMacroSet, 1);
}

TEST_F(MacroFile, ARefusedFileLeavesTheSetAndTheFileAlone) {
    const std::string bad = "NormKey112=look\r\ngarbage\r\n[End]\r\n";
    WriteFile("Macros\\Default.mco", bad);
    EXPECT_THROW(LoadAllMacroSets(), EndProgram);
    EXPECT_EQ(MacroSets[0], Named("Default"));
    EXPECT_EQ(Folder.ContentOf("Macros/Default.mco"), bad);
}

TEST_F(MacroFile, AFileThatNoSetHasIsLeftAloneByANewSet) {
    Folder.MakeFile("Macros/Hunt.mco");
    EXPECT_FALSE(AddMacroSet("Hunt"));
    EXPECT_EQ(MacroSets.size(), 1u);
    EXPECT_EQ(fakes::Messages, (Texts{"There is a file of this name in the folder Macros. Please "
                                      "choose another one."}));
    EXPECT_TRUE(AddMacroSet("Hunter"));
}

TEST_F(MacroFile, AllSetsAreSavedOverTheirOldFiles) {
    WriteFile("Macros\\Example.mco", "old");
    MacroSets = {ExampleSet(), Named("Other")};
    SaveAllMacroSets();
    EXPECT_EQ(Folder.ContentOf("Macros/Example.mco"), kExample);
    EXPECT_EQ(Folder.ContentOf("Macros/Other.mco"), "[End]\r\n");
}

TEST_F(MacroFile, ASetWhoseNameLeadsElsewhereIsKeptWithoutAFile) {
    WriteFile("outside.mco", "NormKey112=stolen\n[End]\n");
    for (const char* name : {"../outside", "..\\outside", "/tmp/x", "a/b", "..", "C:x", "a\nb"}) {
        MacroSets = {Named(name)};
        SaveAllMacroSets();
        LoadAllMacroSets();
        EXPECT_EQ(MacroSets[0], Named(name)) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(Folder.Path / "Macros"));
    EXPECT_EQ(Folder.ContentOf("outside.mco"), "NormKey112=stolen\n[End]\n");
}

TEST_F(MacroFile, AThousandSetsOfOneKeyEachStaySmall) {
    MacroSets.assign(1000, Named("x"));
    for (MacroSet& set : MacroSets) {
        SetKeyText(set.NormKey, 112, "look");
        EXPECT_EQ(set.NormKey.size() + set.AltKey.size() + set.CtrlKey.size(), 1u);
    }
}

} // namespace
} // namespace mw
