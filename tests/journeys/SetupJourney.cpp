// The setup dialog: a colour and the font changed by keys, seen in the next output, and what of it
// a restart keeps.
#include "Editors.h"
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

namespace journey {
namespace {

constexpr const char* kBrightRed = "\x1b[0;1;31m";
constexpr Colour kOld{255, 0, 0};
constexpr Colour kNew{40, 200, 240};

class Setup : public ServerJourney {
protected:
    void ChooseBrightRed(const QString& colour) {
        Player.Press({"Tab", "Tab", "Tab"}); // from grey over light grey and red
        Player.Press("space");
        Player.TakeKeys("^Select Color$");
        Player.Press({"alt+h", "ctrl+a"});
        Player.Type(colour);
        Player.Press("Return");
        Player.WaitToClose("^Select Color$");
        Player.TakeKeys(kSetup);
    }

    void ChooseFontSize(const QString& points) {
        Player.Press("alt+f");
        Player.TakeKeys("^Select Font$");
        Player.Press({"alt+s", "ctrl+a"});
        Player.Type(points);
        Player.Press("Return");
        Player.WaitToClose("^Select Font$");
        Player.TakeKeys(kSetup);
    }

    // Waits until they are drawn: their text may have been there before.
    void ShowLettersIn(const Colour& colour) {
        SendText(std::string(kBrightRed) + "HHHHHHHHHH");
        WaitFor("letters in the colour", [&] { return RowsOf(colour) > 0; });
    }

    // How many rows of the output's pixels have that colour.
    int RowsOf(const Colour& colour) const {
        const Picture screen = Screen.Look();
        int rows = 0;
        for (int y = Client::Output.Top; y < Client::Output.Bottom; ++y) {
            const Area row{Client::Output.Left, y, Client::Output.Right, y + 1};
            rows += CountOf(screen, row, colour) > 0 ? 1 : 0;
        }
        return rows;
    }
};

TEST_F(Setup, ChangesTheNextOutputAndKeepsTheColourAlone) {
    Connect();
    ShowLettersIn(kOld);
    const int smallRows = RowsOf(kOld);

    OpenEditor(Player, "f", kSetup);
    Moment("1-opened");
    ChooseBrightRed("#28c8f0");
    const Area dialog = Screen.PlaceOf(Player.Windows(kSetup).value(0));
    EXPECT_GT(CountOf(Screen.Look(), dialog, kNew), 300) << "a swatch shows it";
    ChooseFontSize("24");
    Moment("2-changed");
    LeaveEditor(Player, "alt+c", kSetup);
    ShowLettersIn(kNew);
    Moment("3-next-output");
    EXPECT_GE(RowsOf(kNew), smallRows + 8) << "large letters in the new colour";
    EXPECT_EQ(RowsOf(kOld), smallRows) << "what was shown before stays as it is";

    Exit();
    const std::string file = FileText(Player.Home + "/Data/client.cfg");
    EXPECT_NE(file.find("MwBRed=&HF0C828\r\n"), std::string::npos) << file;
    Connect();
    ShowLettersIn(kNew);
    Moment("4-restarted");
    EXPECT_EQ(RowsOf(kNew), smallRows) << "the colour is kept and the font is not, on purpose";
    EXPECT_EQ(RowsOf(kOld), 0);
}

} // namespace
} // namespace journey
