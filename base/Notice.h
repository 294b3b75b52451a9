// Notices: what the player should know but need not answer.
#pragma once

#include <string>

namespace mw {

// The notice in the status bar, empty for none. Kept, because one may come up before the frame that
// shows it.
inline std::string Notice;

// Makes text the notice and shows it in the status bar, when there is one.
void ShowNotice(const std::string& text);

} // namespace mw
