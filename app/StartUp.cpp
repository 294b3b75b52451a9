#include "app/StartUp.h"

#include "automation/MacroFiles.h"
#include "automation/Macros.h"
#include "config/ClientConfig.h"
#include "config/FileHandler.h"
#include "config/MudList.h"
#include "net/http/DownLoad.h"
#include "net/http/VersionCheck.h"
#include "terminal/IncomingBuffer.h"
#include "ui/FrameControls.h"
#include "ui/SplashControls.h"

#include <algorithm>
#include <span>

namespace mw {
namespace {

constexpr std::int16_t kMostDots = 7;
constexpr std::int16_t kCountToFrame = 8;
constexpr std::int16_t kCountToFrameWithNews = 16; // so that the version labels can be read

void MakeMissingFolder(const char* name) {
    if (!IsFolder(name))
        MakeFolder(name);
}

void LoadMacroStage() {
    MakeMissingFolder("Macros");
    LoadAllMacroSets();
}

void CheckStage() { CheckForUpdate(); }

void Finish() {
    SetEnabled(SplashTimer::timerLoad, false);
    SetEnabled(SplashTimer::timerFinished, true);
}

struct Stage {
    std::int16_t Number;
    const char* Status;
    bool EmptiesLabels; // "Loading" and the dots
    void (*Work)();
    std::int16_t Next;
};

constexpr Stage kLoadingStages[] = {
    {1, "Mud List", false, LoadMudList, 2},
    {2, "Client Configuration", false, InitClientConfig, 3},
    {3, "Macro Sets", false, LoadMacroStage, 4},
    {4, "Checking for Updates", true, CheckStage, kFinishedStage},
    {kFinishedStage, "Completed", true, Finish, kFinishedStage},
};

constexpr Stage kSavingStages[] = {
    {1, "Mud List", false, SaveMudList, 2},
    {2, "Client Configuration", false, SaveClientConfig, 3},
    {3, "Macro Sets", false, SaveAllMacroSets, kFinishedStage},
    {kFinishedStage, "Completed", false, Finish, kFinishedStage},
};

void MoveDots() {
    if (++Splash.dotCount <= kMostDots) {
        Splash.dots += '.';
        SetCaption(SplashLabel::lblDots, Splash.dots);
    } else {
        // The label keeps its dots until the next tick.
        Splash.dots.clear();
        Splash.dotCount = 0;
    }
}

void RunStage() {
    const std::span<const Stage> stages =
        SavingMode ? std::span<const Stage>(kSavingStages) : std::span<const Stage>(kLoadingStages);
    const auto stage = std::find_if(stages.begin(), stages.end(),
                                    [](const Stage& row) { return row.Number == Splash.stage; });
    Splash.stage = stage->Next; // first, because the work may let events run
    if (stage->EmptiesLabels) {
        SetCaption(SplashLabel::lblDots, "");
        SetCaption(SplashLabel::lblLoading, "");
    }
    SetCaption(SplashLabel::lblStatus, stage->Status);
    stage->Work();
}

} // namespace

void StartProgram() {
    ResetDownloads();
    PrepareFolders();
    SavingMode = false;
    AtLineStart = false;
    ResetMudList();
    ResetMacros();
    ShowSplash();
}

void PrepareFolders() {
    MakeMissingFolder("Macros");
    MakeMissingFolder("Data");
    if (Exists("client.cfg", ""))
        DeleteFile(PathBelow("client.cfg"), "");
    // Meant: the copy in "Data" goes and the stale file stays.
    if (Exists("muds.lst", "") && !IsFolder("muds.lst")) // which a game of that name has
        DeleteFile(PathBelow("Data\\muds.lst"), "");
}

void frmStartUp_Load() {
    Splash = {};
    updateAvailable = false;
    SetCaption(SplashLabel::lblLoading, SavingMode ? "Saving" : "Loading");
    SetEnabled(SplashTimer::timerLoad, true);
}

void timerLoad_Timer() {
    MoveDots();
    RunStage();
}

// Meant: the saving splash stays, its tick counts nothing.
void timerFinished_Timer() {
    if (SavingMode)
        return;
    if (++Splash.dotCount < (updateAvailable ? kCountToFrameWithNews : kCountToFrame))
        return;
    SetEnabled(SplashTimer::timerFinished, false);
    ShowFrame();
    UnloadSplash();
}

void FinishSaving() {
    while (SavingMode && Splash.stage != kFinishedStage)
        RunStage();
}

} // namespace mw
