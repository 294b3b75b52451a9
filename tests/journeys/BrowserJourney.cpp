// The web site in the browser window, opened and closed by menus.
#include "Files.h"
#include "Journey.h"
#include "Site.h"
#include "World.h"

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

    World Town;
};

TEST_F(Browser, ShowsTheWebSiteAndIsClosedByItsMenu) {
    Player.Start();
    OpenSite();
    WaitToSeeSite(Player, Screen);
    Moment("1-site");
    CloseSite(Player);
    Moment("2-closed");

    Player.ClickCommandLine();
    for (const auto& [name, text] : FilesBelow(Player.Folder.path()))
        EXPECT_EQ(name.find("WebEngine"), std::string::npos) << name;
    Exit();
}

TEST_F(Browser, LeftOpenDoesNotHoldUpTheStop) {
    Player.Start();
    OpenSite();
    Player.TakeKeys(Client::kFrame);
    Exit();
}

} // namespace
} // namespace journey
