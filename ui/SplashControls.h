// The splash window frmStartUp: its labels and timers, and the window itself.
#pragma once

#include <string_view>

namespace mw {

enum class SplashLabel {
    lblLoading,
    lblStatus,
    lblDots,
    lblYourVersion,
    lblCurVersion,
    lblUpdateText,
};

// Does not nest.
void SetCaption(SplashLabel label, std::string_view text);

// A timer that is on calls its handler (timerLoad_Timer, timerFinished_Timer of app/StartUp.h) at
// its interval, never from inside itself. Does not nest.
enum class SplashTimer { timerLoad, timerFinished };
void SetEnabled(SplashTimer timer, bool enabled);

// Makes the window anew and shows it; its load calls frmStartUp_Load (app/StartUp.h).
void ShowSplash();

// Takes the window away.
void UnloadSplash();

} // namespace mw
