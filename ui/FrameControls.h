// The controls of the main frame: toolbar, Mud menu and status bar. None of the calls nests.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

enum class FrameControl {
    cmdConn,
    cmdDisco,
    cmdNew,
    cmdDel,
    cboMud,
    mnuConnect,
    mnuDisconnect,
    mnuADCmud,
};

void SetEnabled(FrameControl control, bool enabled);

namespace stsBar {

enum Panel { StatePanel = 1, NoticePanel = 2, ClockPanel = 3 };

void SetPanel(Panel panel, std::string_view text);

} // namespace stsBar

namespace cboMud {

void AddItem(std::string_view name);

// Selects an entry without a call of cboMud_Click.
void SetListIndex(std::int16_t index);

// Name of the selected entry, empty without one.
std::string Text();

} // namespace cboMud

namespace lblAddress {
void SetCaption(std::string_view text);
}

namespace lblPort {
void SetCaption(std::string_view text);
}

// Shows the output window, anew when it was closed, sized to the frame's client area.
void ShowOutputWindow();

// Closes the frame, as its close button does.
void UnloadFrame();

} // namespace mw
