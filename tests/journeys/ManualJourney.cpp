// The pictures of the manual: each window as a player sees it. Every one is found whole on the
// screen; with QUILLMERE_MANUAL set to a folder they are left there too (scripts/pictures).
#include "Editors.h"
#include "Files.h"
#include "Journey.h"
#include "Site.h"
#include "Sounds.h"
#include "Wait.h"
#include "WebServer.h"

namespace journey {
namespace {

constexpr const char* kMessage = "^Quillmere Mud Client$"; // and the splash
constexpr Area kFrame{0, 0, 800, 500};                     // the frame for its pictures

// The area as a file in the format PPM.
std::string Cut(const journey::Picture& screen, const Area& area) {
    const auto at = [&screen](int x, int y) {
        return 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(screen.Width) +
                    static_cast<std::size_t>(x));
    };
    std::string file = "P6 " + std::to_string(area.Right - area.Left) + ' ' +
                       std::to_string(area.Bottom - area.Top) + " 255\n";
    for (int y = area.Top; y < area.Bottom; ++y)
        file += screen.Pixels.substr(at(area.Left, y), at(area.Right, y) - at(area.Left, y));
    return file;
}

class Manual : public WorldJourney {
protected:
    Manual() {
        PutTownInTheList();
        Player.Set("QUILLMERE_WEB_ROOT", Town.WebRoot);
        Player.Set("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }

    void Picture(const QString& name, const Area& area) const {
        SCOPED_TRACE(name.toStdString());
        Screen.LetSettle();
        const journey::Picture screen = Screen.Look();
        ASSERT_TRUE(area.Left >= 0 && area.Top >= 0 && area.Right <= screen.Width &&
                    area.Bottom <= screen.Height)
            << ::testing::PrintToString(area);
        constexpr int kFewestPixels = 200; // more than the corner by which a window is sized
        const int ground = CountOf(screen, area, ColourAt(screen, area.Left + 9, area.Top + 9));
        EXPECT_GT((area.Right - area.Left) * (area.Bottom - area.Top) - ground, kFewestPixels)
            << "there is nothing in it";
        const QString folder = qEnvironmentVariable("QUILLMERE_MANUAL");
        if (!folder.isEmpty())
            PutFile(folder + '/' + name + ".ppm", Cut(screen, area));
    }

    // The window of that title, which has the keys afterwards.
    void Picture(const QString& name, const char* title) const {
        Player.TakeKeys(title);
        Picture(name, Screen.PlaceOf(Player.Windows(title).last()));
    }

    void SizeFrame(const Area& place) const {
        const QString frame = Player.Windows(Client::kFrame).value(0);
        Screen.Do(
            {"windowsize", frame, QString::number(place.Right), QString::number(place.Bottom)});
        WaitFor("the frame to change its size", [&] { return Screen.PlaceOf(frame) == place; });
        Screen.LetSettle();
    }

    // Of a size that the manual has room for, perhaps with a menu open. The journeys' places on the
    // screen are those of the whole frame.
    void PictureOfFrame(const QString& name, const QString& menuKey = {}) const {
        SizeFrame(kFrame);
        if (!menuKey.isEmpty()) {
            Player.Press(menuKey);
            WaitFor("the menu", [this] { return Player.HasList(); });
        }
        Picture(name, kFrame);
        if (!menuKey.isEmpty())
            Player.ChooseFromList({"Escape"});
        SizeFrame({0, 0, Display::Width, Display::Height});
        Player.ClickCommandLine(); // the menu bar has the keys after a menu
    }

    void LeaveDialog(const QString& keys, const char* title) const {
        Player.Press(keys);
        Player.WaitToClose(title);
        Player.TakeKeys(Client::kFrame);
    }

    // A colour or a font is chosen in a window of its own.
    void PictureOfChooser(const QString& name, const QStringList& keys, const char* title) const {
        Player.Press(keys);
        Picture(name, title);
        Player.Press("Escape");
        Player.WaitToClose(title);
        Player.TakeKeys(kSetup);
    }
};

TEST_F(Manual, ShowsTheStartAndAGame) {
    Player.Launch();
    Player.WaitForSplash();
    Picture("splash", kMessage);
    Player.WaitForFrame();
    WaitFor("the toolbar", [this] { return Player.HasToolbar(); });
    Player.Press("Return");
    WaitFor("the message", [this] { return !Player.Boxes().isEmpty(); });
    Picture("box", kMessage);
    Player.AnswerBox();
    Player.TakeKeys(Client::kFrame);

    Player.ClickToolbar(ConnectButton);
    LogIn(Player, "Ada");
    for (const auto& [key, room] : {std::pair{'8', "North Gate"},
                                    {'6', "Windmill Rise"},
                                    {'2', "Paper Market"},
                                    {'4', "Goose Green"}})
        Walk(Player, key, room);
    PictureOfFrame("walk");
    PictureOfFrame("menu", "alt+c");
    for (const char* word : {"map", "help", "look"})
        Player.Enter(word);
    Player.WaitToSee("Grass cropped short");
    Player.Press({"Prior", "Prior", "Prior"});
    WaitFor("the earlier text", [this] { return Player.IsScrolledBack(); });
    PictureOfFrame("scrollback");
}

TEST_F(Manual, ShowsTheWindowsOfTheMenus) {
    PutFile(Player.Home + "/Data/muds.lst", GameList({{"Quillmere", "1234"}}));
    Player.Start();
    PictureOfFrame("first");
    Player.ClickToolbar(NewButton);
    Player.TakeKeys("^Add Mud$");
    for (const char* text : {"Northern Realms", "mud.example.org", "4000"}) {
        Player.Type(text);
        Player.Press("Tab");
    }
    Picture("addmud", "^Add Mud$");
    LeaveDialog("Return", "^Add Mud$");
    Player.ToggleToolbar();
    PictureOfFrame("mudmenu", "alt+m");
    Player.Press({"alt+m", "a"});
    Picture("chooser", "^Add/Delete/Change Mud$");
    LeaveDialog("Escape", "^Add/Delete/Change Mud$");

    Player.Press({"alt+h", "g"});
    Picture("help", "^Manual - ");
    LeaveDialog("Escape", "^Manual - ");
    Player.Press({"alt+h", "Up", "Return"});
    Picture("about", "^About$");
    LeaveDialog("Escape", "^About$");
}

TEST_F(Manual, ShowsTheEditors) {
    Player.Start();
    OpenEditor(Player, "m", kMacros);
    Player.Type("score;");
    Player.Press("Tab");
    Player.Type("kill ");
    Picture("macros", kMacros);
    Player.Press("alt+n");
    Player.TakeKeys("^New Macro Set$");
    Player.Type("Hunt");
    Picture("newset", "^New Macro Set$");
    Player.Press("Escape");
    Player.WaitToClose("^New Macro Set$");
    Player.TakeKeys(kMacros);
    LeaveDialog("Escape", kMacros);

    OpenEditor(Player, "a", kAliases);
    AddEntry(Player, "gb", "get bread");
    AddEntry(Player, "tt", "tell");
    Player.Press({"shift+Tab", "shift+Tab", "Home"});
    Picture("aliases", kAliases);
    LeaveDialog("Escape", kAliases);

    OpenEditor(Player, "t", kTriggers);
    AddEntry(Player, "You are hungry", "eat bread");
    AddEntry(Player, "attacks you!", "flee");
    Player.Press({"shift+Tab", "Home"});
    Picture("triggers", kTriggers);
    LeaveDialog("Escape", kTriggers);

    OpenSoundOptions(Player);
    Toggle(Player, {EnableMsp});
    Picture("sound", "^Sound$");
    CloseSoundOptions(Player);

    OpenEditor(Player, "f", kSetup);
    Picture("setup", kSetup);
    PictureOfChooser("colour", {"Tab", "Tab", "space"}, "^Select Color$");
    PictureOfChooser("font", {"alt+f"}, "^Select Font$");
}

TEST_F(Manual, ShowsADownload) {
    GameServer server;
    WebServer web;
    web.Begin("thunder.wav", std::string(40000, 'x'), 50);
    Player.Start({"--connect", server.Address()});
    server.WaitForPlayer();
    ChangeSoundOptions(Player, {EnableMsp});
    server.Send("Listen!\r\n!!SOUND(thunder.wav U=" + web.AddressOf("thunder.wav") +
                " )\r\nThunder rolls.\r\n");
    WaitFor("half of the sound", [this] {
        const QStringList windows = Player.Windows(kDownload);
        return !windows.isEmpty() &&
               CountOf(Screen.Look(), Screen.PlaceOf(windows.last()), kBarColour) > 500;
    });
    Picture("download", kDownload);
}

TEST_F(Manual, ShowsTheNewVersionAndTheWebSite) {
    const World newer{"1.3"};
    Player.Set("QUILLMERE_WEB_ROOT", newer.WebRoot);
    Player.Launch();
    Picture("update", "^New Version$");
    Player.WaitForFrame();
    Player.TakeKeys("^New Version$");
    Player.Press("alt+y");
    WaitToSeeSite(Player, Screen);
    Picture("browser", kSite);
}

} // namespace
} // namespace journey
