// Notices: what the player should know but need not answer.
#pragma once

#include <string>

namespace mw {

// The notice in the status bar, empty for none. Kept, because one may come up before the frame that
// shows it.
inline std::string Notice;

// Shows text in the notice panel of the status bar.
void ShowNotice(const std::string& text);

} // namespace mw
