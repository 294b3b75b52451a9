// The web site in the browser window, opened and closed by menus.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"
#include "World.h"

#include <algorithm>

namespace journey {
namespace {

class Browser : public Journey {
protected:
    Browser() {
        Player.Set("QUILLMERE_WEB_ROOT", Town.WebRoot);
        Player.Set("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }

    void OpenSite() {
        Player.Press({"alt+w", "q"});
        Player.TakeKeys(kSite);
    }

    void WaitForPixels(const std::string& what, const Colour& colour, int fewest) const {
        const Area place = Screen.PlaceOf(Player.Windows(kSite).value(0));
        const Area seen{std::max(place.Left, 0), std::max(place.Top, 0),
                        std::min(place.Right, Display::Width),
                        std::min(place.Bottom, Display::Height)};
        WaitFor(what, [&] { return CountOf(Screen.Look(), seen, colour) > fewest; });
    }

    static constexpr const char* kSite = "^Quillmere$"; // the page's title

    World Town;
};

TEST_F(Browser, ShowsTheWebSiteAndIsClosedByItsMenu) {
    Player.Start();
    OpenSite();
    WaitForPixels("the page's dark head", {31, 58, 68}, 10000);
    WaitForPixels("the page's pale ground", {244, 239, 227}, 10000);
    Moment("1-site");
    Player.Press({"alt+f", "x"});
    Player.WaitToClose(kSite);
    Moment("2-closed");

    Player.TakeKeys(Client::kFrame);
    Player.ClickCommandLine();
    for (const auto& [name, text] : FilesBelow(Player.Folder.path()))
        EXPECT_EQ(name.find("WebEngine"), std::string::npos) << name;
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

TEST_F(Browser, LeftOpenDoesNotHoldUpTheStop) {
    Player.Start();
    OpenSite();
    Player.TakeKeys(Client::kFrame);
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

} // namespace
} // namespace journey
