#include "app/MainFrame.h"

#include "base/Error.h"
#include "base/Globals.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"
#include "terminal/Ansi.h"
#include "terminal/Output.h"

namespace mw {
namespace {

using Steps = std::vector<std::string>;

class MainFrame : public RuleTest {
protected:
    MainFrame() {
        MudList.resize(3);
        MudList[0].Address = "game.example";
        MudList[1].Name = "Northern Realms";
        MudList[1].Address = "192.0.2.10";
        MudList[1].Port = 4000;
        MudList[2].Name = "Another";
        MudList[2].Port = -1;
    }
};

TEST_F(MainFrame, BearsTheNameAndTheVersionInItsCaption) {
    EXPECT_EQ(FrameCaption(), "Quillmere Mud Client V" + std::to_string(QUILLMERE_VERSION_MAJOR) +
                                  "." + std::to_string(QUILLMERE_VERSION_MINOR) + "." +
                                  std::to_string(QUILLMERE_VERSION_PATCH));
}

TEST_F(MainFrame, FillsTheChooserInTheListsOrderAndShowsTheCurrentGame) {
    CurrentMud = 1;
    MDIForm_Load();
    std::erase_if(fakes::Calls, [](const std::string& call) {
        return !call.starts_with("cboMud ") && !call.starts_with("lbl");
    });
    EXPECT_EQ(fakes::Calls,
              (Steps{"cboMud add Quillmere", "cboMud add Northern Realms", "cboMud add Another",
                     "cboMud index 1", "lblAddress 192.0.2.10", "lblPort 4000"}));
    EXPECT_EQ(CurrentMud, 1);
}

TEST_F(MainFrame, FailsToLoadWhenTheCurrentGameIsNotListed) {
    CurrentMud = 3;
    EXPECT_EQ(ErrorOf(MDIForm_Load), SubscriptOutOfRange);
}

TEST_F(MainFrame, PutsTheTerminalIntoItsStartState) {
    ToolbarVisible = false;
    WholeSequenceMode = false;
    CurrentColour = Rgb(1, 2, 3);
    ScrollBackActive = true;
    OutputRedrawOn = false;
    MDIForm_Load();
    EXPECT_TRUE(ToolbarVisible);
    EXPECT_TRUE(WholeSequenceMode);
    EXPECT_EQ(CurrentColour, Rgb(255, 255, 255));
    EXPECT_FALSE(ScrollBackActive);
    EXPECT_TRUE(OutputRedrawOn);
}

TEST_F(MainFrame, LoadsWithWhiteWhateverThePaletteSays) {
    Palette[MwWhite] = Rgb(1, 2, 3);
    MDIForm_Load();
    EXPECT_EQ(CurrentColour, Rgb(255, 255, 255));
}

TEST_F(MainFrame, MakesTheChosenEntryTheCurrentGameAndShowsIt) {
    cboMud_Click(1);
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(fakes::Calls, (Steps{"lblAddress 192.0.2.10", "lblPort 4000"}));
    fakes::Calls.clear();
    cboMud_Click(2);
    EXPECT_EQ(CurrentMud, 2);
    EXPECT_EQ(fakes::Calls, (Steps{"lblAddress ", "lblPort -1"}));
    fakes::Calls.clear();
    cboMud_Click(0);
    EXPECT_EQ(CurrentMud, 0);
    EXPECT_EQ(fakes::Calls, (Steps{"lblAddress game.example", "lblPort 1234"}));
}

TEST_F(MainFrame, KeepsTheCurrentGameWhenNoEntryIsChosen) {
    CurrentMud = 1;
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}}) {
        EXPECT_EQ(ErrorOf([index] { cboMud_Click(index); }), SubscriptOutOfRange) << index;
        EXPECT_EQ(CurrentMud, 1);
        EXPECT_TRUE(fakes::Calls.empty());
    }
}

} // namespace
} // namespace mw
