// Pages of the web, shown to the player.
#pragma once

#include <string>

namespace mw {

// Opens address (http or https) in the system's browser. Does not wait and does not nest.
void OpenWebPage(const std::string& address);

} // namespace mw
