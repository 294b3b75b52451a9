// From the splash to the frame, and what a stop before the frame does.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <chrono>

#include <QDir>
#include <QElapsedTimer>

namespace journey {
namespace {

class Splash : public Journey {};

TEST_F(Splash, ComesAfterTheFoldersAndGoesWithTheFrame) {
    EXPECT_FALSE(QDir(Player.Home).exists());
    Player.Launch();
    Player.WaitForSplash();
    EXPECT_TRUE(QDir(Player.Home + "/Data").exists());
    EXPECT_TRUE(QDir(Player.Home + "/Macros").exists());
    EXPECT_TRUE(Player.Windows(Client::kFrame).isEmpty());
    Moment("1-loading");
    WaitFor("the files of a first start", [this] { return FilesBelow(Player.Home).size() >= 2; });
    Moment("2-loaded");
    Player.WaitForFrame();
    EXPECT_FALSE(Player.ShowsSplash());
    Moment("3-frame");
    Player.ExitByMenu();
    Player.WaitForSplash();
    Moment("4-saving");
    EXPECT_TRUE(Player.Windows(Client::kFrame).isEmpty());
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_EQ(Player.Log(), "");
}

// Five ticks of loading, and from the five dots three finishing ticks.
TEST_F(Splash, StaysForItsStagesAndItsDots) {
    QElapsedTimer clock;
    clock.start();
    Player.Launch();
    WaitFor("the frame", [this] { return !Player.Windows(Client::kFrame).isEmpty(); });
    EXPECT_GE(clock.elapsed(), (5 * 250 + 3 * 500) * 95 / 100) << "less what coarse timers spare";
}

TEST_F(Splash, GivesWayToAFrameThatBearsTheIcon) {
    Player.Start();
    const QStringList windows = Player.Windows(Client::kFrame);
    EXPECT_EQ(Screen.IconsOf(windows.value(0)).join(", ").toStdString(),
              "128 x 128, 16 x 16, 22 x 22, 32 x 32, 48 x 48");
}

struct StopTime {
    const char* Name;
    int AfterMs; // behind the first sight of the splash
};

void PrintTo(const StopTime& row, std::ostream* out) { *out << row.Name; }

class StopDuringTheSplash : public Splash, public ::testing::WithParamInterface<StopTime> {};

// Saved, each of these would look different.
const FileTexts kUnlikeSaved = {
    {"Data/muds.lst", "[Mud]\r\nthe name=Far\r\nAddy=127.0.0.1\r\nPort=4000\r\nSndD=True\r\n"
                      "SndM=True\r\nMsp=True\r\nSndW=True\r\n"},
    {"Data/client.cfg", "[Macros]\r\nDefault\r\n[END]\r\n"},
    {"Macros/Default.mco", "NormKey113=b\r\nNormKey112=a\r\n[End]\r\n"},
};

TEST_P(StopDuringTheSplash, SavesNothingAndEndsWell) {
    PutFiles(Player.Home, kUnlikeSaved);
    Player.Launch();
    Player.WaitForSplash();
    Becomes([] { return false; }, std::chrono::milliseconds(GetParam().AfterMs));
    EXPECT_TRUE(Player.ShowsSplash());
    Player.Process.terminate();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_EQ(FilesBelow(Player.Home), kUnlikeSaved);
}

const StopTime kStopTimes[] = {{"AtItsBeginning", 0}, {"WhenAllIsLoaded", 1000}};

INSTANTIATE_TEST_SUITE_P(Rows, StopDuringTheSplash, ::testing::ValuesIn(kStopTimes),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace journey
