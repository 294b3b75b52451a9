// Sounds that come late, not at all, or several at once: the windows of their downloads, and the
// game that goes on beside them.
#include "Journey.h"
#include "Sounds.h"
#include "Wait.h"
#include "WebServer.h"

#include <algorithm>

namespace journey {
namespace {

constexpr const char* kError = "^Error$";
constexpr std::size_t kLength = 40000; // bytes of a sound, many chunks of a download

// The bytes are unlike each other everywhere, and another file's are too.
std::string Content(std::size_t file) {
    std::string bytes(kLength, '\0');
    for (std::size_t i = 0; i < kLength; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251 + file);
    return bytes;
}

class Downloads : public ServerJourney {
protected:
    void ConnectWithSound() {
        Connect();
        ChangeSoundOptions(Player, {EnableMsp});
    }

    // All in one arrival.
    void AskFor(const std::vector<std::string>& names) {
        std::string text;
        for (const std::string& name : names)
            text += "Listen!\r\n!!SOUND(" + name + " U=" + Web.AddressOf(name) + " )\r\n";
        SendText(text + "What was it?\r\n");
        WaitFor("the client to ask for all", [&] { return Web.Asked.size() == names.size(); });
    }

    // The server begins with all three and stops at a fifth, at a half and at four fifths.
    void BeginThree() {
        Web.Begin("one.wav", Content(1), 20);
        Web.Begin("two.wav", Content(2), 50);
        Web.Begin("three.wav", Content(3), 80);
        AskFor({"one.wav", "two.wav", "three.wav"});
        WaitFor("the windows to show how far they are", [this] { return Bars() == 3; });
    }

    // How many windows show more than the one before.
    std::size_t Bars() const {
        const std::vector<Area> places = Places();
        const Picture screen = Screen.Look();
        std::size_t longer = 0;
        int before = 0;
        for (const Area& place : places) {
            const int filled = CountOf(screen, place, kBarColour);
            longer += filled > before ? 1 : 0;
            before = filled;
        }
        return longer;
    }

    // Of the windows, by their slots: the first is the lowest.
    std::vector<Area> Places() const {
        std::vector<Area> places;
        for (const QString& window : Player.Windows(kDownload))
            places.push_back(Screen.PlaceOf(window));
        std::ranges::sort(places, std::ranges::greater(), &Area::Top);
        return places;
    }

    void ExpectTheGameToGoOn() {
        Player.TakeKeys(Client::kFrame);
        Player.Enter("look");
        Server.Expect("look\r");
        SendText("You see nothing.\r\n");
        Player.WaitToSee("You see nothing.");
    }

    WebServer Web;
};

TEST_F(Downloads, OfAMissingFileEndWithABoxAndTheGameGoesOn) {
    ConnectWithSound();
    AskFor({"gone.wav"});
    Player.TakeKeys(kError);
    Moment("1-missing");
    EXPECT_EQ(Places().size(), 1u);
    Player.Press("Return");
    Player.WaitToClose(kError);
    Player.WaitToClose(kDownload);
    ExpectTheGameToGoOn();
    EXPECT_TRUE(Player.Boxes().isEmpty());
    EXPECT_EQ(SoundsOf(Player).size(), 0u);
}

TEST_F(Downloads, GoOnSideBySideAndOneOfThemIsCancelledByAClick) {
    ConnectWithSound();
    BeginThree();
    Moment("1-three");
    const std::vector<Area> places = Places();
    Screen.Click(places[1].Right - 50, places[1].Bottom - 22);
    WaitFor("the window to go", [this] { return Places().size() == 2; });
    Moment("2-cancelled");
    Player.AnswerBox(); // with the path of the file that is short
    EXPECT_EQ(Places(), (std::vector<Area>{places[0], places[2]}));
    Web.GoOn();
    Player.WaitToClose(kDownload);
    ExpectTheGameToGoOn();
    EXPECT_TRUE(Player.Boxes().isEmpty());
    EXPECT_TRUE(SoundsOf(Player) ==
                (FileTexts{{"one.wav", Content(1)}, {"three.wav", Content(3)}}));
}

TEST_F(Downloads, AreCancelledByTheKeysToo) {
    ConnectWithSound();
    Web.Begin("one.wav", Content(1), 50);
    AskFor({"one.wav"});
    Player.TakeKeys(kDownload);
    Player.Press("Escape");
    Player.WaitToClose(kDownload);
    Player.AnswerBox();
    ExpectTheGameToGoOn();
    EXPECT_EQ(SoundsOf(Player).size(), 0u);
}

TEST_F(Downloads, DoNotHoldUpTheStopAndLeaveNoHalfFiles) {
    ConnectWithSound();
    BeginThree();
    EXPECT_EQ(SoundsOf(Player).size(), 3u) << "half files";
    Exit();
    EXPECT_EQ(SoundsOf(Player).size(), 0u);
}

} // namespace
} // namespace journey
