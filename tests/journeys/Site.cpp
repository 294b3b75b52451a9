#include "Site.h"

#include "Wait.h"

#include <algorithm>

namespace journey {
namespace {

constexpr Colour kHead{31, 58, 68};
constexpr Colour kGround{244, 239, 227};
constexpr int kMany = 10000; // pixels

} // namespace

void WaitToSeeSite(const Client& player, const Display& screen) {
    player.TakeKeys(kSite);
    const Area place = screen.PlaceOf(player.Windows(kSite).value(0));
    const Area seen{std::max(place.Left, 0), std::max(place.Top, 0),
                    std::min(place.Right, Display::Width), std::min(place.Bottom, Display::Height)};
    WaitFor("the web site to be drawn", [&] {
        const Picture picture = screen.Look();
        return CountOf(picture, seen, kHead) > kMany && CountOf(picture, seen, kGround) > kMany;
    });
}

void CloseSite(const Client& player) {
    player.Press({"alt+f", "x"});
    player.WaitToClose(kSite);
    player.TakeKeys(Client::kFrame);
}

} // namespace journey
