#include "app/StartUp.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "config/Palette.h"
#include "fakes/Fakes.h"

namespace mw {
namespace {

class StartUp : public RuleTest {
protected:
    FreshFolder Folder;
};

TEST_F(StartUp, MakesBothFoldersInAnEmptyOne) {
    PrepareFolders();
    EXPECT_TRUE(Folder.HasFolder("Data"));
    EXPECT_TRUE(Folder.HasFolder("Macros"));
    PrepareFolders(); // and leaves them alone when they are there
}

TEST_F(StartUp, DeletesAStaleConfigurationAtEveryStart) {
    PrepareFolders();
    Folder.MakeFile("client.cfg");
    Folder.MakeFile("Data/client.cfg");
    PrepareFolders();
    EXPECT_FALSE(Exists("client.cfg", ""));
    EXPECT_TRUE(Exists("client.cfg", "Data"));
}

TEST_F(StartUp, AStaleMudListCostsTheOneInDataOnPurpose) {
    PrepareFolders();
    Folder.MakeFile("muds.lst");
    Folder.MakeFile("Data/muds.lst");
    PrepareFolders();
    EXPECT_TRUE(Exists("muds.lst", ""));
    EXPECT_FALSE(Exists("muds.lst", "Data"));
}

TEST_F(StartUp, StagesFollowOneAnother) {
    PrepareFolders();
    for (const bool saving : {false, true}) {
        SavingMode = saving;
        EXPECT_EQ(RunStage(1), 2);
        EXPECT_EQ(RunStage(2), 3);
        EXPECT_EQ(RunStage(3), kFinishedStage);
        EXPECT_EQ(RunStage(kFinishedStage), kFinishedStage);
    }
}

TEST_F(StartUp, EachStageLoadsItsFile) {
    PrepareFolders();
    RunStage(1);
    EXPECT_TRUE(Exists("muds.lst", "Data"));
    EXPECT_FALSE(Exists("client.cfg", "Data"));
    RunStage(2);
    EXPECT_TRUE(Exists("client.cfg", "Data"));
    EXPECT_FALSE(Exists("Default.mco", "Macros"));
    RunStage(3);
    EXPECT_TRUE(Exists("Default.mco", "Macros"));
}

TEST_F(StartUp, TheMacroStageMakesItsFolderIfItIsMissing) {
    RunStage(3);
    EXPECT_TRUE(Folder.HasFolder("Macros"));
}

TEST_F(StartUp, WhatIsSavedIsThereTheNextDay) {
    PrepareFolders();
    RunAllStages();
    MudList.push_back({"Northern Realms", "192.0.2.10", 4000, true, true, true, true});
    Palette[MwBRed] = 0x123456;
    EscapeChar = "|";
    MacroSets.push_back(OneMacroSet("Second")[0]);
    MacroSets[1].Aliases = {{"gt", "tell group ", true}};
    SetKeyText(MacroSets[0].NormKey, 112, "look ");
    const std::vector<MacroSet> sets = MacroSets;
    SavingMode = true;
    RunAllStages();
    const std::string config = Folder.ContentOf("Data/client.cfg");

    ResetMudList();
    ResetMacros();
    SavingMode = false;
    RunAllStages();
    EXPECT_EQ(MudList.at(1).Name, "Northern Realms");
    EXPECT_EQ(Palette[MwBRed], 0x123456);
    EXPECT_EQ(EscapeChar, "|");
    EXPECT_EQ(MacroSets, sets);
    SavingMode = true;
    RunAllStages();
    EXPECT_EQ(Folder.ContentOf("Data/client.cfg"), config);
}

TEST_F(StartUp, ALoaderThatFailsStopsTheStagesBehindIt) {
    PrepareFolders();
    WriteFile("Data\\muds.lst", "garbage\r\nmore\r\n");
    EXPECT_THROW(RunAllStages(), EndProgram);
    EXPECT_FALSE(Exists("client.cfg", "Data"));
}

} // namespace
} // namespace mw
