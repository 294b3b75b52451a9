// The toolbar's buttons as they are found on the screen, by their outlines.
#pragma once

#include "Display.h"

#include <vector>

namespace journey {

// What stands in the toolbar from left to right.
enum ToolbarPlace { Chooser, ConnectButton, DisconnectButton, NewButton, DeleteButton };

// The outlined controls above the output, from left to right.
std::vector<Area> FindToolbar(const Picture& screen);

// A control that can't be used has a pale caption; a usable one has a black caption.
bool IsUsable(const Picture& screen, const Area& control);

} // namespace journey
