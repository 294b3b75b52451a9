#include "app/StartUp.h"

#include "automation/MacroFiles.h"
#include "config/ClientConfig.h"
#include "config/FileHandler.h"
#include "config/MudList.h"

#include <algorithm>
#include <iterator>

namespace mw {
namespace {

void MakeMissingFolder(const char* name) {
    if (!Exists("", name))
        MakeFolder(name);
}

void LoadMacroStage() {
    MakeMissingFolder("Macros");
    LoadAllMacroSets();
}

struct Stage {
    std::int16_t Number;
    void (*Load)();
    void (*Save)();
    std::int16_t Next;
};

constexpr Stage kStages[] = {
    {1, LoadMudList, SaveMudList, 2},
    {2, InitClientConfig, SaveClientConfig, 3},
    {3, LoadMacroStage, SaveAllMacroSets, kFinishedStage},
};

} // namespace

void PrepareFolders() {
    MakeMissingFolder("Macros");
    MakeMissingFolder("Data");
    if (Exists("client.cfg", ""))
        DeleteFile(PathBelow("client.cfg"), "");
    // Meant: the copy in "Data" goes and the stale file stays.
    if (Exists("muds.lst", ""))
        DeleteFile(PathBelow("Data\\muds.lst"), "");
}

std::int16_t RunStage(std::int16_t stage) {
    const auto* const row = std::find_if(std::begin(kStages), std::end(kStages),
                                         [stage](const Stage& s) { return s.Number == stage; });
    if (row == std::end(kStages))
        return kFinishedStage;
    (SavingMode ? row->Save : row->Load)();
    return row->Next;
}

void RunAllStages() {
    for (std::int16_t stage = kFirstStage; stage != kFinishedStage;)
        stage = RunStage(stage);
}

} // namespace mw
