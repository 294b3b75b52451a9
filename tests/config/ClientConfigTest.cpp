#include "config/ClientConfig.h"

#include "base/Error.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

const char* const kDefaultFile = "[Colours]\r\n"
                                 "MwBlack=&H0\r\n"
                                 "MwGrey=&H8C8C8C\r\n"
                                 "MwLGrey=&HD3D3D3\r\n"
                                 "MwLRed=&H8C\r\n"
                                 "MwBRed=&HFF\r\n"
                                 "MwLGreen=&H8C00\r\n"
                                 "MwBGreen=&HFF00\r\n"
                                 "MwYellow=&HFFFF\r\n"
                                 "MwOrange=&HA5FF\r\n"
                                 "MwLBlue=&HA00000\r\n"
                                 "MwBBlue=&HFF0000\r\n"
                                 "MwLPurple=&H8C008C\r\n"
                                 "MwBPurple=&HFF00FF\r\n"
                                 "MwLCyan=&H8C8C00\r\n"
                                 "MwBCyan=&HFFFF00\r\n"
                                 "MwWhite=&HFFFFFF\r\n"
                                 "MwDefault=&HC8C8C8\r\n"
                                 "[Config]\r\n"
                                 "Esc=;\r\n"
                                 "[Macros]\r\n"
                                 "Default\r\n"
                                 "[END]\r\n";

class Config : public RuleTest {
protected:
    Config() {
        MakeFolder("Data");
        Start = {kDefaultPalette, ";", OneMacroSet("Default")};
    }

    void Keep(std::string_view text) { WriteFile("Data\\client.cfg", text); }

    std::string Kept() { return Folder.ContentOf("Data/client.cfg"); }

    ClientConfig Parse(std::string_view text) { return ParseClientConfig(text, Start); }

    // Number of the Error that reading text ends in, 0 for none.
    std::int32_t ErrorReading(std::string_view text) {
        return ErrorOf([&] { Parse(text); });
    }

    std::vector<std::string> NamesIn(std::string_view text) {
        std::vector<std::string> names;
        for (const MacroSet& set : Parse(text).Sets)
            names.push_back(set.Name);
        return names;
    }

    FreshFolder Folder;
    ClientConfig Start;
};

using Names = std::vector<std::string>;

TEST_F(Config, TheDefaultsAreWrittenByteForByte) {
    EXPECT_EQ(FormatClientConfig(Start), kDefaultFile);
}

TEST_F(Config, HexadecimalIsUpperCaseWithoutLeadingZeros) {
    Start.Colours[MwBlack] = 0xabcdef;
    Start.Colours[MwGrey] = -1;
    Start.Colours[MwLGrey] = 0xa;
    const std::string text = FormatClientConfig(Start);
    EXPECT_NE(text.find("MwBlack=&HABCDEF\r\nMwGrey=&HFFFFFFFF\r\nMwLGrey=&HA\r\n"),
              std::string::npos);
    EXPECT_EQ(Parse(text).Colours, Start.Colours);
}

TEST_F(Config, WhatIsWrittenIsReadBack) {
    Start.Colours[MwOrange] = 0x123456;
    Start.Escape = "||";
    Start.Sets = {OneMacroSet("First")[0], OneMacroSet(" Second ")[0], OneMacroSet("")[0]};
    const std::string text = FormatClientConfig(Start);
    const ClientConfig read = ParseClientConfig(text, {kDefaultPalette, ";", OneMacroSet("x")});
    EXPECT_EQ(read.Colours, Start.Colours);
    EXPECT_EQ(read.Escape, "||");
    EXPECT_EQ(read.Sets, Start.Sets);
    EXPECT_EQ(FormatClientConfig(read), text);
}

TEST_F(Config, ColoursThatAreNotListedKeepTheirValue) {
    const ClientConfig read = Parse("[Colours]\nMwLGrey=&HFF\n[END]\n");
    EXPECT_EQ(read.Colours[MwLGrey], 0xff);
    PaletteTable others = read.Colours;
    others[MwLGrey] = kDefaultPalette[MwLGrey];
    EXPECT_EQ(others, kDefaultPalette);
}

TEST_F(Config, AColourMayBeADecimalNumber) {
    EXPECT_EQ(Parse("[Colours]\nMwBRed=255\n[END]\n").Colours[MwBRed], 255);
}

TEST_F(Config, AColourKeyCountsAnywhereInItsLine) {
    EXPECT_EQ(Parse("[Colours]\nmy MwBRed is=7\n[END]\n").Colours[MwBRed], 7);
}

TEST_F(Config, ABracketedLineThatHoldsAKeyIsTakenForTheKeyOnPurpose) {
    EXPECT_EQ(Parse("[Colours]\n[MwBRed]=7\n[END]\n").Colours[MwBRed], 7);
    EXPECT_EQ(Parse("[Config]\n[Esc]=7\n[END]\n").Escape, "7");
}

TEST_F(Config, TheFirstKeyInSlotOrderWinsALine) {
    const ClientConfig read = Parse("[Colours]\nMwWhite MwBlack=5\n[END]\n");
    EXPECT_EQ(read.Colours[MwBlack], 5);
    EXPECT_EQ(read.Colours[MwWhite], kDefaultPalette[MwWhite]);
}

TEST_F(Config, AColourThatIsNoNumberIsTypeMismatch) {
    EXPECT_EQ(ErrorReading("[Colours]\nMwBlack=&Hxyz\n[END]\n"), TypeMismatch);
    EXPECT_EQ(ErrorReading("[Colours]\nMwBlack\n[END]\n"), TypeMismatch);
    EXPECT_EQ(ErrorReading("[Colours]\nMwBlack=&H\n[END]\n"), TypeMismatch);
    EXPECT_EQ(ErrorReading("[Colours]\nMwBlack=&H123456789\n[END]\n"), Overflow);
}

TEST_F(Config, AnUnknownColourLineShowsTwoMessagesAndEndsTheProgram) {
    EXPECT_THROW(Parse("[Colours]\nmwblack=&H0\n[END]\n"), EndProgram);
    EXPECT_EQ(fakes::Messages,
              (Names{"An Error has occured loading the configuration file", "mwblack=&H0"}));
}

TEST_F(Config, AnUnknownConfigLineHasAWordingOfItsOwnOnPurpose) {
    EXPECT_THROW(Parse("[Config]\nesc=;\n[END]\n"), EndProgram);
    EXPECT_EQ(fakes::Messages,
              (Names{"And error as occured loading the configuration file", "esc=;"}));
}

TEST_F(Config, TheEscapeIsAllThatFollowsTheEqualsSign) {
    EXPECT_EQ(Parse("[Config]\nEsc=\n[END]\n").Escape, "");
    EXPECT_EQ(Parse("[Config]\nEsc=||\n[END]\n").Escape, "||");
    EXPECT_EQ(Parse("[Config]\nEsc==\n[END]\n").Escape, "=");
    EXPECT_EQ(Parse("[Config]\nEsc\n[END]\n").Escape, "Esc");
}

TEST_F(Config, TheLastOfSeveralValuesCounts) {
    EXPECT_EQ(Parse("[Config]\nEsc=a\nEsc=b\n[Config]\nEsc=c\n[END]\n").Escape, "c");
}

TEST_F(Config, SectionsMayComeInAnyOrder) {
    const ClientConfig read =
        Parse("[Macros]\nOne\nTwo\n[Config]\nEsc=:\n[Colours]\nMwBlack=1\n[END]\n");
    EXPECT_EQ(read.Sets.size(), 2u);
    EXPECT_EQ(read.Escape, ":");
    EXPECT_EQ(read.Colours[MwBlack], 1);
}

TEST_F(Config, ASectionIsKnownByHowItsHeaderBegins) {
    EXPECT_EQ(Parse("[Config] and more\nEsc=:\n[END]\n").Escape, ":");
    Parse(" [Config]\nEsc=:\n[END]\n");
    EXPECT_EQ(fakes::Messages.size(), 2u);
}

TEST_F(Config, SetNamesLoseWhatStandsBeforeAnEqualsSign) {
    EXPECT_EQ(NamesIn("[Macros]\na=b=c\nplain \n[END]\n"), (Names{"b=c", "plain "}));
}

TEST_F(Config, ASecondMacroSectionBeginsAgainAndCutsTheTableBack) {
    EXPECT_EQ(NamesIn("[Macros]\nOne\nTwo\nThree\n[Macros]\nFour\n[END]\n"), (Names{"Four"}));
}

TEST_F(Config, AnEmptyMacroSectionLeavesTheTableAlone) {
    EXPECT_EQ(NamesIn("[Macros]\nOne\nTwo\n[Macros]\n[END]\n"), (Names{"One", "Two"}));
    EXPECT_EQ(NamesIn("[Macros]\n[END]\n"), (Names{"Default"}));
}

TEST_F(Config, ANamedSetLosesItsTriggersAndAliasesAndKeepsItsKeys) {
    Start.Sets[0].Triggers = {{"a", "b"}, {"c", "d"}};
    Start.Sets[0].Aliases = {{"a", "b", true}};
    SetKeyText(Start.Sets[0].NormKey, 112, "look");
    const MacroSet set = Parse("[Macros]\nNew\n[END]\n").Sets.at(0);
    EXPECT_EQ(set.Triggers, std::vector<TriggerEntry>(1));
    EXPECT_EQ(set.Aliases, std::vector<AliasEntry>(1));
    EXPECT_EQ(KeyText(set.NormKey, 112), "look");
}

TEST_F(Config, MoreSetsThanA16BitIndexCountsIsOverflow) {
    std::string text = "[Macros]\n";
    for (int i = 0; i < 32768; ++i)
        text += "s\n";
    EXPECT_EQ(Parse(text + "[END]\n").Sets.size(), 32768u);
    EXPECT_EQ(ErrorReading(text + "s\n[END]\n"), Overflow);
}

TEST_F(Config, AnUnknownSectionEndsTheReadingWithTwoMessages) {
    EXPECT_EQ(Parse("[Config]\nEsc=:\n[Sounds]\n[Config]\nEsc=!\n[END]\n").Escape, ":");
    EXPECT_EQ(fakes::Messages,
              (Names{"An Error has occured loading the configuration file", "[Sounds]"}));
}

TEST_F(Config, TextBehindTheEndIsIgnored) {
    EXPECT_EQ(Parse("[Config]\nEsc=:\n[END]\ngarbage\n[Config]\nEsc=!\n").Escape, ":");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Config, TheLastLineIsReadAndNeverLookedAt) {
    Parse("garbage");
    Parse("[Colours]\n[garbage");
    Parse("[Colours]\n");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Config, AFileCutInsideASectionIsInputPastEnd) {
    EXPECT_EQ(ErrorReading("[Colours]\nMwBlack=1\n"), InputPastEnd);
    EXPECT_EQ(ErrorReading("[Config]\nEsc=;"), InputPastEnd);
    EXPECT_EQ(ErrorReading("[Macros]\nDefault\n"), InputPastEnd);
    EXPECT_EQ(ErrorReading(""), InputPastEnd);
}

TEST_F(Config, CutAnywhereTheFileIsReadOrRefusedAndNothingElse) {
    const std::string whole = kDefaultFile;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        fakes::Messages.clear();
        try {
            const ClientConfig read = Parse(whole.substr(0, length));
            EXPECT_EQ(read.Sets.size(), 1u) << length;
        } catch (const Error& error) {
            EXPECT_TRUE(error.Number == InputPastEnd || error.Number == TypeMismatch) << length;
        } catch (const EndProgram&) {
            EXPECT_EQ(fakes::Messages.size(), 2u) << length;
        }
    }
}

TEST_F(Config, EachLineLetsEventsRun) {
    Parse(kDefaultFile);
    EXPECT_EQ(fakes::EventRuns, 23);
}

TEST_F(Config, AMissingFileIsWrittenFromMemory) {
    MacroSets[0].Name = "Mine";
    EscapeChar = "!";
    LoadClientConfig();
    EXPECT_NE(Kept().find("Esc=!\r\n[Macros]\r\nMine\r\n"), std::string::npos);
    EXPECT_EQ(EscapeChar, "!");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Config, LoadingSetsPaletteEscapeAndSets) {
    Keep("[Colours]\r\nMwBRed=&H1\r\n[Config]\r\nEsc=:\r\n[Macros]\r\nA\r\nB\r\n[END]\r\n");
    LoadClientConfig();
    EXPECT_EQ(Palette[MwBRed], 1);
    EXPECT_EQ(EscapeChar, ":");
    ASSERT_EQ(MacroSets.size(), 2u);
    EXPECT_EQ(MacroSets[1].Name, "B");
}

TEST_F(Config, ARefusedFileChangesNothingInMemoryOrOnDisk) {
    const std::string bad = "[Config]\r\nEsc=:\r\n[Colours]\r\nnonsense\r\n[END]\r\n";
    Keep(bad);
    EXPECT_THROW(LoadClientConfig(), EndProgram);
    EXPECT_EQ(EscapeChar, ";");
    EXPECT_EQ(Kept(), bad);
}

TEST_F(Config, AnEmptyFileIsAnErrorAndIsNotRewritten) {
    Keep("");
    EXPECT_THROW(LoadClientConfig(), Error);
    EXPECT_EQ(Kept(), "");
}

TEST_F(Config, InitSetsTheDefaultsFirst) {
    Palette = {};
    EscapeChar = "x";
    MacroSets[0].Name = "Other";
    KeepSentText = EchoOn = true;
    InitClientConfig();
    EXPECT_EQ(Palette, kDefaultPalette);
    EXPECT_EQ(EscapeChar, ";");
    EXPECT_EQ(MacroSets[0].Name, "Default");
    EXPECT_FALSE(KeepSentText);
    EXPECT_FALSE(EchoOn);
    EXPECT_EQ(Kept(), kDefaultFile);
}

TEST_F(Config, TheFontsOfSectionOutputAreReadCrosswiseOnPurpose) {
    InitClientConfig();
    EXPECT_EQ(OutputFontName, "10");
    EXPECT_EQ(OutputFontSize, "Courier");
    fakes::Registry["SOFTWARE\\MwClient\\Output"]["Font"] = {1, std::string("14\0", 3)};
    fakes::Registry["SOFTWARE\\MwClient\\Output"]["Name"] = {1, std::string("Fixed\0", 6)};
    InitClientConfig();
    EXPECT_EQ(OutputFontName, "14");
    EXPECT_EQ(OutputFontSize, "Fixed");
}

TEST_F(Config, AStoreThatCannotBeReadDoesNotStopTheStart) {
    fakes::OpenCode = 5;
    InitClientConfig();
    EXPECT_EQ(OutputFontName, "10");
    EXPECT_EQ(fakes::Panels[2], "Settings could not be read: Could not open registry section");
}

} // namespace
} // namespace mw
