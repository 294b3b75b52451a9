#include "app/MainFrame.h"

#include "base/Globals.h"
#include "base/Notice.h"
#include "config/MRegistry.h"
#include "config/MudList.h"
#include "terminal/Ansi.h"
#include "terminal/Output.h"
#include "ui/FrameControls.h"

namespace mw {

std::string FrameCaption() {
    return "Quillmere Mud Client V" + std::to_string(kMajorVersion) + "." +
           std::to_string(kMinorVersion) + "." + std::to_string(kRevision);
}

void MDIForm_Load() {
    for (const MudEntry& mud : MudList)
        cboMud::AddItem(mud.Name);
    ToolbarVisible = true;
    WholeSequenceMode = true;
    CurrentColour = kPlainWhite;
    ScrollBackActive = false;
    OutputRedrawOn = true;
    OutputFontName = SettingAtStart("Settings", "Name", "Courier");
    OutputFontSize = SettingAtStart("Settings", "Font", "10");
    ShowNotice(Notice); // one may have come up before the status bar
    cboMud::SetListIndex(CurrentMud);
    cboMud_Click(CurrentMud);
}

void cboMud_Click(std::int16_t index) {
    const MudEntry& mud = MudAt(index);
    lblAddress::SetCaption(mud.Address);
    lblPort::SetCaption(std::to_string(mud.Port));
    CurrentMud = index;
}

} // namespace mw
