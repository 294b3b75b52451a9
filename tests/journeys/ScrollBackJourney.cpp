// Reading what scrolled by, while more comes in faster than anyone can read.
#include "Flood.h"
#include "Journey.h"
#include "Wait.h"

#include <regex>
#include <string>

namespace journey {
namespace {

constexpr int kManyLines = 100; // several screens

struct Lines {
    int first = 0;
    int last = 0;
    int count = 0;
};

// The numbers of the flood's lines in the text. They must go up. A few are missing: each arrival
// loses its last byte, which may be a digit.
Lines LinesIn(const std::string& text) {
    static const std::regex line("line ([0-9]{8}) fills");
    Lines lines;
    for (std::sregex_iterator each(text.begin(), text.end(), line), end; each != end; ++each) {
        const int number = std::stoi(each->str(1));
        EXPECT_GT(number, lines.last);
        lines.first = lines.count == 0 ? number : lines.first;
        lines.last = number;
        ++lines.count;
    }
    return lines;
}

class ScrollBack : public ServerJourney {
protected:
    static constexpr Area LowerBox{0, 460, 984, 640};

    int Green(const Area& area) const { return CountOf(Screen.Look(), area, {0, 140, 0}); }

    std::string LowerPixels() const {
        constexpr std::size_t kRow = std::size_t{3} * Display::Width;
        return Screen.Look().Pixels.substr(kRow * LowerBox.Top,
                                           kRow * (LowerBox.Bottom - LowerBox.Top));
    }

    std::string CopyMarked() const {
        std::string copied;
        Screen.ClearClipboard();
        WaitFor("the copy of what the mouse marked", [&] {
            Player.Press("ctrl+c");
            return !(copied = Screen.Clipboard()).empty();
        });
        return copied;
    }
};

TEST_F(ScrollBack, HoldsStillDuringAFlood) {
    Connect();
    Flood flood(Server);
    WaitFor("the flood to fill the output", [this] { return Green(LowerBox) > 1000; });
    Player.Press("Prior");
    WaitFor("Page Up to open the earlier output", [this] { return Player.IsScrolledBack(); });
    Player.Press("Prior");
    const std::string held = Player.Shown();
    const Lines earlier = LinesIn(held);
    EXPECT_GT(earlier.count, kManyLines);
    EXPECT_GT(2 * earlier.count, earlier.last - earlier.first);
    const std::string before = LowerPixels();
    WaitFor("the lower box to go on", [&] { return LowerPixels() != before; });
    Moment("1-scrolled-back");
    EXPECT_TRUE(Player.Shown() == held) << "the earlier output changed";
    EXPECT_GT(flood.LastLine, earlier.last);

    Player.ReturnToEnd();
    WaitFor("End to close the earlier output", [this] { return !Player.IsScrolledBack(); });
    const int sent = flood.Stop();
    // The flood may have stopped inside a colour sequence, which waits for its "m".
    WaitFor("the words behind the flood", [this] {
        SendText("\x1b[0m\r\nThe flood is over.");
        return Player.Shown().find("The flood is over.") != std::string::npos;
    });
    Moment("2-returned");
    EXPECT_LE(sent - LinesIn(Player.Shown()).last, 1);
}

TEST_F(ScrollBack, FollowsTheWheelAndTheMouse) {
    Connect();
    std::string lines;
    for (int number = 1; number <= kManyLines; ++number)
        lines += "\r\n" + FloodLine(number) + " fills the screen";
    SendText(lines);
    Player.WaitToSee(FloodLine(kManyLines));
    EXPECT_FALSE(Player.IsScrolledBack());
    Screen.Turn(5, 400, Client::kUpper);
    WaitFor("the wheel to open the earlier output", [this] { return Player.IsScrolledBack(); });
    Moment("1-wheel-up");
    Screen.Drag(6, 100, 60, 300);
    const Lines marked = LinesIn(CopyMarked());
    EXPECT_GT(marked.count, 5);
    EXPECT_LT(marked.last, kManyLines);
    Screen.Turn(-50, 400, Client::kUpper);
    WaitFor("the wheel to close the earlier output", [this] { return !Player.IsScrolledBack(); });
}

} // namespace
} // namespace journey
