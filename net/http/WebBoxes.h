// Message boxes that a web server causes: one at a time, and few waiting, so that no server can
// bury the player under them.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace mw {

inline constexpr std::size_t kMostWaitingBoxes = 8;

struct WebBox {
    std::string Text;
    bool IsError = false;
    std::function<void()> Answered; // may be empty; called when the box is closed or not shown
};

// Shows box, now or when those before it are closed. Left out when too many wait.
void QueueWebBox(WebBox box);

// The box that was shown has been closed.
void WebBox_Closed();

// Takes all boxes away, shown and waiting; nobody is told.
void DropWebBoxes();

} // namespace mw
