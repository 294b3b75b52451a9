#include "base/Error.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "support/ChildProcess.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"

#include <sys/stat.h>

namespace mw {
namespace {

namespace fs = std::filesystem;

class WholeFiles : public RuleTest {
protected:
    std::int32_t ReadError(const std::string& name) {
        return ErrorOf([&name] { ReadFile(name); });
    }

    std::size_t Count() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(Folder.Path), fs::directory_iterator()));
    }

    FreshFolder Folder;
};

TEST_F(WholeFiles, AreWrittenAndReadBackByteForByte) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    WriteFile("f", all);
    EXPECT_EQ(ReadFile("f"), all);
    WriteFile("f", "");
    EXPECT_EQ(ReadFile("f"), "");
}

TEST_F(WholeFiles, ABackslashIsThePlatformsSeparator) {
    MakeFolder("Data");
    WriteFile("Data\\f", "x");
    EXPECT_TRUE(fs::exists(Folder.Path / "Data" / "f"));
    EXPECT_EQ(ReadFile("Data\\f"), "x");
}

TEST_F(WholeFiles, ANameOfAnyCharacterOfTheCodePageIsUnicodeOnDisk) {
    WriteFile("caf\xe9 \x80", "x");
    EXPECT_TRUE(fs::exists(Folder.Path / fs::path(u"caf\u00e9 \u20ac")));
    EXPECT_TRUE(Exists("caf\xe9 \x80", ""));
}

TEST_F(WholeFiles, WritingReplacesAReadOnlyFile) {
    WriteFile("f", "old");
    fs::permissions(Folder.Path / "f", fs::perms::owner_read);
    WriteFile("f", "new");
    EXPECT_EQ(ReadFile("f"), "new");
}

TEST_F(WholeFiles, WritingLeavesTheFileToThoseWhoMayReadIt) {
    WriteFile("f", "old");
    for (const fs::perms mode : {fs::perms{0600}, fs::perms{0640}, fs::perms{0666}}) {
        fs::permissions(Folder.Path / "f", mode);
        WriteFile("f", "new");
        EXPECT_EQ(fs::status(Folder.Path / "f").permissions(), mode);
    }
}

TEST_F(WholeFiles, WritingLeavesNothingBesideTheFile) {
    WriteFile("f", "new");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(WholeFiles, AFailedWriteIsSilentAndKeepsTheOldContents) {
    WriteFile("missing\\f", "x");
    EXPECT_EQ(Count(), 0u);
    WriteFile("f", "old");
    WriteFile("f\\below a file", "x");
    MakeFolder("f.new"); // stands where the new contents would be written
    WriteFile("f", "new");
    EXPECT_EQ(ReadFile("f"), "old");
    EXPECT_TRUE(Folder.HasFolder("f.new"));
}

TEST_F(WholeFiles, AFolderInAFilesPlaceStays) {
    MakeFolder("f");
    WriteFile("f", "x");
    EXPECT_TRUE(Folder.HasFolder("f"));
    EXPECT_EQ(Count(), 1u);
}

TEST_F(WholeFiles, ReadingAMissingFileIsFileNotFound) {
    EXPECT_EQ(ReadError("none"), FileNotFound);
}

TEST_F(WholeFiles, ReadingAFolderIsAPathError) {
    MakeFolder("f");
    EXPECT_EQ(ReadError("f"), PathFileAccess);
}

TEST_F(WholeFiles, ReadingAPipeIsAPathErrorAndWaitsForNoWriter) {
    ASSERT_EQ(::mkfifo((Folder.Path / "f").c_str(), 0600), 0);
    EXPECT_EQ(WithoutRights([this] { return ReadError("f"); }), PathFileAccess);
}

TEST_F(WholeFiles, OfTheLargestSizeAreReadAndWrittenAndNoLargerOnes) {
    const std::string largest(kLargestFile, 'x');
    WriteFile("f", largest);
    EXPECT_TRUE(ReadFile("f") == largest);
    WriteFile("f", largest + "y");
    EXPECT_EQ(fs::file_size(Folder.Path / "f"), kLargestFile);
    std::ofstream(Folder.Path / "f", std::ios::app) << "y";
    EXPECT_EQ(ReadError("f"), PathFileAccess);
}

TEST_F(WholeFiles, AreAbsentOnlyWhenNothingBearsTheirName) {
    EXPECT_TRUE(IsAbsent("f"));
    EXPECT_TRUE(IsAbsent("none\\f"));
    fs::create_symlink("nowhere", Folder.Path / "f");
    EXPECT_FALSE(IsAbsent("f"));
    WriteFile("file", "x");
    EXPECT_FALSE(IsAbsent("file"));
    EXPECT_TRUE(IsAbsent("file\\f"));
    MakeFolder("closed");
    fs::permissions(Folder.Path / "closed", fs::perms::none);
    EXPECT_EQ(WithoutRights([] { return IsAbsent("closed\\f") ? 1 : 0; }), 0);
}

// What a lost write has left beside a file, or somebody has put there.
struct Leftover {
    const char* Name;
    void (*Make)(const fs::path& path);
};

void PrintTo(const Leftover& row, std::ostream* out) { *out << row.Name; }

class Leftovers : public WholeFiles, public testing::WithParamInterface<Leftover> {};

TEST_P(Leftovers, AreNotWrittenThroughAndDoNotHinderTheNextWrite) {
    WriteFile("f", "old");
    WriteFile("other", "kept");
    GetParam().Make(Folder.Path / "f.new");
    const auto save = [] {
        WriteFile("f", "new");
        return 0;
    };
    ASSERT_EQ(WithoutRights(save), 0);
    EXPECT_EQ(Folder.Contents(),
              (std::map<std::string, std::string>{{"f", "new"}, {"other", "kept"}}));
}

const Leftover kLeftovers[] = {
    {"HalfAFile", [](const fs::path& path) { std::ofstream(path) << "ne"; }},
    {"MoreThanTheNewFile", [](const fs::path& path) { std::ofstream(path) << "new and more"; }},
    {"AClosedFile",
     [](const fs::path& path) {
         std::ofstream(path) << "ne";
         fs::permissions(path, fs::perms::none);
     }},
    {"ALinkToAnotherFile", [](const fs::path& path) { fs::create_symlink("other", path); }},
    {"ALinkToNowhere", [](const fs::path& path) { fs::create_symlink("nowhere", path); }},
    {"ALinkToItself", [](const fs::path& path) { fs::create_symlink("f.new", path); }},
    {"APipe", [](const fs::path& path) { EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
};

INSTANTIATE_TEST_SUITE_P(Files, Leftovers, testing::ValuesIn(kLeftovers),
                         [](const auto& row) { return row.param.Name; });

TEST_F(WholeFiles, StayWholeOnADiskThatIsFull) {
    const std::string old(10000, 'o');
    WriteFile("f", old);
    for (const rlim_t room : {0UL, 1UL, 4096UL, 19999UL}) {
        {
            const FullDisk disk(room);
            WriteFile("f", std::string(20000, 'n'));
        }
        EXPECT_EQ(Folder.Contents(), (std::map<std::string, std::string>{{"f", old}})) << room;
    }
    WriteFile("f", "new");
    EXPECT_EQ(ReadFile("f"), "new");
}

TEST_F(WholeFiles, LinesAreShownWholeUnlessTheyFillSeveralBoxes) {
    EXPECT_EQ(ShownLine(""), "");
    EXPECT_EQ(ShownLine(std::string(4096, 'x')), std::string(4096, 'x'));
    EXPECT_EQ(ShownLine(std::string(4097, 'x')), std::string(4096, 'x') + "...");
}

TEST_F(WholeFiles, DeletingTakesTheNameAsGivenAndNotTheFolderOnPurpose) {
    MakeFolder("Data");
    WriteFile("Data\\f", "x");
    DeleteFile("f", "Data");
    EXPECT_TRUE(Exists("f", "Data"));
}

TEST_F(WholeFiles, DeletingResolvesTheNameAgainstTheWorkingDirectory) {
    const fs::path before = fs::current_path();
    WriteFile("f", "x");
    fs::current_path(Folder.Path);
    DeleteFile("f", "elsewhere");
    fs::current_path(before);
    EXPECT_FALSE(Exists("f", ""));
}

TEST_F(WholeFiles, DeletingAWholePathDeletesThatFileReadOnlyOrNot) {
    WriteFile("f", "x");
    fs::permissions(Folder.Path / "f", fs::perms::owner_read);
    DeleteFile(PathBelow("f"), "");
    EXPECT_FALSE(Exists("f", ""));
}

TEST_F(WholeFiles, DeletingIgnoresEveryFailure) {
    MakeFolder("full");
    WriteFile("full\\f", "x");
    DeleteFile("", "");
    DeleteFile(PathBelow("none"), "");
    DeleteFile(PathBelow("full"), "");
    EXPECT_TRUE(Exists("f", "full"));
}

// The folder belongs to another client, which keeps its files there.
class TakenFolder : public RuleTest {
protected:
    TakenFolder() {
        MakeFolder("Data");
        WriteFile("Data\\f", "theirs");
        Before = Folder.Contents();
        FolderIsTaken = true;
    }

    FreshFolder Folder;
    std::map<std::string, std::string> Before;
};

TEST_F(TakenFolder, IsRead) {
    EXPECT_EQ(ReadFile("Data\\f"), "theirs");
    EXPECT_TRUE(Exists("f", "Data"));
}

TEST_F(TakenFolder, GetsNoFile) {
    WriteFile("Data\\f", "ours");
    WriteFile("Data\\g", "ours");
    EXPECT_EQ(Folder.Contents(), Before);
}

TEST_F(TakenFolder, LosesNoFile) {
    DeleteFile(PathBelow("Data\\f"), "");
    EXPECT_EQ(Folder.Contents(), Before);
}

TEST_F(TakenFolder, GetsNoFolderAndRaisesNothing) {
    MakeFolder("Macros");
    MakeFolder("Data");
    MakeFolder("gone\\sounds");
    EXPECT_EQ(Folder.Contents(), Before);
}

TEST_F(TakenFolder, TakesAllAgainOnceItIsFree) {
    FolderIsTaken = false;
    MakeFolder("Macros");
    WriteFile("Data\\g", "ours");
    DeleteFile(PathBelow("Data\\f"), "");
    EXPECT_EQ(Folder.Contents(), (std::map<std::string, std::string>{
                                     {"Data", ""}, {"Data/g", "ours"}, {"Macros", ""}}));
}

} // namespace
} // namespace mw
