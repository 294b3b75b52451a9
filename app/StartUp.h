// Starting and stopping: folders, and the stages that load and save the client's files.
//
// The files are read in order before the main frame is shown, and written in the same order after
// it is gone.
#pragma once

#include <cstdint>

namespace mw {

// Selects what RunStage does: the saving stages, else the loading ones. Set when the frame unloads.
inline bool SavingMode = false;

inline constexpr std::int16_t kFirstStage = 1;
inline constexpr std::int16_t kFinishedStage = 16;

// Makes the folders "Macros" and "Data" and removes files that older versions left: a "client.cfg"
// directly in the application folder; for a "muds.lst" there the one in "Data", on purpose. Raises
// Path/File access error when a folder can't be made.
void PrepareFolders();

// Does the work of one stage and returns the number of the next; kFinishedStage has no work.
// Loading raises what the loaders raise.
std::int16_t RunStage(std::int16_t stage);

// All stages, one after the other. Raises as RunStage.
void RunAllStages();

} // namespace mw
