#include "base/Globals.h"

namespace mw {

void ResetGlobals() {
    ToolbarVisible = true;
    KeepSentText = false;
    EchoOn = false;
    EscapeChar = ";";
    CtrlDown = false;
    AltDown = false;
    ShiftDown = false;
    SwallowKeyPress = false;
    LastKeyWasEnter = false;
    OutputFontName = "Courier";
    OutputFontSize = "10";
}

} // namespace mw
