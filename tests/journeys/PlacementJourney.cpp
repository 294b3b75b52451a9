// Where the frame stands, and where it stands the next day.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <QFile>

namespace journey {
namespace {

constexpr Area kCentred{100, 70, 900, 630}; // four fifths of the screen

class Placement : public Journey {
protected:
    QString Frame() const { return Player.Windows(Client::kFrame).value(0); }

    void StartFrame() {
        Player.Launch();
        Player.WaitForFrame();
    }
};

TEST_F(Placement, IsKeptOverARestart) {
    QFile::remove(Player.SettingsFile());
    StartFrame();
    Moment("1-first-start");
    EXPECT_EQ(Screen.PlaceOf(Frame()), kCentred);
    Screen.Do({"windowmove", Frame(), "60", "40", "windowsize", Frame(), "840", "500"});
    const Area moved{60, 40, 900, 540};
    WaitFor("the frame to move", [&] { return Screen.PlaceOf(Frame()) == moved; });
    Moment("2-moved");
    Exit();
    StartFrame();
    Moment("3-next-start");
    EXPECT_EQ(Screen.PlaceOf(Frame()), moved);
}

struct Kept {
    const char* Name;
    KeptPlace Place;
    Area Shown;
};

void PrintTo(const Kept& row, std::ostream* out) { *out << row.Name; }

class KeptPlacement : public Placement, public ::testing::WithParamInterface<Kept> {};

TEST_P(KeptPlacement, IsTakenWhenItCanBeUsed) {
    Player.Keep(GetParam().Place);
    StartFrame();
    EXPECT_EQ(Screen.PlaceOf(Frame()), GetParam().Shown);
}

const Kept kKept[] = {
    {"PartlyOffTheScreen", {"-300", "300", "800", "600"}, {-300, 300, 500, 900}},
    {"LargerThanTheScreen", {"0", "0", "3000", "2000"}, {0, 0, 1000, 700}},
    {"OffTheScreen", {"5000", "5000", "800", "600"}, kCentred},
    {"OnlyItsEdgeOnTheScreen", {"990", "0", "800", "600"}, kCentred},
    {"NoSize", {"0", "0", "0", "600"}, kCentred},
    {"NoNumber", {"left", "0", "800", "600"}, kCentred},
    {"MoreThanANumberHolds", {"0", "99999999999999999999", "800", "600"}, kCentred},
    {"EmptyTexts", {"", "", "", ""}, kCentred},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptPlacement, ::testing::ValuesIn(kKept),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Placement, InSettingsThatCantBeReadIsTheMiddleOfTheScreen) {
    PutFile(Player.SettingsFile(), "not a store");
    StartFrame();
    Moment("1-notice");
    EXPECT_EQ(Screen.PlaceOf(Frame()), kCentred);
    Exit();
    EXPECT_EQ(FileText(Player.SettingsFile()), "not a store");
}

} // namespace
} // namespace journey
