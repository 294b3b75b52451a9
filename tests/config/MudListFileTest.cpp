#include "base/Error.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

using Texts = std::vector<std::string>;

const char* const kExample = "[Mud]\r\n"
                             "Mud=Quillmere\r\n"
                             "Addy=game.server.address\r\n"
                             "Port=1234\r\n"
                             "SndD=False\r\n"
                             "SndM=False\r\n"
                             "Msp=False\r\n"
                             "SndW=False\r\n"
                             "[Mud]\r\n"
                             "Mud=Northern Realms\r\n"
                             "Addy=192.0.2.10\r\n"
                             "Port=4000\r\n"
                             "SndD=True\r\n"
                             "SndM=True\r\n"
                             "Msp=True\r\n"
                             "SndW=True\r\n"
                             "[End]\r\n";

const std::vector<MudEntry> kExampleList = {
    {"Quillmere", "game.server.address", 1234, false, false, false, false},
    {"Northern Realms", "192.0.2.10", 4000, true, true, true, true},
};

std::string Record(const std::string& name, const std::string& sndW = "False",
                   const std::string& port = "1") {
    return "[Mud]\nMud=" + name + "\nAddy=a\nPort=" + port + "\nSndD=False\nSndM=False\nMsp=False" +
           "\nSndW=" + sndW + "\n";
}

std::vector<MudEntry> Parse(std::string_view text) { return ParseMudList(text, DefaultMudList()); }

Texts NamesIn(std::string_view text) {
    Texts names;
    for (const MudEntry& mud : Parse(text))
        names.push_back(mud.Name);
    return names;
}

std::int32_t ErrorReading(std::string_view text) {
    return ErrorOf([&] { Parse(text); });
}

class MudListFile : public RuleTest {
protected:
    MudListFile() { MakeFolder("Data"); }

    FreshFolder Folder;
};

TEST_F(MudListFile, IsWrittenByteForByte) { EXPECT_EQ(FormatMudList(kExampleList), kExample); }

TEST_F(MudListFile, AFirstRecordOfTheMakersReplacesEntryZero) {
    EXPECT_EQ(NamesIn(Record("The Quillmere of old") + Record("B") + "[End]\n"),
              (Texts{"The Quillmere of old", "B"}));
}

TEST_F(MudListFile, AnotherFirstRecordGoesToEntryOne) {
    EXPECT_EQ(NamesIn(Record("A") + Record("B") + "[End]\n"), (Texts{"Quillmere", "A", "B"}));
    EXPECT_EQ(NamesIn(Record("quillmere") + "[End]\n"), (Texts{"Quillmere", "quillmere"}));
}

TEST_F(MudListFile, TheMakersNameCountsInTheFirstRecordOnly) {
    EXPECT_EQ(NamesIn(Record("A") + Record("Quillmere") + "[End]\n"),
              (Texts{"Quillmere", "A", "Quillmere"}));
}

TEST_F(MudListFile, TheSeventhLineLandsInEntryZeroOnPurpose) {
    const std::vector<MudEntry> read = Parse(kExample);
    EXPECT_TRUE(read[0].SndW);
    EXPECT_FALSE(read[1].SndW);
    EXPECT_TRUE(read[1].SndD && read[1].SndM && read[1].Msp);
    EXPECT_FALSE(Parse(Record("A", "True") + Record("B", "False") + "[End]\n")[0].SndW);
}

TEST_F(MudListFile, LoadedSavedAndLoadedAgainOnlyEntryZeroMayPlayWaves) {
    WriteFile("Data\\muds.lst", kExample);
    LoadMudList();
    SaveMudList();
    MudList = DefaultMudList();
    LoadMudList();
    EXPECT_FALSE(MudList[0].SndW); // the last record's switch was lost by the first loading
    EXPECT_FALSE(MudList[1].SndW);
}

TEST_F(MudListFile, KeysCountByPosition) {
    const std::vector<MudEntry> read = Parse("[Mud]\nAddy=host\nMud=name\nPort=1\nMsp=True\n"
                                             "x=False\nFalse\nFalse\n[End]\n");
    EXPECT_EQ(read[1], (MudEntry{"host", "name", 1, false, false, false, true}));
}

TEST_F(MudListFile, AMissingEndIsAccepted) {
    EXPECT_EQ(NamesIn(Record("A") + Record("B")), (Texts{"Quillmere", "A", "B"}));
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(MudListFile, WhatFollowsTheEndIsIgnored) {
    EXPECT_EQ(NamesIn(Record("A") + "[End]\ngarbage\n" + Record("B")), (Texts{"Quillmere", "A"}));
}

TEST_F(MudListFile, TheLastLineIsReadAndNeverLookedAt) {
    EXPECT_EQ(NamesIn("garbage"), (Texts{"Quillmere"}));
    EXPECT_EQ(NamesIn(Record("A") + "garbage"), (Texts{"Quillmere", "A"}));
}

TEST_F(MudListFile, AnotherLineShowsTwoMessagesAndEndsTheProgram) {
    EXPECT_THROW(Parse(Record("A") + "\n" + Record("B") + "[End]\n"), EndProgram);
    EXPECT_EQ(fakes::Messages, (Texts{"An error has occured loading the mud list", ""}));
    fakes::Messages.clear();
    EXPECT_THROW(Parse("[mud]\nrest\n"), EndProgram);
    EXPECT_EQ(fakes::Messages, (Texts{"An error has occured loading the mud list", "[mud]"}));
}

TEST_F(MudListFile, APortOrSwitchThatDoesNotConvertIsAnError) {
    EXPECT_EQ(ErrorReading(Record("A", "False", "99999")), Overflow);
    EXPECT_EQ(ErrorReading(Record("A", "False", "40a0")), TypeMismatch);
    EXPECT_EQ(ErrorReading(Record("A", "maybe")), TypeMismatch);
    EXPECT_EQ(Parse(Record("A", "1", "&H50") + "[End]\n")[1].Port, 80);
}

TEST_F(MudListFile, AFileCutInsideARecordIsInputPastEnd) {
    EXPECT_EQ(ErrorReading(""), InputPastEnd);
    EXPECT_EQ(ErrorReading("[Mud]\nMud=A\nAddy=b\n"), InputPastEnd);
}

TEST_F(MudListFile, MoreRecordsThanA16BitIndexCountsIsOverflow) {
    std::string text;
    for (int i = 0; i < 32768; ++i)
        text += Record("Quillmere");
    EXPECT_EQ(Parse(text).size(), 32768u);
    EXPECT_EQ(ErrorReading(text + Record("x")), Overflow);
    std::string shifted;
    for (int i = 0; i < 32768; ++i)
        shifted += Record("x");
    EXPECT_EQ(ErrorReading(shifted), Overflow);
}

TEST_F(MudListFile, AMissingFileIsWrittenFromTheList) {
    MudList = kExampleList;
    LoadMudList();
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), kExample);
    EXPECT_EQ(MudList, kExampleList);
}

TEST_F(MudListFile, ARefusedFileLeavesListAndFileAlone) {
    const std::string bad = Record("A") + "garbage\n\n";
    WriteFile("Data\\muds.lst", bad);
    EXPECT_THROW(LoadMudList(), EndProgram);
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), bad);
}

TEST_F(MudListFile, CutAnywhereItIsReadOrRefusedAndNothingElse) {
    const std::string whole = kExample;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        fakes::Messages.clear();
        try {
            EXPECT_LE(Parse(whole.substr(0, length)).size(), 2u);
        } catch (const Error& error) {
            EXPECT_TRUE(error.Number == InputPastEnd || error.Number == TypeMismatch) << length;
        } catch (const EndProgram&) {
            EXPECT_EQ(fakes::Messages.size(), 2u) << length;
        }
    }
}

TEST_F(MudListFile, TheSwitchOfTheLastRecordMovesWithEachLoadingAndSavingOnPurpose) {
    WriteFile("Data\\muds.lst", Record("A", "False") + Record("B", "True") + "[End]\n");
    LoadMudList();
    EXPECT_EQ(MudList, (std::vector<MudEntry>{{"Quillmere", DefaultMudList()[0].Address, 1234,
                                               false, true, false, false},
                                              {"A", "a", 1, false, false, false, false},
                                              {"B", "a", 1, false, false, false, false}}));
    SaveMudList();
    LoadMudList();
    EXPECT_EQ(MudList.size(), 3u);
    for (const MudEntry& mud : MudList)
        EXPECT_FALSE(mud.SndW) << mud.Name;
}

TEST_F(MudListFile, AListOfOneEntryKeepsItsSwitch) {
    MudList[0].SndW = true;
    const std::vector<MudEntry> list = MudList;
    SaveMudList();
    ResetMudList();
    LoadMudList();
    EXPECT_EQ(MudList, list);
}

TEST_F(MudListFile, ARecordMayEndTheFile) {
    EXPECT_EQ(ErrorReading(Record("A")), 0);
    std::string cut = Record("A");
    cut.pop_back(); // without its line end
    EXPECT_EQ(NamesIn(cut), (Texts{"Quillmere", "A"}));
}

struct BadFile {
    const char* Name;
    std::string Text;
    std::int32_t Number;
};

void PrintTo(const BadFile& row, std::ostream* out) { *out << row.Name; }

class BadMudFiles : public MudListFile, public testing::WithParamInterface<BadFile> {};

TEST_P(BadMudFiles, LeaveListAndFileAlone) {
    MudList = kExampleList;
    WriteFile("Data\\muds.lst", GetParam().Text);
    EXPECT_EQ(ErrorOf(LoadMudList), GetParam().Number);
    EXPECT_EQ(MudList, kExampleList);
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), GetParam().Text);
    EXPECT_TRUE(fakes::Messages.empty());
}

const BadFile kBadFiles[] = {
    {"NothingAtAll", "", InputPastEnd},
    {"CutInTheFirstRecord", "[Mud]\r\nMud=A\r\n", InputPastEnd},
    {"CutInTheSecondRecord", Record("A") + "[Mud]\nMud=B\nAddy=b\nPort=1\n", InputPastEnd},
    {"APortTooLarge", Record("A") + Record("B", "False", "32768"), Overflow},
    {"APortTooSmall", Record("A", "False", "-32769"), Overflow},
    {"APortOfLetters", Record("A") + Record("B", "False", "telnet"), TypeMismatch},
    {"NoPort", Record("A", "False", ""), TypeMismatch},
    {"ASwitchOfLetters", Record("A", "yes"), TypeMismatch},
    {"NoSwitch", Record("A", ""), TypeMismatch},
};

INSTANTIATE_TEST_SUITE_P(Rows, BadMudFiles, testing::ValuesIn(kBadFiles),
                         [](const auto& row) { return row.param.Name; });

TEST_F(MudListFile, ATakenFolderLoadsWhatIsThereAndElseTheDefault) {
    FolderIsTaken = true;
    LoadMudList();
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_FALSE(Exists("muds.lst", "Data"));
    FolderIsTaken = false;
    WriteFile("Data\\muds.lst", kExample);
    FolderIsTaken = true;
    LoadMudList();
    EXPECT_EQ(MudList.at(1).Name, "Northern Realms");
    MudList.clear();
    SaveMudList();
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), kExample);
}

} // namespace
} // namespace mw
