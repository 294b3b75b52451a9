// Starting and stopping: folders, and the splash window with the stages that load and save the
// client's files.
//
// The program's entry calls StartProgram. The splash runs one stage at every tick of its timer,
// then opens the main frame. The frame's unload shows the splash again, which now saves.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

// Selects what the stages do: saving, else loading. Set when the frame unloads.
inline bool SavingMode = false;

inline constexpr std::int16_t kFirstStage = 1;
inline constexpr std::int16_t kFinishedStage = 16;

inline constexpr int kLoadInterval = 250;     // milliseconds, of timerLoad
inline constexpr int kFinishedInterval = 500; // milliseconds, of timerFinished

// The splash as it stands.
struct SplashState {
    std::int16_t stage = kFirstStage; // the next to run
    std::int16_t dotCount = 0;
    std::string dots;
};

inline SplashState Splash;

// Makes the folders, fills the tables with what is built in, and shows the splash. Raises Path/File
// access error when a folder can't be made.
void StartProgram();

// Makes the folders "Macros" and "Data" and removes files that older versions left: a "client.cfg"
// directly in the application folder; for a "muds.lst" there the one in "Data", on purpose. Raises
// Path/File access error when a folder can't be made.
void PrepareFolders();

// The splash has been made: its dots and stages begin anew.
void frmStartUp_Load();

// Moves the dots and runs one stage. While loading, raises what the stage's loader raises.
void timerLoad_Timer();

// Counts down after the last stage and opens the main frame. While saving it does nothing.
void timerFinished_Timer();

// Runs the saving stages that no tick has run yet, when the frame has been unloaded: nothing is
// lost when the program has to end at once.
void FinishSaving();

} // namespace mw
