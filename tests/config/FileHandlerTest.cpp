#include "config/FileHandler.h"

#include "base/Error.h"
#include "config/FreshFolder.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace std::string_literals;

namespace mw {
namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    static std::int32_t MakeFolderError(const std::string& name) {
        return ErrorOf([&name] { MakeFolder(name); });
    }

    FreshFolder Folder;
};

TEST_F(Files, ExistInTheApplicationFolder) {
    EXPECT_FALSE(Exists("a.txt", ""));
    Folder.MakeFile("a.txt");
    EXPECT_TRUE(Exists("a.txt", ""));
    EXPECT_FALSE(Exists("b.txt", ""));
}

TEST_F(Files, ExistInAFolderBelowIt) {
    fs::create_directory(Folder.Path / "Data");
    EXPECT_FALSE(Exists("client.cfg", "Data"));
    Folder.MakeFile("Data/client.cfg");
    EXPECT_TRUE(Exists("client.cfg", "Data"));
    EXPECT_FALSE(Exists("client.cfg", ""));
    EXPECT_FALSE(Exists("client.cfg", "Macros"));
}

TEST_F(Files, ExistBehindBackslashes) {
    fs::create_directories(Folder.Path / "Game" / "sounds");
    Folder.MakeFile("Game/sounds/bell.wav");
    EXPECT_TRUE(Exists("bell.wav", "Game\\sounds"));
    EXPECT_TRUE(Exists("sounds\\bell.wav", "Game"));
    EXPECT_TRUE(Exists("\\Game\\sounds\\bell.wav", ""));
    EXPECT_TRUE(Exists("", "\\Game"));
}

TEST_F(Files, ExistAsFoldersToo) {
    fs::create_directories(Folder.Path / "Game" / "sounds");
    EXPECT_TRUE(Exists("", "Game"));
    EXPECT_TRUE(Exists("Game", ""));
    EXPECT_TRUE(Exists("sounds", "Game"));
    EXPECT_FALSE(Exists("", "Other"));
}

TEST_F(Files, ExistUnderAFoldersNameToo) {
    Folder.MakeFile("Game");
    EXPECT_TRUE(Exists("Game", ""));
    EXPECT_TRUE(Exists("", "Game"));
}

TEST_F(Files, ExistForTheApplicationFolderItself) {
    EXPECT_TRUE(Exists("", ""));
    ApplicationFolder = Folder.Path / "gone";
    EXPECT_FALSE(Exists("", ""));
}

TEST_F(Files, DoNotExistBehindAFileAndRaiseNothing) {
    Folder.MakeFile("a.txt");
    EXPECT_FALSE(Exists("b.txt", "a.txt"));
}

TEST_F(Files, DoNotExistUnderImpossibleNamesAndRaiseNothing) {
    EXPECT_FALSE(Exists(std::string(5000, 'x'), ""));
    EXPECT_FALSE(Exists("", std::string(300, 'x')));
}

TEST_F(Files, HaveNamesOfTheClientsCodePage) {
    MakeFolder("Caf\xe9 \x80");
    EXPECT_TRUE(Folder.HasFolder(fs::path(u8"Caf\u00e9 \u20ac")));
    EXPECT_TRUE(Exists("", "Caf\xe9 \x80"));
}

TEST_F(Files, AreMadeAsFolders) {
    MakeFolder("Data");
    EXPECT_TRUE(Folder.HasFolder("Data"));
    MakeFolder("Data\\sounds");
    EXPECT_TRUE(Folder.HasFolder("Data/sounds"));
    MakeFolder("\\Macros");
    EXPECT_TRUE(Folder.HasFolder("Macros"));
}

TEST_F(Files, AreNotMadeAsAFolderTwice) {
    MakeFolder("Data");
    EXPECT_EQ(MakeFolderError("Data"), PathFileAccess);
    EXPECT_TRUE(Folder.HasFolder("Data"));
}

TEST_F(Files, AreNotMadeAsAFolderWhereAFileIs) {
    Folder.MakeFile("Data");
    EXPECT_EQ(MakeFolderError("Data"), PathFileAccess);
    EXPECT_EQ(Folder.ContentOf("Data"), "x");
}

TEST_F(Files, AreNotMadeAsAFolderInAFolderThatIsNotThere) {
    EXPECT_EQ(MakeFolderError("Game\\sounds"), PathFileAccess);
    EXPECT_TRUE(Folder.IsEmpty());
}

TEST_F(Files, AreNotMadeAsAFolderWithoutAName) { EXPECT_EQ(MakeFolderError(""), PathFileAccess); }

TEST_F(Files, AreNotMadeAsAFolderWithALongName) {
    EXPECT_EQ(MakeFolderError(std::string(300, 'x')), PathFileAccess);
}

struct Name {
    const char* What;
    std::string Text;
    bool IsFolderName;
};

void PrintTo(const Name& name, std::ostream* out) { *out << name.What; }

const Name kNames[] = {
    {"AWord", "Quillmere", true},
    {"TwoWords", "Northern Realms", true},
    {"ADotInside", "a.b", true},
    {"TwoDotsInside", "a..b", true},
    {"TwoDotsInFront", "..a", true},
    {"ADotInFront", ".hidden", true},
    {"ADotBehind", "Realms.", true},
    {"HighCharacters", "Caf\xe9 \x80", true},
    {"Marks", "<Realms> \"of\" *the* |North|?", true},
    {"DataWithMore", "Data2", true},
    {"MacrosWithMore", "My Macros", true},
    {"SoundsIsNoneOfTheClients", "sounds", true},
    {"Nothing", "", false},
    {"ABlank", " ", false},
    {"Dot", ".", false},
    {"TwoDots", "..", false},
    {"ThreeDots", "...", false},
    {"TwoDotsAndABlank", ".. ", false},
    {"ABlankAndTwoDots", " ..", false},
    {"ASlash", "/", false},
    {"AnAbsolutePath", "/etc", false},
    {"ASlashInside", "a/b", false},
    {"ASlashBehind", "a/", false},
    {"UpAndAway", "../away", false},
    {"UpInside", "a/../../away", false},
    {"ABackslash", "\\", false},
    {"ABackslashInside", "a\\b", false},
    {"UpByABackslash", "..\\away", false},
    {"AServersShare", "\\\\server\\share", false},
    {"ADrive", "C:", false},
    {"ADrivesPath", "C:\\Games", false},
    {"AColonInside", "a:b", false},
    {"ANul", "a\0b"s, false},
    {"ALineFeed", "a\nb", false},
    {"ATab", "\ta", false},
    {"AnEsc", "a\x1b", false},
    {"TheLastControlCharacter", "a\x1f", false},
    {"Data", "Data", false},
    {"Macros", "Macros", false},
    {"Long", std::string(5000, 'x'), false},
    {"LongerThanAFileSystemTakes", std::string(256, 'x'), false},
    {"LongerThanAFileSystemTakesInUnicode", std::string(200, '\xe9'), false},
};

class FolderNames : public testing::TestWithParam<Name> {};

TEST_P(FolderNames, AreOneComponentBelowTheApplicationFolder) {
    EXPECT_EQ(IsFolderName(GetParam().Text), GetParam().IsFolderName);
}

INSTANTIATE_TEST_SUITE_P(Names, FolderNames, testing::ValuesIn(kNames),
                         [](const auto& row) { return row.param.What; });

TEST_F(Files, AreMadeAsFoldersOfEveryNameThatCanBeOnes) {
    for (const Name& name : kNames) {
        if (!name.IsFolderName)
            continue;
        EXPECT_EQ(MakeFolderError(name.Text), 0) << name.What;
        EXPECT_TRUE(Exists("", name.Text)) << name.What;
    }
}

} // namespace
} // namespace mw
