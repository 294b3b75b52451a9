// What the program keeps, and what it refuses: real files, real starts.
#include "Journey.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace journey {
namespace {

namespace fs = std::filesystem;

using FileTexts = std::map<std::string, std::string>; // by name below the home folder

class Files : public Journey {
protected:
    fs::path Home() const { return Player.Folder.filePath("home").toStdString(); }

    FileTexts All() const {
        FileTexts texts;
        for (const auto& entry : fs::recursive_directory_iterator(Home())) {
            if (!entry.is_regular_file())
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            texts[fs::relative(entry.path(), Home()).generic_string()] = {
                std::istreambuf_iterator<char>(file), {}};
        }
        return texts;
    }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Home() / name, std::ios::binary) << text;
    }

    // A first start in an empty folder, stopped in order.
    void StartAndStop() {
        Player.Start();
        Player.ExitByMenu();
        ASSERT_EQ(Player.WaitForEnd(), 0);
    }
};

TEST_F(Files, AreMadeByTheFirstStartAndTheSameAfterTheSecond) {
    StartAndStop();
    const FileTexts first = All();
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(first.at("Macros/Default.mco"), "[End]\r\n");
    EXPECT_NE(first.at("Data/muds.lst").find("Mud=Quillmere\r\n"), std::string::npos);
    EXPECT_NE(first.at("Data/client.cfg").find("Esc=;\r\n"), std::string::npos);
    StartAndStop();
    EXPECT_EQ(All(), first);
}

TEST_F(Files, ThatAPersonHasEditedAreTakenOver) {
    StartAndStop();
    const std::string colours = "[Colours]\r\nMwBRed=&H123456\r\n[Config]\r\nEsc=!\r\n"
                                "[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n";
    Write("Data/client.cfg", colours);
    StartAndStop();
    const FileTexts kept = All();
    const std::string& config = kept.at("Data/client.cfg");
    EXPECT_NE(config.find("MwBRed=&H123456\r\n"), std::string::npos);
    EXPECT_NE(config.find("Esc=!\r\n[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n"), std::string::npos);
    EXPECT_EQ(kept.at("Macros/Hunt.mco"), "[End]\r\n");
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
    StartAndStop();
    Write(GetParam().File, GetParam().Text);
    const FileTexts before = All();
    EXPECT_EQ(Player.StartRefused(GetParam().Boxes), 1);
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
    {"AnUnknownMacroLine", "Macros/Default.mco", "[Macros]\r\n[End]\r\n", 3},
    {"AKeyWithoutACode", "Macros/Default.mco", "NormKeyF1=look\r\n[End]\r\n", 3},
    {"AKeyOutsideTheTable", "Macros/Default.mco", "NormKey256=look\r\n[End]\r\n", 1},
};

INSTANTIATE_TEST_SUITE_P(Rows, Refused, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace journey
