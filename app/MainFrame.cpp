#include "app/MainFrame.h"

#include "app/StartUp.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "base/Notice.h"
#include "base/Numbers.h"
#include "base/Version.h"
#include "config/MRegistry.h"
#include "config/MudChooser.h"
#include "config/MudList.h"
#include "net/Connection.h"
#include "net/http/DownLoad.h"
#include "sound/PlaySound.h"
#include "terminal/Ansi.h"
#include "terminal/AutoLog.h"
#include "terminal/Output.h"
#include "ui/Events.h"
#include "ui/FrameControls.h"
#include "ui/MessageBox.h"
#include "ui/SplashControls.h"
#include "ui/UserSettings.h"

namespace mw {
namespace {

// One of the two is there to be used, never both.
void ShowToolbar(bool shown) {
    ToolbarVisible = shown;
    SetVisible(FrameControl::picTool, shown);
    SetEnabled(FrameControl::picTool, shown);
    SetChecked(FrameControl::mnutoolbar, shown);
    SetVisible(FrameControl::mnuMud, !shown);
    SetEnabled(FrameControl::mnuMud, !shown);
}

// Meant: in both stores, and read from the first only.
void KeepToolbar(bool shown) {
    const char* const text = shown ? "1" : "0";
    KeepSetting("Windows", "tbar", text);
    SaveUserSetting(kApplicationName, "Windows", "tbar", text);
}

void Toggle(bool& flag, FrameControl item, const char* key) {
    flag = !flag;
    SetChecked(item, flag);
    KeepSetting("Menu", key, std::string(BooleanText(flag)));
}

bool KeptBoolean(const std::string& text) {
    try {
        return ToBoolean(text);
    } catch (const Error&) {
        return false;
    }
}

} // namespace

std::string FrameCaption() { return "Quillmere Mud Client V" + DottedVersion(kOwnVersion); }

void MDIForm_Load() {
    for (const MudEntry& mud : std::vector(MudList)) {
        cboMud::AddItem(mud.Name);
        DoEvents();
    }
    ToolbarVisible = true;
    WholeSequenceMode = true;
    CurrentColour = kPlainWhite;
    PlayingPriority = 0;
    ScrollBackActive = false;
    OutputRedrawOn = true;
    OutputFontName = SettingAtStart("Settings", "Name", "Courier");
    OutputFontSize = SettingAtStart("Settings", "Font", "10");
    ShowToolbar(SettingAtStart("Windows", "tbar", "1") == "1");
    KeepSentText = KeptBoolean(SettingAtStart("Menu", "Input", "False"));
    SetChecked(FrameControl::mnuInput, KeepSentText);
    ShowNotice(Notice); // one may have come up before the status bar
    cboMud_Click(CurrentMud);
}

void ConnectAsAsked() {
    if (ConnectAtStart.empty())
        return;
    const std::int16_t index = FindOrAddMud(ConnectAtStart);
    if (index < 0) {
        ShowMessage("There is no game called \"" + ConnectAtStart +
                    "\", and it is not of the form HOST:PORT.");
        return;
    }
    cboMud_Click(index);
    ConnectToMud();
}

// Meant: there is no log to start.
void mnuAutoLog_Click() { ShowMessage("This is not functioning"); }

// Meant: what is kept here is never read back.
void mnuEcho_Click() { Toggle(EchoOn, FrameControl::mnuEcho, "Echo"); }

void mnuInput_Click() { Toggle(KeepSentText, FrameControl::mnuInput, "Input"); }

void mnutoolbar_Click() {
    ShowToolbar(!ToolbarVisible);
    const std::int16_t position = cboMud::ListIndex();
    cboMud::Clear();
    for (const MudEntry& mud : MudList)
        cboMud::AddItem(mud.Name);
    cboMud::SetListIndex(position);
    KeepToolbar(ToolbarVisible);
}

void MDIForm_Unload() {
    AbandonDownloads();
    UnloadOtherForms();
    CloseLog();
    SavingMode = true;
    KeepToolbar(!IsVisible(FrameControl::mnuMud));
    ShowSplash();
}

} // namespace mw
