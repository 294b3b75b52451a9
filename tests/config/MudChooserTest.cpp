#include "config/MudChooser.h"

#include "base/Error.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

#include <ostream>

namespace mw {
namespace {

using Steps = std::vector<std::string>;

const MudEntry kNorthern = {"Northern Realms", "192.0.2.10", 4000, true, false, true, true};
const MudEntry kAnother = {"Another", "", -1, false, false, false, false};

// Three games, kept in their file; the first is the current one.
class ChooserTest : public RuleTest {
protected:
    ChooserTest() {
        MudList[0].Address = "game.example";
        MudList.push_back(kNorthern);
        MudList.push_back(kAnother);
        MakeFolder("Data");
        SaveMudList();
        FileBefore = File();
        Before = MudList;
    }

    std::string File() const { return Folder.ContentOf("Data/muds.lst"); }

    static Steps Names() {
        Steps names;
        for (const MudEntry& mud : MudList)
            names.push_back(mud.Name);
        return names;
    }

    void ExpectNothingChanged() const {
        EXPECT_EQ(MudList, Before);
        EXPECT_EQ(File(), FileBefore);
    }

    FreshFolder Folder;
    std::string FileBefore;
    std::vector<MudEntry> Before;
};

class Choosing : public ChooserTest {};

TEST_F(Choosing, MakesTheEntryTheCurrentGameAndShowsIt) {
    cboMud_Click(1);
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(fakes::Calls, (Steps{"cboMud index 1", "lblAddress 192.0.2.10", "lblPort 4000"}));
    fakes::Calls.clear();
    cboMud_Click(2);
    EXPECT_EQ(CurrentMud, 2);
    EXPECT_EQ(fakes::Calls, (Steps{"cboMud index 2", "lblAddress ", "lblPort -1"}));
    fakes::Calls.clear();
    cboMud_Click(0);
    EXPECT_EQ(CurrentMud, 0);
    EXPECT_EQ(fakes::Calls, (Steps{"cboMud index 0", "lblAddress game.example", "lblPort 1234"}));
}

TEST_F(Choosing, KeepsTheCurrentGameWhenNoEntryIsChosen) {
    CurrentMud = 1;
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}, std::int16_t{32767}}) {
        EXPECT_EQ(ErrorOf([index] { cboMud_Click(index); }), SubscriptOutOfRange) << index;
        EXPECT_EQ(CurrentMud, 1);
        EXPECT_TRUE(fakes::Calls.empty());
    }
}

TEST_F(Choosing, ChangesNeitherListNorFile) {
    cboMud_Click(2);
    ExpectNothingChanged();
}

class Adding : public ChooserTest {};

TEST_F(Adding, AppendsTheGameWithItsSoundsOff) {
    EXPECT_TRUE(AddMud("New", "new.example", "5000"));
    ASSERT_EQ(MudList.size(), 4u);
    EXPECT_EQ(MudList[3], (MudEntry{"New", "new.example", 5000, false, false, false, false}));
    MudList.pop_back();
    EXPECT_EQ(MudList, Before);
}

TEST_F(Adding, WritesTheFileByteForByte) {
    AddMud("New", "new.example", "5000");
    const std::string end = "[End]\r\n";
    EXPECT_EQ(File(), FileBefore.substr(0, FileBefore.size() - end.size()) +
                          "[Mud]\r\nMud=New\r\nAddy=new.example\r\nPort=5000\r\nSndD=False\r\n"
                          "SndM=False\r\nMsp=False\r\nSndW=False\r\n[End]\r\n");
}

TEST_F(Adding, AddsTheNameToTheChoosersBeforeItSaves) {
    std::string fileThen;
    std::size_t sizeThen = 0;
    fakes::OnCall = [&](const std::string&) {
        fileThen = File();
        sizeThen = MudList.size();
    };
    AddMud("New", "new.example", "5000");
    EXPECT_EQ(fakes::Calls, Steps{"cboMud add New"});
    EXPECT_EQ(sizeThen, 4u);
    EXPECT_EQ(fileThen, FileBefore);
}

TEST_F(Adding, LeavesTheChoiceAlone) {
    cboMud_Click(1);
    AddMud("New", "new.example", "5000");
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(fakes::ListIndex, 1);
}

TEST_F(Adding, TakesANameThatIsThereAlready) {
    EXPECT_TRUE(AddMud("Another", "other.example", "1"));
    EXPECT_EQ(Names(), (Steps{"Quillmere", "Northern Realms", "Another", "Another"}));
}

TEST_F(Adding, TakesNamesThatCanBeNoFolders) {
    const Steps names = {"/", "..", "Data", "Macros", "C:", "a\\b", "  ", "=x"};
    for (const std::string& name : names)
        EXPECT_TRUE(AddMud(name, "a", "1")) << name;
    EXPECT_EQ(MudList.size(), Before.size() + names.size());
    EXPECT_TRUE(fakes::Messages.empty());
}

struct Refused {
    const char* Case;
    const char* Name;
    const char* Address;
    const char* Port;
    const char* Message;
};

void PrintTo(const Refused& row, std::ostream* out) { *out << row.Case; }

class Refusals : public ChooserTest, public testing::WithParamInterface<Refused> {};

TEST_P(Refusals, ShowOneMessageAndChangeNothing) {
    const Refused& row = GetParam();
    EXPECT_FALSE(AddMud(row.Name, row.Address, row.Port));
    EXPECT_EQ(fakes::Messages, Steps{row.Message});
    EXPECT_EQ(fakes::Calls.size(), 1u); // the message
    ExpectNothingChanged();
}

const Refused kRefused[] = {
    {"NoName", "", "a", "1", "Mud name invalid"},
    {"ANameOfOneBlank", " ", "a", "1", "Mud name invalid"},
    {"TheNameIsLookedAtFirst", "", "", "", "Mud name invalid"},
    {"TheNameBeforeTheAddress", " ", " ", "1", "Mud name invalid"},
    {"TheNameBeforeThePort", "", "a", "x", "Mud name invalid"},
    {"NoAddress", "n", "", "1", "Mud Address Invalid"},
    {"AnAddressOfOneBlank", "n", " ", "1", "Mud Address Invalid"},
    {"TheAddressBeforeThePort", "n", "", "", "Mud Address Invalid"},
    {"TheAddressBeforeAPortOfLetters", "n", " ", "x", "Mud Address Invalid"},
    {"NoPort", "n", "a", "", "Mud Port Invalid"},
    {"APortOfOneBlank", "n", "a", " ", "Mud Port Invalid"},
    {"APortOfTwoBlanks", "n", "a", "  ", "Port Not Valid"},
    {"APortOfLetters", "n", "a", "telnet", "Port Not Valid"},
    {"APortWithALetter", "n", "a", "40a0", "Port Not Valid"},
    {"TwoPorts", "n", "a", "40 50", "Port Not Valid"},
    {"HexadecimalWithoutADigit", "n", "a", "&H", "Port Not Valid"},
    {"ASignAlone", "n", "a", "-", "Port Not Valid"},
    {"AnExponentWithoutADigit", "n", "a", "1e", "Port Not Valid"},
    {"ATab", "n", "a", "\t1", "Port Not Valid"},
};

INSTANTIATE_TEST_SUITE_P(Rows, Refusals, testing::ValuesIn(kRefused),
                         [](const auto& row) { return row.param.Case; });

struct TakenPort {
    const char* Case;
    const char* Text;
    std::int16_t Port;
};

void PrintTo(const TakenPort& row, std::ostream* out) { *out << row.Case; }

class TakenPorts : public ChooserTest, public testing::WithParamInterface<TakenPort> {};

TEST_P(TakenPorts, AreNumbersOfAnyForm) {
    ASSERT_TRUE(AddMud("n", "a", GetParam().Text));
    EXPECT_EQ(MudList.back().Port, GetParam().Port);
    EXPECT_TRUE(fakes::Messages.empty());
}

const TakenPort kTakenPorts[] = {
    {"Decimal", "4000", 4000},
    {"Hexadecimal", "&H50", 80},
    {"HexadecimalInSmallLetters", "&hff", 255},
    {"Octal", "&O17", 15},
    {"WithBlanksAround", " 23 ", 23},
    {"WithAnExponent", "1e3", 1000},
    {"AHalfGoesToTheEvenOne", "22.5", 22},
    {"TheLargest", "32767", 32767},
    {"TheLargestByRounding", "32767.4", 32767},
    {"ZeroIsStored", "0", 0},
    {"BelowZeroIsStored", "-5", -5},
    {"TheSmallest", "-32768", -32768},
};

INSTANTIATE_TEST_SUITE_P(Rows, TakenPorts, testing::ValuesIn(kTakenPorts),
                         [](const auto& row) { return row.param.Case; });

TEST_F(Adding, OverflowsWithNothingChangedForAPortBeyond16Bits) {
    for (const char* const port :
         {"99999", "32768", "-32769", "32767.5", "&H8000", "1e300", "1e999"}) {
        EXPECT_EQ(ErrorOf([port] { AddMud("n", "a", port); }), Overflow) << port;
        EXPECT_TRUE(fakes::Calls.empty());
        ExpectNothingChanged();
    }
}

TEST_F(Adding, TakesTheLastEntryThatAnIndexReaches) {
    MudList.resize(32767);
    EXPECT_TRUE(AddMud("last", "a", "1"));
    EXPECT_EQ(MudAt(32767).Name, "last");
    EXPECT_TRUE(File().ends_with("Mud=last\r\nAddy=a\r\nPort=1\r\nSndD=False\r\nSndM=False\r\n"
                                 "Msp=False\r\nSndW=False\r\n[End]\r\n"));
}

TEST_F(Adding, OverflowsWithNothingChangedWhenTheListIsFull) {
    MudList.resize(32768);
    EXPECT_EQ(ErrorOf([] { AddMud("n", "a", "1"); }), Overflow);
    EXPECT_EQ(MudList.size(), 32768u);
    EXPECT_EQ(File(), FileBefore);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(Adding, OverflowsOnAFullListBeforeItLooksAtTheTexts) {
    MudList.resize(32768);
    EXPECT_EQ(ErrorOf([] { AddMud("", "", ""); }), Overflow);
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Adding, GoesOnWhenTheFileCannotBeWritten) {
    std::filesystem::remove_all(Folder.Path / "Data");
    EXPECT_TRUE(AddMud("New", "new.example", "5000"));
    EXPECT_EQ(MudList.size(), 4u);
    EXPECT_TRUE(Folder.IsEmpty());
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Adding, MakesNoFolder) {
    AddMud("New", "new.example", "5000");
    EXPECT_FALSE(Exists("", "New"));
}

class Deleting : public ChooserTest {
protected:
    static void Delete(std::int16_t index) {
        cboMud_Click(index);
        fakes::Calls.clear();
        DeleteMud();
    }
};

TEST_F(Deleting, TheMakersGameIsRefused) {
    Delete(0);
    EXPECT_EQ(fakes::Messages, Steps{"You cannot delete this mud"});
    EXPECT_EQ(fakes::Calls.size(), 1u); // the message
    ExpectNothingChanged();
}

TEST_F(Deleting, EntryZeroIsRefusedWhateverItsName) {
    MudList[0] = kNorthern;
    MudList.resize(1);
    Delete(0);
    EXPECT_EQ(MudList, std::vector<MudEntry>{kNorthern});
    EXPECT_EQ(fakes::Messages, Steps{"You cannot delete this mud"});
}

TEST_F(Deleting, AnEntryInTheMiddleClosesTheGap) {
    Delete(1);
    EXPECT_EQ(MudList, (std::vector<MudEntry>{Before[0], kAnother}));
}

TEST_F(Deleting, TheLastEntryShortensTheList) {
    Delete(2);
    EXPECT_EQ(MudList, (std::vector<MudEntry>{Before[0], kNorthern}));
}

TEST_F(Deleting, LeavesTheMakersGameWhenAllOthersAreGone) {
    Delete(2);
    Delete(1);
    EXPECT_EQ(MudList, std::vector<MudEntry>{Before[0]});
    Delete(0);
    EXPECT_EQ(MudList, std::vector<MudEntry>{Before[0]});
}

TEST_F(Deleting, WritesTheFileByteForByte) {
    Delete(1);
    EXPECT_EQ(File(), "[Mud]\r\nMud=Quillmere\r\nAddy=game.example\r\nPort=1234\r\nSndD=False\r\n"
                      "SndM=False\r\nMsp=False\r\nSndW=False\r\n"
                      "[Mud]\r\nMud=Another\r\nAddy=\r\nPort=-1\r\nSndD=False\r\n"
                      "SndM=False\r\nMsp=False\r\nSndW=False\r\n[End]\r\n");
}

TEST_F(Deleting, SelectsEntryZeroAsTheCurrentGame) {
    for (const std::int16_t index : {std::int16_t{2}, std::int16_t{1}}) {
        Delete(index);
        EXPECT_EQ(CurrentMud, 0);
        EXPECT_EQ(fakes::ListIndex, 0);
        EXPECT_EQ(fakes::Calls, (Steps{"cboMud remove " + std::to_string(index), "cboMud index 0",
                                       "lblAddress game.example", "lblPort 1234"}));
    }
}

TEST_F(Deleting, GoesByTheChooserAndNotByTheCurrentGame) {
    CurrentMud = 1;
    fakes::ListIndex = 2;
    DeleteMud();
    EXPECT_EQ(Names(), (Steps{"Quillmere", "Northern Realms"}));
}

TEST_F(Deleting, ShortensTheListBeforeTheChooserAndSavesBehindIt) {
    std::vector<std::size_t> sizes;
    Steps files;
    cboMud_Click(1);
    fakes::OnCall = [&](const std::string&) {
        sizes.push_back(MudList.size());
        files.push_back(File() == FileBefore ? "old" : "new");
    };
    DeleteMud();
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 2, 2, 2}));
    EXPECT_EQ(files, (Steps{"old", "new", "new", "new"}));
}

TEST_F(Deleting, FailsWithoutASelectedEntry) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
        fakes::ListIndex = index;
        EXPECT_EQ(ErrorOf(DeleteMud), SubscriptOutOfRange) << index;
        EXPECT_TRUE(fakes::Calls.empty());
        ExpectNothingChanged();
    }
}

TEST_F(Deleting, LeavesTheGamesFolderAndItsSounds) {
    MakeGameFolders("Northern Realms");
    Folder.MakeFile("Northern Realms/sounds/bell.wav");
    Delete(1);
    EXPECT_TRUE(Exists("bell.wav", "Northern Realms\\sounds"));
}

class FindingOrAdding : public ChooserTest {};

TEST_F(FindingOrAdding, FindsAGameByItsName) {
    EXPECT_EQ(FindOrAddMud("Northern Realms"), 1);
    EXPECT_EQ(FindOrAddMud("Quillmere"), 0);
    ExpectNothingChanged();
}

TEST_F(FindingOrAdding, FindsTheFirstOfTwoGamesOfOneName) {
    MudList.push_back(kNorthern);
    EXPECT_EQ(FindOrAddMud("Northern Realms"), 1);
}

TEST_F(FindingOrAdding, FindsAGameWithAColonInItsName) {
    MudList[2].Name = "Realms: North";
    EXPECT_EQ(FindOrAddMud("Realms: North"), 2);
    MudList[2].Name = "192.0.2.10:4000"; // the name counts before the address
    EXPECT_EQ(FindOrAddMud("192.0.2.10:4000"), 2);
}

TEST_F(FindingOrAdding, FindsAGameByItsAddressAndPort) {
    EXPECT_EQ(FindOrAddMud("192.0.2.10:4000"), 1);
    EXPECT_EQ(FindOrAddMud("192.0.2.10:&HFA0"), 1);
    EXPECT_EQ(FindOrAddMud("game.example:1234"), 0);
    ExpectNothingChanged();
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(FindingOrAdding, AddsAHostAndPortAsTheDialogWould) {
    EXPECT_EQ(FindOrAddMud("new.example:5000"), 3);
    EXPECT_EQ(MudList.at(3),
              (MudEntry{"new.example", "new.example", 5000, false, false, false, false}));
    EXPECT_EQ(fakes::Calls, Steps{"cboMud add new.example"});
    EXPECT_EQ(File(), FormatMudList(MudList));
    EXPECT_TRUE(Folder.HasFolder("new.example/sounds"));
}

TEST_F(FindingOrAdding, AddsAnotherPortOfAHostThatIsThere) {
    EXPECT_EQ(FindOrAddMud("192.0.2.10:4001"), 3);
    EXPECT_EQ(FindOrAddMud("192.0.2.10:4001"), 3); // and only once
    EXPECT_EQ(MudList.size(), 4u);
}

TEST_F(FindingOrAdding, TakesThePortBehindTheLastColon) {
    EXPECT_EQ(FindOrAddMud("::1:5000"), 3);
    EXPECT_EQ(MudList.at(3).Address, "::1");
    EXPECT_EQ(MudList.at(3).Port, 5000);
}

TEST_F(FindingOrAdding, GivesAHostThatCanBeNoFolderNone) {
    EXPECT_EQ(FindOrAddMud("..:5000"), 3);
    EXPECT_EQ(FindOrAddMud("Data:5000"), 4);
    EXPECT_EQ(Folder.Contents(),
              (std::map<std::string, std::string>{{"Data", ""}, {"Data/muds.lst", File()}}));
}

TEST_F(FindingOrAdding, FindsNothingInATextThatIsNeitherNameNorHostAndPort) {
    for (const char* const text : {"", "no such game", "northern realms", "Northern Realms ", ":",
                                   ":5000", "new.example:", "new.example: ", "new.example:telnet",
                                   "new.example:40a0", "new.example:5000:"}) {
        EXPECT_EQ(FindOrAddMud(text), -1) << text;
        EXPECT_TRUE(fakes::Calls.empty()) << text;
        ExpectNothingChanged();
    }
}

TEST_F(FindingOrAdding, TakesABlankForNoHost) {
    EXPECT_EQ(FindOrAddMud(" :5000"), -1);
    ExpectNothingChanged();
}

TEST_F(FindingOrAdding, OverflowsWithNothingChangedForAPortBeyond16Bits) {
    for (const char* const text : {"new.example:99999", "192.0.2.10:69536"}) {
        EXPECT_EQ(ErrorOf([text] { FindOrAddMud(text); }), Overflow) << text;
        ExpectNothingChanged();
    }
}

TEST_F(FindingOrAdding, OverflowsWhenTheListIsFullAndTheGameIsNotThere) {
    MudList.resize(32768);
    MudList.back().Name = "last";
    EXPECT_EQ(FindOrAddMud("last"), 32767);
    EXPECT_EQ(ErrorOf([] { FindOrAddMud("new.example:5000"); }), Overflow);
}

TEST_F(FindingOrAdding, KeepsTheGameWhenItsFolderCannotBeMade) {
    std::filesystem::remove_all(Folder.Path);
    EXPECT_EQ(ErrorOf([] { FindOrAddMud("new.example:5000"); }), PathFileAccess);
    EXPECT_EQ(MudList.size(), 4u);
}

TEST_F(FindingOrAdding, WritesNothingBelowATakenFolder) {
    FolderIsTaken = true;
    const auto before = Folder.Contents();
    EXPECT_EQ(FindOrAddMud("new.example:5000"), 3);
    EXPECT_EQ(Folder.Contents(), before);
}

TEST_F(FindingOrAdding, LetsNoLineBreakIntoTheFile) {
    for (const char* const text : {"b\nb:5000", "c\rc:5000", "d\r\n[End]:5000", "e\te:5000"}) {
        EXPECT_EQ(FindOrAddMud(text), -1) << text;
        EXPECT_TRUE(fakes::Calls.empty()) << text;
    }
}

} // namespace
} // namespace mw
