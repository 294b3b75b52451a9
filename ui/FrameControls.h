// The controls of the main frame: toolbar, menus, status bar, and the frame itself.
//
// None of the calls nests, unless it says so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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
    picTool, // the toolbar
    mnuMud,  // the menu that takes its place
    mnutoolbar,
    mnuEcho,
    mnuInput,
};

void SetEnabled(FrameControl control, bool enabled);
void SetVisible(FrameControl control, bool visible);
bool IsVisible(FrameControl control);
void SetChecked(FrameControl item, bool checked); // menu items only

namespace stsBar {

enum Panel { StatePanel = 1, NoticePanel = 2, ClockPanel = 3 };

void SetPanel(Panel panel, std::string_view text);

} // namespace stsBar

// The mud chooser. There may be two, the toolbar's and that of frmConnect: they show the same list
// and the same selection.
namespace cboMud {

void AddItem(std::string_view name);
void RemoveItem(std::int16_t index);
void Clear();

// Selects an entry without a call of cboMud_Click.
void SetListIndex(std::int16_t index);

// Position of the selected entry, -1 without one.
std::int16_t ListIndex();

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

// Makes the frame and shows it; its load calls MDIForm_Load (app/MainFrame.h). Nests.
void ShowFrame();

bool FrameIsShown();

// Closes the frame, as its close button does; its unload calls MDIForm_Unload (app/MainFrame.h).
// Nothing happens when there is none.
void UnloadFrame();

// Closes every window but the frame: the output window, dialogs, message boxes.
void UnloadOtherForms();

// A rectangle of the desktop, in pixels.
struct Rectangle {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;

    bool operator==(const Rectangle&) const = default;
};

enum class WindowState : std::int16_t { Normal = 0, Minimised = 1, Maximised = 2 };

// Where the frame is or, while it is minimised or maximised, where it would be otherwise.
Rectangle FramePlace();
WindowState FrameState();

// Puts the frame there, maximised when that is its state. It is never made minimised.
void PlaceFrame(const Rectangle& place, WindowState state);

// The usable areas of the screens, the primary one first; at least one.
std::vector<Rectangle> Screens();

} // namespace mw
