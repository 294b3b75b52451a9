// What the program keeps, and what it refuses: real files, real starts.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

namespace journey {
namespace {

const std::string kGames = "[Mud]\r\nMud=Quillmere\r\nAddy=127.0.0.1\r\nPort=1234\r\nSndD=False\r\n"
                           "SndM=False\r\nMsp=False\r\nSndW=False\r\n[End]\r\n";
const std::string kConfiguration = "[Config]\r\nEsc=;\r\n[Macros]\r\nDefault\r\n[END]\r\n";

class Files : public Journey {
protected:
    FileTexts All() const { return FilesBelow(Player.Home); }

    void StartAndStop() {
        Player.Start();
        Exit();
    }
};

TEST_F(Files, AreMadeByTheFirstStartAndTheSameAfterTheSecond) {
    StartAndStop();
    const FileTexts first = All();
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(first.at("Macros/Default.mco"), "[End]\r\n");
    EXPECT_EQ(first.at("Data/muds.lst"), kGames);
    EXPECT_NE(first.at("Data/client.cfg").find("Esc=;\r\n"), std::string::npos);
    StartAndStop();
    EXPECT_EQ(All(), first);
}

TEST_F(Files, ThatAPersonHasEditedAreTakenOver) {
    PutFile(Player.Home + "/Data/client.cfg",
            "[Colours]\r\nMwBRed=&H123456\r\n[Config]\r\nEsc=!\r\n"
            "[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n");
    StartAndStop();
    const FileTexts kept = All();
    const std::string& config = kept.at("Data/client.cfg");
    EXPECT_NE(config.find("MwBRed=&H123456\r\n"), std::string::npos);
    EXPECT_NE(config.find("Esc=!\r\n[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n"), std::string::npos);
    EXPECT_EQ(kept.at("Macros/Hunt.mco"), "[End]\r\n");
}

// Meant: a stale configuration goes itself; for a stale game list the good one goes, and is made
// anew.
TEST_F(Files, ThatOlderVersionsLeftAreTreatedUnlikeEachOtherOnPurpose) {
    PutFiles(Player.Home, {{"client.cfg", "stale"},
                           {"muds.lst", "stale"},
                           {"Data/muds.lst", "\r\n"},
                           {"Data/client.cfg", kConfiguration}});
    StartAndStop();
    const FileTexts kept = All();
    EXPECT_FALSE(kept.contains("client.cfg"));
    EXPECT_EQ(kept.at("muds.lst"), "stale");
    EXPECT_EQ(kept.at("Data/muds.lst"), kGames);
}

struct Refusal {
    const char* Name;
    const char* File;
    const char* Text;
    int Boxes;
};

void PrintTo(const Refusal& row, std::ostream* out) { *out << row.Name; }

class Refused : public Files, public ::testing::WithParamInterface<Refusal> {};

TEST_P(Refused, FilesEndTheProgramWithTheirBoxesAndStayAsTheyAre) {
    const Refusal& refused = GetParam();
    FileTexts before{{"Data/muds.lst", kGames},
                     {"Data/client.cfg", kConfiguration},
                     {"Macros/Default.mco", "[End]\r\n"}};
    before[refused.File] = refused.Text;
    PutFiles(Player.Home, before);
    Player.Launch();
    for (int box = 1; box <= refused.Boxes; ++box) {
        WaitFor("message box " + std::to_string(box), [&] { return !Player.Boxes().isEmpty(); });
        Moment(QStringLiteral("%1-box").arg(box));
        Player.AnswerBox();
    }
    EXPECT_EQ(Player.WaitForEnd(), 1);
    EXPECT_EQ(All(), before);
}

const Refusal kRefusals[] = {
    {"AnUnknownColour", "Data/client.cfg", "[Colours]\r\nmwblack=&H0\r\n[END]\r\n", 2},
    {"AnUnknownSetting", "Data/client.cfg", "[Config]\r\nColour=1\r\n[END]\r\n", 2},
    {"AColourThatIsNoNumber", "Data/client.cfg", "[Colours]\r\nMwBlack=&Hxyz\r\n[END]\r\n", 1},
    {"ACutSection", "Data/client.cfg", "[Colours]\r\nMwBlack=&H0\r\n", 1},
    {"AnEmptyConfiguration", "Data/client.cfg", "", 1},
    {"AnEmptyLineBetweenGames", "Data/muds.lst", "\r\n[End]\r\n", 2},
    {"AnEmptyGameList", "Data/muds.lst", "", 1},
    {"APortThatDoesNotFit", "Data/muds.lst",
     "[Mud]\r\nMud=A\r\nAddy=b\r\nPort=99999\r\nSndD=False\r\nSndM=False\r\nMsp=False\r\n"
     "SndW=False\r\n[End]\r\n",
     1},
    {"ASwitchThatIsNone", "Data/muds.lst",
     "[Mud]\r\nMud=A\r\nAddy=b\r\nPort=1\r\nSndD=Maybe\r\nSndM=False\r\nMsp=False\r\n"
     "SndW=False\r\n[End]\r\n",
     1},
    {"ACutGame", "Data/muds.lst", "[Mud]\r\nMud=A\r\nAddy=b\r\n", 1},
    {"AnUnknownMacroLine", "Macros/Default.mco", "[Macros]\r\n[End]\r\n", 3},
    {"AKeyWithoutACode", "Macros/Default.mco", "NormKeyF1=look\r\n[End]\r\n", 3},
    {"AKeyOutsideTheTable", "Macros/Default.mco", "NormKey256=look\r\n[End]\r\n", 1},
};

INSTANTIATE_TEST_SUITE_P(Rows, Refused, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace journey
