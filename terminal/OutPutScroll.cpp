#include "terminal/OutPutScroll.h"

#include "terminal/Output.h"
#include "ui/OutputControls.h"
#include "ui/UserSettings.h"

#include <string>

namespace mw {
namespace {

constexpr const char* kApplication = "RtbScrol";
constexpr const char* kKey = "WndProc"; // section and key bear one name

} // namespace

void InstallOutputHook() {
    PreviousProcedure = rtfOutPut::Hook();
    SaveUserSetting(kApplication, kKey, kKey, std::to_string(PreviousProcedure));
}

void RemoveOutputHook() {
    if (PreviousProcedure == 0)
        return;
    rtfOutPut::Unhook(PreviousProcedure);
    DeleteUserSettings(kApplication);
    PreviousProcedure = 0;
}

void OutputWindowMessage(std::int32_t message) {
    const std::int32_t previous = PreviousProcedure;
    if (message == WindowDestroyed)
        RemoveOutputHook();
    rtfOutPut::CallPrevious(previous, message);
    if ((message == ReplaceSelection || message == SetCharacterFormat) && OutputRedrawOn)
        rtfOutPut::Refresh();
}

} // namespace mw
