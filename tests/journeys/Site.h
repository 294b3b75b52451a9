// The maker's web site, as the demo world serves it, in the browser window.
#pragma once

#include "Client.h"

namespace journey {

inline constexpr const char* kSite = "^Quillmere$"; // the page's title

// Waits until the page is drawn, its dark head and its pale ground. Its window has the keys then.
void WaitToSeeSite(const Client& player, const Display& screen);

// By its menu. The frame has the keys afterwards.
void CloseSite(const Client& player);

} // namespace journey
