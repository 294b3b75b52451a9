// Message boxes: the client's way to tell the player what went wrong.
#pragma once

#include <string_view>

namespace mw {

// Shows text in a box with an OK button and returns when the player has closed it. Nests: events
// are handled meanwhile.
void ShowMessage(std::string_view text);

} // namespace mw
