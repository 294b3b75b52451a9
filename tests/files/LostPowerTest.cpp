// The power goes at every call of the system by which the saving stages change files, exactly
// before it and right behind it: each file is the old one or the new one, whole, and the next start
// takes it.
#include "app/StartUp.h"
#include "automation/Macros.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ChildProcess.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mw {
namespace {

namespace fs = std::filesystem;

using Texts = std::map<std::string, std::string>; // of files, by their names

constexpr int kFewestCalls = 3 * 6; // three files; each is opened, written, synced, closed, renamed

void SaveAll() {
    SavingMode = true;
    frmStartUp_Load();
    FinishSaving();
    SavingMode = false;
}

class LostPower : public RuleTest, public testing::WithParamInterface<Moment> {
protected:
    LostPower() { PrepareFolders(); }

    // Two states of the client. Each file is longer than what is written at a time.
    static void Play(const std::string& day) {
        MudList.assign(40, {day, std::string(200, 'a'), 4000, false, false, false, false});
        MudList[0].Name = "Quillmere " + day;
        EscapeChar = day + std::string(5000, '.');
        SetKeyText(MacroSets[0].NormKey, 112, day + std::string(6000, 'm'));
    }

    Texts SavedOf(const std::string& day) {
        Play(day);
        SaveAll();
        return Kept();
    }

    // The client's files, and how many others lie beside them.
    std::pair<Texts, std::size_t> Seen() const {
        Texts files;
        std::size_t others = 0;
        for (const auto& [name, text] : Folder.Contents()) {
            if (fs::is_directory(Folder.Path / name))
                continue;
            if (name == "Data/muds.lst" || name == "Data/client.cfg" ||
                name == "Macros/Default.mco")
                files[name] = text;
            else
                ++others;
        }
        return {files, others};
    }

    Texts Kept() const { return Seen().first; }

    void Put(const Texts& files) const {
        for (const auto& [name, text] : files)
            std::ofstream(Folder.Path / name, std::ios::binary) << text;
    }

    // The first three stages load the files.
    static void StartAnew() {
        StartProgram();
        frmStartUp_Load();
        for (int stage = 1; stage <= 3; ++stage)
            timerLoad_Timer();
        EXPECT_EQ(fakes::Messages, std::vector<std::string>());
    }

    // Each is one of the two; they are saved one after the other. Returns how many are new.
    static std::size_t CountNew(const Texts& files, const Texts& before, const Texts& after) {
        EXPECT_EQ(files.size(), before.size());
        std::size_t count = 0;
        for (const auto& [name, text] : files) {
            EXPECT_TRUE(text == before.at(name) || text == after.at(name))
                << name << " has " << text.size() << " bytes";
            count += text == after.at(name) ? 1 : 0;
        }
        return count;
    }

    FreshFolder Folder;
};

TEST_P(LostPower, AtAnyCallOfTheSavingLeavesEachFileWhole) {
    const Texts after = SavedOf("new");
    const Texts before = SavedOf("old");
    std::size_t newFiles = 0;
    int call = 1;
    for (Play("new"); KilledAt(call, GetParam(), SaveAll); ++call, Play("new")) {
        SCOPED_TRACE(call);
        const auto [files, others] = Seen();
        const std::size_t count = CountNew(files, before, after);
        EXPECT_GE(count, newFiles) << "a file was saved and is lost";
        newFiles = count;
        EXPECT_LE(others, 1u) << "what is left piles up";
        StartAnew();
        if (call % 2 == 0) { // else what is left lies there when the power goes again
            Play("new");
            SaveAll();
            EXPECT_EQ(Seen(), (std::pair<Texts, std::size_t>(after, 0)));
        }
        Put(before);
    }
    EXPECT_GE(call, kFewestCalls);
    EXPECT_EQ(newFiles, before.size()) << "not every file was saved before the last call";
    EXPECT_EQ(Kept(), after) << "saved to the end";
}

INSTANTIATE_TEST_SUITE_P(Files, LostPower, testing::Values(Moment::Before, Moment::Behind),
                         [](const auto& row) {
                             return row.param == Moment::Before ? "Before" : "Behind";
                         });

// What is renamed is on the disk before, and its name behind: lost power is more than a kill.
TEST(SavedFiles, AreSyncedBeforeTheyAreNamedAndTheirFolderBehind) {
    const FreshFolder folder;
    MakeFolder("Data");
    EXPECT_EQ(ChangesBy([] { WriteFile("Data\\f", "text"); }),
              (std::vector<std::string>{"remove", "open", "write", "sync", "close", "rename",
                                        "open", "sync", "close"}));
}

} // namespace
} // namespace mw
