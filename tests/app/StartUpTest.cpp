#include "app/StartUp.h"

#include "automation/Macros.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "config/FreshFolder.h"
#include "config/MakerAddresses.h"
#include "config/MudList.h"
#include "config/Palette.h"
#include "fakes/Fakes.h"
#include "net/http/VersionCheck.h"
#include "support/ErrorOf.h"
#include "terminal/IncomingBuffer.h"

#include <ostream>

namespace mw {
namespace {

namespace fs = std::filesystem;

using Steps = std::vector<std::string>;

// An application folder of its own, and the splash's clock, turned by hand.
class StartUp : public RuleTest {
protected:
    static Steps Tick() {
        fakes::Calls.clear();
        timerLoad_Timer();
        return fakes::Calls;
    }

    // A splash that has just been shown.
    static void BeginStages(bool saving) {
        SavingMode = saving;
        frmStartUp_Load();
        fakes::Calls.clear();
    }

    static void RunAllStages(bool saving) {
        BeginStages(saving);
        const int ticks = saving ? 4 : 5;
        for (int i = 0; i < ticks; ++i)
            timerLoad_Timer();
    }

    static std::string Caption(SplashLabel label) { return fakes::SplashCaptions[label]; }

    static std::string Url() { return WebRoot() + "/client/clientver.txt"; }

    // The names of all files below the folder.
    Steps Files() const {
        Steps names;
        for (const auto& [name, content] : Folder.Contents()) {
            if (fs::is_regular_file(Folder.Path / name))
                names.push_back(name);
        }
        return names;
    }

    FreshFolder Folder;
};

class Folders : public StartUp {};

TEST_F(Folders, AreMadeInAnEmptyOne) {
    PrepareFolders();
    const std::map<std::string, std::string> both{{"Data", ""}, {"Macros", ""}};
    EXPECT_EQ(Folder.Contents(), both);
    PrepareFolders(); // and left alone when they are there
    EXPECT_EQ(Folder.Contents(), both);
}

TEST_F(Folders, AreMadeOneByOne) {
    fs::create_directory(Folder.Path / "Data");
    PrepareFolders();
    EXPECT_TRUE(Folder.HasFolder("Macros"));
}

TEST_F(Folders, AreNotMadeOverFilesOfTheirNames) {
    Folder.MakeFile("Data");
    Folder.MakeFile("Macros");
    EXPECT_EQ(ErrorOf(PrepareFolders), PathFileAccess);
    EXPECT_EQ(Folder.ContentOf("Data") + Folder.ContentOf("Macros"), "xx");
}

TEST_F(Folders, StandBeforeTheSplashAppears) {
    bool both = false;
    fakes::OnCall = [this, &both](const std::string&) {
        both = Folder.HasFolder("Data") && Folder.HasFolder("Macros");
    };
    StartProgram();
    EXPECT_EQ(fakes::Calls, Steps{"ShowSplash"});
    EXPECT_TRUE(both);
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(Folders, ThatCannotBeMadeKeepTheSplashAway) {
    ApplicationFolder = Folder.Path / "gone";
    EXPECT_EQ(ErrorOf(StartProgram), PathFileAccess);
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(Folders, LoseAStaleConfigurationAtEveryStart) {
    PrepareFolders();
    Folder.MakeFile("Data/client.cfg");
    for (int start = 0; start < 2; ++start) {
        Folder.MakeFile("client.cfg");
        PrepareFolders();
        EXPECT_FALSE(Exists("client.cfg", ""));
        EXPECT_EQ(Folder.ContentOf("Data/client.cfg"), "x");
    }
}

TEST_F(Folders, LoseTheListInDataToAStaleOneAtEveryStartOnPurpose) {
    PrepareFolders();
    Folder.MakeFile("muds.lst");
    for (int start = 0; start < 2; ++start) {
        Folder.MakeFile("Data/muds.lst");
        PrepareFolders();
        EXPECT_EQ(Folder.ContentOf("muds.lst"), "x");
        EXPECT_FALSE(Exists("muds.lst", "Data"));
    }
    PrepareFolders(); // nothing there to delete
    EXPECT_EQ(Folder.ContentOf("muds.lst"), "x");
}

TEST_F(Folders, KeepTheListWhenAGameHasAFolderOfItsName) {
    PrepareFolders();
    MakeGameFolders("muds.lst");
    Folder.MakeFile("Data/muds.lst");
    PrepareFolders();
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), "x");
}

TEST_F(Folders, LoseStaleFilesThatAreReadOnly) {
    PrepareFolders();
    Folder.MakeFile("client.cfg");
    Folder.MakeFile("muds.lst");
    Folder.MakeFile("Data/muds.lst");
    for (const char* const name : {"client.cfg", "Data/muds.lst"})
        fs::permissions(Folder.Path / name, fs::perms::owner_read);
    PrepareFolders();
    EXPECT_EQ(Files(), Steps{"muds.lst"});
}

TEST_F(Folders, KeepBothFilesInDataWhileNothingStaleIsThere) {
    PrepareFolders();
    Folder.MakeFile("Data/client.cfg");
    Folder.MakeFile("Data/muds.lst");
    PrepareFolders();
    EXPECT_EQ(Files(), (Steps{"Data/client.cfg", "Data/muds.lst"}));
}

TEST_F(Folders, LeaveTheWorkingDirectoryAlone) {
    PrepareFolders();
    Folder.MakeFile("client.cfg");
    Folder.MakeFile("muds.lst");
    Folder.MakeFile("Macros/client.cfg");
    Folder.MakeFile("Macros/muds.lst");
    const fs::path before = fs::current_path();
    fs::current_path(Folder.Path / "Macros");
    PrepareFolders();
    fs::current_path(before);
    EXPECT_EQ(Files(), (Steps{"Macros/client.cfg", "Macros/muds.lst", "muds.lst"}));
}

TEST_F(StartUp, FillsTheTablesWithWhatIsBuiltIn) {
    SavingMode = true;
    AtLineStart = true;
    MudList.clear();
    CurrentMud = 7;
    MacroSets.resize(3);
    CurrentMacroSet = 2;
    std::size_t gamesThen = 0;
    fakes::OnCall = [&gamesThen](const std::string&) { gamesThen = MudList.size(); };
    StartProgram();
    EXPECT_FALSE(SavingMode);
    EXPECT_FALSE(AtLineStart);
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_EQ(CurrentMud, 0);
    EXPECT_EQ(MacroSets, OneMacroSet("Default"));
    EXPECT_EQ(CurrentMacroSet, 0);
    EXPECT_EQ(gamesThen, 1u); // before the splash is shown
}

TEST_F(StartUp, ReadsAndWritesNoFileBeforeTheSplash) {
    StartProgram();
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(fakes::EventRuns, 0);
}

TEST_F(StartUp, HasTimersOfAQuarterAndOfHalfASecond) {
    EXPECT_EQ(kLoadInterval, 250);
    EXPECT_EQ(kFinishedInterval, 500);
}

class SplashTest : public StartUp {};

TEST_F(SplashTest, TellsThatItLoads) {
    frmStartUp_Load();
    EXPECT_EQ(fakes::Calls, (Steps{"lblLoading Loading", "Start timerLoad"}));
}

TEST_F(SplashTest, TellsThatItSaves) {
    SavingMode = true;
    frmStartUp_Load();
    EXPECT_EQ(fakes::Calls, (Steps{"lblLoading Saving", "Start timerLoad"}));
}

TEST_F(SplashTest, StartsFromNothingTheSecondTime) {
    PrepareFolders();
    RunAllStages(false);
    updateAvailable = true;
    BeginStages(true);
    EXPECT_EQ(Splash.stage, kFirstStage);
    EXPECT_EQ(Splash.dotCount, 0);
    EXPECT_EQ(Splash.dots, "");
    EXPECT_FALSE(updateAvailable);
    EXPECT_EQ(Tick(), (Steps{"lblDots .", "lblStatus Mud List"}));
}

TEST_F(SplashTest, ItsDotsGrowToSevenAndStartAgain) {
    PrepareFolders();
    BeginStages(true); // the saving stages leave the dots alone
    for (int round = 0; round < 3; ++round) {
        for (std::size_t dots = 1; dots <= 7; ++dots) {
            EXPECT_EQ(Tick().front(), "lblDots " + std::string(dots, '.'));
            EXPECT_EQ(Splash.dotCount, static_cast<std::int16_t>(dots));
        }
        EXPECT_FALSE(Tick().front().starts_with("lblDots"));
        EXPECT_EQ(Caption(SplashLabel::lblDots), "......."); // until the next tick
        EXPECT_EQ(Splash.dotCount, 0);
        EXPECT_EQ(Splash.dots, "");
    }
}

class LoadingStages : public StartUp {
protected:
    LoadingStages() {
        PrepareFolders();
        BeginStages(false);
    }
};

TEST_F(LoadingStages, RunOneATick) {
    EXPECT_EQ(Tick(), (Steps{"lblDots .", "lblStatus Mud List"}));
    EXPECT_EQ(Splash.stage, 2);
    EXPECT_EQ(Tick(), (Steps{"lblDots ..", "lblStatus Client Configuration"}));
    EXPECT_EQ(Splash.stage, 3);
    EXPECT_EQ(Tick(), (Steps{"lblDots ...", "lblStatus Macro Sets"}));
    EXPECT_EQ(Splash.stage, 4);
    EXPECT_EQ(Tick(), (Steps{"lblDots ....", "lblDots ", "lblLoading ",
                             "lblStatus Checking for Updates", "OpenURL " + Url()}));
    EXPECT_EQ(Splash.stage, kFinishedStage);
    EXPECT_EQ(Tick(), (Steps{"lblDots .....", "lblDots ", "lblLoading ", "lblStatus Completed",
                             "Stop timerLoad", "Start timerFinished"}));
    EXPECT_EQ(Splash.stage, kFinishedStage);
}

TEST_F(LoadingStages, DoTheWorkOfOneFileATick) {
    Tick();
    EXPECT_EQ(Files(), Steps{"Data/muds.lst"});
    Tick();
    EXPECT_EQ(Files(), (Steps{"Data/client.cfg", "Data/muds.lst"}));
    Tick();
    const Steps all{"Data/client.cfg", "Data/muds.lst", "Macros/Default.mco"};
    EXPECT_EQ(Files(), all);
    Tick();
    Tick();
    EXPECT_EQ(Files(), all);
}

TEST_F(LoadingStages, LoadFilesThatAreThere) {
    WriteFile("Data\\muds.lst", "[Mud]\nMud=A\nAddy=a\nPort=1\n0\n0\n0\n0\n[End]\n");
    WriteFile("Data\\client.cfg", "[Config]\nEsc=|\n[Macros]\nMine\n[END]\n");
    WriteFile("Macros\\Mine.mco", "NormKey112=look \n[End]\n");
    Tick();
    EXPECT_EQ(MudList.at(1).Name, "A");
    EXPECT_EQ(EscapeChar, ";");
    Tick();
    EXPECT_EQ(EscapeChar, "|");
    EXPECT_EQ(KeyText(MacroSets[0].NormKey, 112), "");
    Tick();
    EXPECT_EQ(KeyText(MacroSets[0].NormKey, 112), "look ");
}

TEST_F(LoadingStages, OfTheMacroSetsMakeTheirFolderAgain) {
    fs::remove(Folder.Path / "Macros");
    Tick();
    Tick();
    EXPECT_FALSE(Folder.HasFolder("Macros"));
    Tick();
    EXPECT_TRUE(Folder.HasFolder("Macros"));
    EXPECT_TRUE(Exists("Default.mco", "Macros"));
}

TEST_F(LoadingStages, EndWithTheEchoOff) {
    EchoOn = true;
    Tick();
    Tick();
    EXPECT_FALSE(EchoOn);
}

TEST_F(LoadingStages, AnnounceANewerVersion) {
    fakes::Pages[Url()] = "999.5";
    for (int i = 0; i < 4; ++i)
        Tick();
    EXPECT_TRUE(updateAvailable);
    EXPECT_EQ(Caption(SplashLabel::lblCurVersion), "Current Version 999.5");
    EXPECT_EQ(fakes::Calls.back(), "ShowUpdatePrompt");
    Tick(); // the start goes on behind the prompt
    EXPECT_EQ(Caption(SplashLabel::lblStatus), "Completed");
    EXPECT_EQ(Caption(SplashLabel::lblCurVersion), "Current Version 999.5");
}

TEST_F(LoadingStages, GoOnBehindALoaderThatLetsEventsRun) {
    SaveMudList();
    Steps nested;
    fakes::OnEvents = [&nested] {
        fakes::OnEvents = nullptr;
        nested = Tick();
    };
    timerLoad_Timer();
    EXPECT_EQ(nested, (Steps{"lblDots ..", "lblStatus Client Configuration"}));
    EXPECT_EQ(Splash.stage, 3);
    EXPECT_EQ(Tick(), (Steps{"lblDots ...", "lblStatus Macro Sets"}));
}

TEST_F(LoadingStages, ShowTheBoxesOfABadFileOnceThoughTheClockGoesOn) {
    WriteFile("Data\\muds.lst", "garbage\r\nmore\r\n");
    fakes::OnCall = [](const std::string& call) {
        if (call.starts_with("Message "))
            timerLoad_Timer();
    };
    EXPECT_THROW(timerLoad_Timer(), EndProgram);
    EXPECT_EQ(fakes::Messages, (Steps{"An error has occured loading the mud list", "garbage"}));
    EXPECT_EQ(Splash.stage, 4);
}

struct BadStage {
    const char* Name;
    int Ticks; // before the one that fails
    const char* File;
    const char* Text;
    std::int32_t Number; // 0: EndProgram
};

void PrintTo(const BadStage& row, std::ostream* out) { *out << row.Name; }

class FailingStages : public LoadingStages, public testing::WithParamInterface<BadStage> {};

TEST_P(FailingStages, RaiseWhatTheLoaderRaisesAndLeaveTheFiles) {
    const BadStage& row = GetParam();
    WriteFile(row.File, row.Text);
    for (int i = 0; i < row.Ticks; ++i)
        Tick();
    const auto before = Folder.Contents();
    if (row.Number == 0)
        EXPECT_THROW(Tick(), EndProgram);
    else
        EXPECT_EQ(ErrorOf(Tick), row.Number);
    EXPECT_EQ(Folder.Contents(), before);
    EXPECT_EQ(fakes::Messages.empty(), row.Number != 0);
}

const BadStage kBadStages[] = {
    {"AMudListWithAStrangeLine", 0, "Data\\muds.lst", "x\r\ny\r\n", 0},
    {"AnEmptyMudList", 0, "Data\\muds.lst", "", InputPastEnd},
    {"AMudListWithABadPort", 0, "Data\\muds.lst", "[Mud]\nMud=A\nAddy=a\nPort=99999\n", Overflow},
    {"AMudListWithABadSwitch", 0, "Data\\muds.lst", "[Mud]\nMud=A\nAddy=a\nPort=1\nSndD=?\n",
     TypeMismatch},
    {"AConfigurationWithAStrangeLine", 1, "Data\\client.cfg", "[Colours]\r\nx\r\ny\r\n", 0},
    {"AnEmptyConfiguration", 1, "Data\\client.cfg", "", InputPastEnd},
    {"AMacroSetWithAStrangeLine", 2, "Macros\\Default.mco", "x\r\ny\r\n", 0},
    {"AnEmptyMacroSet", 2, "Macros\\Default.mco", "", InputPastEnd},
};

INSTANTIATE_TEST_SUITE_P(Rows, FailingStages, testing::ValuesIn(kBadStages),
                         [](const auto& row) { return row.param.Name; });

class SavingStages : public StartUp {
protected:
    SavingStages() {
        PrepareFolders();
        BeginStages(true);
    }
};

TEST_F(SavingStages, RunOneATick) {
    EXPECT_EQ(Tick(), (Steps{"lblDots .", "lblStatus Mud List"}));
    EXPECT_EQ(Splash.stage, 2);
    EXPECT_EQ(Tick(), (Steps{"lblDots ..", "lblStatus Client Configuration"}));
    EXPECT_EQ(Splash.stage, 3);
    EXPECT_EQ(Tick(), (Steps{"lblDots ...", "lblStatus Macro Sets"}));
    EXPECT_EQ(Splash.stage, kFinishedStage);
    EXPECT_EQ(Tick(), (Steps{"lblDots ....", "lblStatus Completed", "Stop timerLoad",
                             "Start timerFinished"}));
    EXPECT_EQ(Splash.stage, kFinishedStage);
    EXPECT_EQ(Caption(SplashLabel::lblDots), "....");
}

TEST_F(SavingStages, WriteOneFileATick) {
    Tick();
    EXPECT_EQ(Files(), Steps{"Data/muds.lst"});
    Tick();
    EXPECT_EQ(Files(), (Steps{"Data/client.cfg", "Data/muds.lst"}));
    Tick();
    EXPECT_EQ(Files(), (Steps{"Data/client.cfg", "Data/muds.lst", "Macros/Default.mco"}));
}

TEST_F(SavingStages, GoOnWhenNothingCanBeWritten) {
    fs::remove_all(Folder.Path);
    RunAllStages(true);
    EXPECT_EQ(Caption(SplashLabel::lblStatus), "Completed");
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(SavingStages, LeaveASplashThatStaysOnPurpose) {
    RunAllStages(true);
    fakes::Calls.clear();
    const std::int16_t dots = Splash.dotCount;
    for (int i = 0; i < 40; ++i)
        timerFinished_Timer();
    EXPECT_TRUE(fakes::Calls.empty());
    EXPECT_EQ(Splash.dotCount, dots);
    EXPECT_EQ(Caption(SplashLabel::lblStatus), "Completed");
}

TEST_F(SavingStages, AreFinishedAtOnceWhenTheProgramHasToEnd) {
    FinishSaving();
    EXPECT_EQ(Files(), (Steps{"Data/client.cfg", "Data/muds.lst", "Macros/Default.mco"}));
    EXPECT_EQ(Splash.stage, kFinishedStage);
    EXPECT_EQ(Tick().back(), "Start timerFinished"); // its own tick still comes
}

TEST_F(SavingStages, ThatHaveRunAreNotRunAgainToFinish) {
    Tick();
    Tick();
    fs::remove(Folder.Path / "Data" / "muds.lst");
    fs::remove(Folder.Path / "Data" / "client.cfg");
    FinishSaving();
    EXPECT_EQ(Files(), Steps{"Macros/Default.mco"});
    fs::remove(Folder.Path / "Macros" / "Default.mco");
    FinishSaving();
    EXPECT_TRUE(Files().empty());
}

TEST_F(LoadingStages, AreNotFinishedByAnEndOfTheProgram) {
    Tick();
    const auto before = Folder.Contents();
    FinishSaving();
    EXPECT_EQ(Folder.Contents(), before);
    EXPECT_EQ(Splash.stage, 2);
}

TEST_F(StartUp, WhatIsSavedIsThereTheNextDay) {
    PrepareFolders();
    RunAllStages(false);
    MudList.push_back({"Northern Realms", "192.0.2.10", 4000, true, false, true, true});
    Palette[MwBRed] = 0x123456;
    EscapeChar = "|";
    MacroSets.push_back(OneMacroSet("Second")[0]);
    MacroSets[1].Aliases = {{"gt", "tell group ", true}};
    SetKeyText(MacroSets[0].NormKey, 112, "look ");
    const std::vector<MacroSet> sets = MacroSets;
    const std::vector<MudEntry> muds = MudList;
    RunAllStages(true);
    const auto files = Folder.Contents();

    StartProgram();
    RunAllStages(false);
    EXPECT_EQ(MudList, muds);
    EXPECT_EQ(Palette[MwBRed], 0x123456);
    EXPECT_EQ(EscapeChar, "|");
    EXPECT_EQ(MacroSets, sets);
    RunAllStages(true);
    EXPECT_EQ(Folder.Contents(), files);
}

TEST_F(StartUp, AStaleListBringsTheDefaultBackAtEveryStartOnPurpose) {
    PrepareFolders();
    Folder.MakeFile("muds.lst");
    MudList.push_back({"Northern Realms", "192.0.2.10", 4000, true, false, true, true});
    RunAllStages(true);
    StartProgram();
    RunAllStages(false);
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), FormatMudList(DefaultMudList()));
}

struct Finish {
    const char* Name;
    std::int16_t Dots;
    bool News;
    int Ticks;
};

void PrintTo(const Finish& row, std::ostream* out) { *out << row.Name; }

class Finishing : public StartUp, public testing::WithParamInterface<Finish> {};

TEST_P(Finishing, OpensTheFrameAfterItsTicks) {
    BeginStages(false);
    Splash.dotCount = GetParam().Dots;
    updateAvailable = GetParam().News;
    for (int tick = 1; tick < GetParam().Ticks; ++tick) {
        timerFinished_Timer();
        EXPECT_TRUE(fakes::Calls.empty()) << tick;
    }
    timerFinished_Timer();
    EXPECT_EQ(fakes::Calls, (Steps{"Stop timerFinished", "ShowFrame", "UnloadSplash"}));
}

const Finish kFinishes[] = {
    {"FiveFromThreeDots", 3, false, 5}, {"ThirteenFromThreeDotsWithNews", 3, true, 13},
    {"EightFromNone", 0, false, 8},     {"SixteenFromNoneWithNews", 0, true, 16},
    {"OneFromSeven", 7, false, 1},      {"NineFromSevenWithNews", 7, true, 9},
};

INSTANTIATE_TEST_SUITE_P(Rows, Finishing, testing::ValuesIn(kFinishes),
                         [](const auto& row) { return row.param.Name; });

// Ticks of timerFinished until the frame is there, at most 40.
int TicksToFrame() {
    for (int ticks = 1; ticks <= 40; ++ticks) {
        timerFinished_Timer();
        if (!fakes::Calls.empty() && fakes::Calls.back() == "UnloadSplash")
            return ticks;
    }
    return 0;
}

TEST_F(LoadingStages, LeaveFiveDotsToCountOnFrom) {
    RunAllStages(false);
    EXPECT_EQ(TicksToFrame(), 3);
}

TEST_F(LoadingStages, LeaveFiveDotsToCountOnFromWithNews) {
    fakes::Pages[Url()] = "999.5";
    RunAllStages(false);
    EXPECT_EQ(TicksToFrame(), 11);
}

// Another client keeps its files in the folder.
class TakenAtStart : public StartUp {
protected:
    TakenAtStart() { FolderIsTaken = true; }
};

TEST_F(TakenAtStart, AnEmptyFolderStaysEmptyAndTheDefaultsAreLoaded) {
    StartProgram();
    RunAllStages(false);
    EXPECT_EQ(Caption(SplashLabel::lblStatus), "Completed");
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_EQ(MacroSets, OneMacroSet("Default"));
    EXPECT_EQ(Palette, kDefaultPalette);
    RunAllStages(true);
    FinishSaving();
    EXPECT_TRUE(Folder.IsEmpty());
    EXPECT_TRUE(fakes::Messages.empty());
}

TEST_F(TakenAtStart, FilesAreLoadedAndNothingIsSaved) {
    FolderIsTaken = false;
    PrepareFolders();
    MudList.push_back({"Northern Realms", "192.0.2.10", 4000, true, false, true, true});
    RunAllStages(true);
    const auto before = Folder.Contents();
    FolderIsTaken = true;
    StartProgram();
    RunAllStages(false);
    EXPECT_EQ(MudList.at(1).Name, "Northern Realms");
    MudList.pop_back();
    EscapeChar = "|";
    RunAllStages(true);
    FinishSaving();
    EXPECT_EQ(Folder.Contents(), before);
}

TEST_F(TakenAtStart, StaleFilesStay) {
    for (const char* const name : {"client.cfg", "muds.lst"})
        Folder.MakeFile(name);
    fs::create_directory(Folder.Path / "Data");
    Folder.MakeFile("Data/muds.lst");
    const auto before = Folder.Contents();
    PrepareFolders();
    EXPECT_EQ(Folder.Contents(), before);
}

} // namespace
} // namespace mw
