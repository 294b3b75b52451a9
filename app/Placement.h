// Where the main frame stood when it was last used, kept in the settings.
#pragma once

#include "ui/FrameControls.h"

#include <optional>
#include <string>
#include <vector>

namespace mw {

// The four texts of a kept placement.
struct KeptPlacement {
    std::string Left;
    std::string Top;
    std::string Width;
    std::string Height;
};

// The placement, made no larger than all screens (at least one) together. Nothing when a text is no
// number or too little of the frame would be seen on any of the screens to be taken hold of.
std::optional<Rectangle> UsablePlacement(const KeptPlacement& kept,
                                         const std::vector<Rectangle>& screens);

// Four fifths of the screen, in its middle.
Rectangle DefaultPlacement(const Rectangle& screen);

// Puts the frame where it was, or where it stands by default. Maximises it when it was.
void RestorePlacement();

// Keeps the frame's place, unless it is minimised, and its state. A failure gives a notice.
void KeepPlacement();

} // namespace mw
