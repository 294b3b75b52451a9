// Each file that is kept, broken in every way: the boxes or the error that the rules state, no
// other outcome, and the file as it was.
#include "automation/MacroFiles.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "config/ClientConfig.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ChildProcess.h"
#include "support/ErrorOf.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <vector>

using namespace std::string_literals;

namespace mw {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

constexpr const char* kGameMessage = "An error has occured loading the mud list";
constexpr const char* kColourMessage = "An Error has occured loading the configuration file";
constexpr const char* kConfigMessage = "And error as occured loading the configuration file";
constexpr const char* kSetMessage = "An error has occured in loading a macroset";
constexpr const char* kKeyMessage = "An Error has occured loading the macros";
constexpr const char* kValueMessage = "An error has occured loading a trigger value";

// What a loading comes to.
struct Outcome {
    std::int32_t Error = 0; // its number
    bool Ends = false;      // the program, behind its boxes
    Texts Boxes;

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << (outcome.Ends ? "ends the program" : "error " + std::to_string(outcome.Error));
    for (const std::string& box : outcome.Boxes)
        *out << ", box " << testing::PrintToString(box.substr(0, 80));
}

bool IsRefusal(const Outcome& outcome) { return outcome.Ends || outcome.Error != 0; }

Outcome OutcomeOf(void (*load)()) {
    Outcome outcome;
    try {
        load();
    } catch (const Error& error) {
        outcome.Error = error.Number;
    } catch (const EndProgram&) {
        outcome.Ends = true;
    }
    outcome.Boxes = fakes::Messages;
    return outcome;
}

// Whether the rules know this outcome, for a text that nobody has looked at.
bool IsStated(const Outcome& outcome) {
    static const std::set<std::int32_t> errors = {0, Overflow, SubscriptOutOfRange, TypeMismatch,
                                                  InputPastEnd};
    static const std::map<std::string, std::size_t> boxes = {
        {kGameMessage, 2}, {kColourMessage, 2}, {kConfigMessage, 2},
        {kSetMessage, 3},  {kKeyMessage, 3},    {kValueMessage, 3}};
    std::size_t at = 0;
    while (at < outcome.Boxes.size() && boxes.contains(outcome.Boxes[at]))
        at += boxes.at(outcome.Boxes[at]);
    return at == outcome.Boxes.size() && errors.contains(outcome.Error);
}

// A file of the client and how it is read.
struct KeptFile {
    const char* Name;
    const char* Path;
    void (*Load)();
    std::string Good;
    std::string ByLines; // the outcome when that many lines are there: "." is read, "!" is past end
};

void PrintTo(const KeptFile& file, std::ostream* out) { *out << file.Name; }

std::string Game(const std::string& name, const std::string& port = "1",
                 const std::string& wave = "False") {
    return "[Mud]\r\nMud=" + name + "\r\nAddy=a\r\nPort=" + port +
           "\r\nSndD=False\r\nSndM=True\r\nMsp=False\r\nSndW=" + wave + "\r\n";
}

std::string Colour(const std::string& value) {
    return "[Colours]\r\nMwBRed=" + value + "\r\n[END]\r\n";
}

std::string Alias(const std::string& index, const std::string& enabled = "True") {
    return "[Alias]\r\nValue=" + index + "\r\nAlias=gt\r\nReplace=tell\r\nIsEnabled=" + enabled +
           "\r\n[End]\r\n";
}

const KeptFile kGames = {"Games", "Data/muds.lst", LoadMudList,
                         Game("A") + Game("B", "4000", "True") + "[End]\r\n", "!.!!!!!!..!!!!!!.."};

const KeptFile kConfiguration = {
    "Configuration", "Data/client.cfg", LoadClientConfig,
    "[Colours]\r\nMwBRed=&H1\r\n[Config]\r\nEsc=:\r\n[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n",
    "!.!.!.!!."};

const KeptFile kMacros = {"Macros", "Macros/Default.mco", LoadAllMacroSets,
                          "AltKey75=kill \r\nNormKey112=look\r\n[Trigger]\r\nValue=0\r\n"
                          "Trigger=hungry\r\nReact=eat\r\n~\r\n" +
                              Alias("2"),
                          "!...!!!!.!!!!."};

const KeptFile kFiles[] = {kGames, kConfiguration, kMacros};

// How something in a file's place looks from outside: the same file with the same contents, or not.
struct Sight {
    bool IsThere = false;
    ino_t File = 0;
    mode_t Mode = 0;
    off_t Size = 0;
    time_t Changed = 0;
    long ChangedPart = 0;

    bool operator==(const Sight&) const = default;
};

class BrokenFile : public RuleTest {
protected:
    BrokenFile() {
        ::alarm(60); // a reader that waits for ever is ended, and the test with it
        fs::create_directory(Folder.Path / "Data");
        fs::create_directory(Folder.Path / "Macros");
        BeginAnew();
    }

    ~BrokenFile() override { ::alarm(0); }

    static void BeginAnew() {
        ResetMudList();
        ResetMacros();
        Palette = kDefaultPalette;
        EscapeChar = ";";
        fakes::Messages.clear();
    }

    fs::path PathOf(const KeptFile& file) const { return Folder.Path / file.Path; }

    void Put(const KeptFile& file, std::string_view text) const {
        std::ofstream(PathOf(file), std::ios::binary) << text;
    }

    Sight See(const KeptFile& file) const {
        struct stat seen {};
        if (::lstat(PathOf(file).c_str(), &seen) != 0)
            return {};
        return {true,         seen.st_ino,         seen.st_mode,
                seen.st_size, seen.st_mtim.tv_sec, seen.st_mtim.tv_nsec};
    }

    // All that the files are read into.
    static std::string Memory() {
        std::string all =
            FormatMudList(MudList) + FormatClientConfig({Palette, EscapeChar, MacroSets});
        for (const MacroSet& set : MacroSets)
            all += FormatMacroSet(set);
        return all;
    }

    // Loads file, which stays as it is whatever it holds; what is refused changes no memory.
    Outcome Load(const KeptFile& file) const {
        const Sight before = See(file);
        const std::string memory = Memory();
        const Outcome outcome = OutcomeOf(file.Load);
        EXPECT_TRUE(See(file) == before) << file.Name << " was written";
        EXPECT_TRUE(!IsRefusal(outcome) || Memory() == memory) << file.Name << " was half read";
        return outcome;
    }

    FreshFolder Folder;
};

class KeptFiles : public BrokenFile, public testing::WithParamInterface<KeptFile> {
protected:
    // Any text: whatever comes of it is stated.
    void ExpectStated(std::string_view text) {
        BeginAnew();
        Put(GetParam(), text);
        const Outcome outcome = Load(GetParam());
        EXPECT_TRUE(IsStated(outcome)) << testing::PrintToString(outcome) << " of "
                                       << testing::PrintToString(std::string(text));
    }
};

INSTANTIATE_TEST_SUITE_P(Broken, KeptFiles, testing::ValuesIn(kFiles),
                         [](const auto& row) { return row.param.Name; });

TEST_P(KeptFiles, AreReadWhenTheyAreGood) {
    Put(GetParam(), GetParam().Good);
    const std::string before = Memory();
    EXPECT_EQ(Load(GetParam()), Outcome());
    EXPECT_NE(Memory(), before);
}

TEST_P(KeptFiles, CutBehindEachLineAreReadOrPastTheirEnd) {
    std::size_t end = 0;
    for (const char expected : GetParam().ByLines) {
        BeginAnew();
        Put(GetParam(), std::string_view(GetParam().Good).substr(0, end));
        EXPECT_EQ(Load(GetParam()), (Outcome{expected == '!' ? InputPastEnd : 0, false, {}}))
            << GetParam().Good.substr(0, end);
        end = GetParam().Good.find('\n', end) + 1;
    }
    EXPECT_EQ(end, 0u) << "not all lines were tried";
}

TEST_P(KeptFiles, CutAtEachByteEndAsStated) {
    for (std::size_t length = 0; length <= GetParam().Good.size(); ++length)
        ExpectStated(std::string_view(GetParam().Good).substr(0, length));
}

TEST_P(KeptFiles, OfRandomBytesEndAsStated) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::minstd_rand random(seed);
        std::string text(random() % 2000, '\0');
        std::generate(text.begin(), text.end(), [&random] { return static_cast<char>(random()); });
        ExpectStated(text);
    }
}

// Bytes changed, taken out, doubled, and stretches of the file copied to another place.
TEST_P(KeptFiles, WithRandomDamageEndAsStated) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::minstd_rand random(seed);
        std::string text = GetParam().Good;
        for (std::size_t hits = 1 + random() % 4; hits > 0; --hits) {
            const std::size_t at = random() % text.size();
            const std::size_t length = random() % 30;
            const std::string stretch = text.substr(random() % text.size(), length);
            switch (random() % 4) {
            case 0:
                text[at] = static_cast<char>(random());
                break;
            case 1:
                text.erase(at, length);
                break;
            case 2:
                text.insert(at, stretch);
                break;
            default:
                text.insert(at, 1, "\n\r[=~\0-9"[random() % 9]);
            }
            if (text.empty())
                text = "\n";
        }
        ExpectStated(text);
    }
}

TEST_P(KeptFiles, OfTheLargestSizeAreRead) {
    Put(GetParam(), GetParam().Good);
    fs::resize_file(PathOf(GetParam()), kLargestFile);
    const std::string before = Memory();
    EXPECT_EQ(Load(GetParam()), Outcome());
    EXPECT_NE(Memory(), before);
}

// What can lie in a file's place, and the error it is.
struct Place {
    const char* Name;
    void (*Make)(const fs::path& path, const std::string& good);
    std::int32_t Error;
};

void PrintTo(const Place& place, std::ostream* out) { *out << place.Name; }

void LinkTo(const fs::path& target, const fs::path& path) { fs::create_symlink(target, path); }

const Place kPlaces[] = {
    {"AFolder", [](const fs::path& path, const std::string&) { fs::create_directory(path); },
     PathFileAccess},
    {"APipe",
     [](const fs::path& path, const std::string&) { EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0); },
     PathFileAccess},
    {"ASocket",
     [](const fs::path& path, const std::string&) {
         const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
         sockaddr_un address{AF_UNIX, {}};
         std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
         EXPECT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
         ::close(socket);
     },
     PathFileAccess},
    {"ALinkToItself",
     [](const fs::path& path, const std::string&) { LinkTo(path.filename(), path); },
     PathFileAccess},
    {"ALinkToNowhere", [](const fs::path& path, const std::string&) { LinkTo("nowhere", path); },
     FileNotFound},
    {"ALinkToBelowAFile",
     [](const fs::path& path, const std::string&) { LinkTo("/dev/null/x", path); }, FileNotFound},
    {"ALinkToAnEndlessDevice",
     [](const fs::path& path, const std::string&) { LinkTo("/dev/zero", path); }, PathFileAccess},
    {"ALinkToAnEmptyDevice",
     [](const fs::path& path, const std::string&) { LinkTo("/dev/null", path); }, PathFileAccess},
    {"ALinkToAFolder", [](const fs::path& path, const std::string&) { LinkTo("..", path); },
     PathFileAccess},
    {"AFileThatCannotBeRead",
     [](const fs::path& path, const std::string&) { LinkTo("/proc/self/mem", path); },
     PathFileAccess},
    {"AByteMoreThanTheLargest",
     [](const fs::path& path, const std::string& good) {
         std::ofstream(path, std::ios::binary) << good;
         fs::resize_file(path, kLargestFile + 1);
     },
     PathFileAccess},
    {"AHundredMegabytesThatTakeNoRoom",
     [](const fs::path& path, const std::string& good) {
         std::ofstream(path, std::ios::binary) << good;
         fs::resize_file(path, 100'000'000);
     },
     PathFileAccess},
    {"ALinkToAGoodFile",
     [](const fs::path& path, const std::string& good) {
         std::ofstream(path.parent_path() / "good", std::ios::binary) << good;
         LinkTo("good", path);
     },
     0},
    {"ATwiceLinkedGoodFile",
     [](const fs::path& path, const std::string& good) {
         std::ofstream(path.parent_path() / "good", std::ios::binary) << good;
         fs::create_hard_link(path.parent_path() / "good", path);
     },
     0},
    {"AReadOnlyFile",
     [](const fs::path& path, const std::string& good) {
         std::ofstream(path, std::ios::binary) << good;
         fs::permissions(path, fs::perms::owner_read);
     },
     0},
};

class Places : public BrokenFile,
               public testing::WithParamInterface<std::tuple<KeptFile, Place>> {};

INSTANTIATE_TEST_SUITE_P(Broken, Places,
                         testing::Combine(testing::ValuesIn(kFiles), testing::ValuesIn(kPlaces)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).Name) + "In" +
                                    std::get<1>(row.param).Name;
                         });

TEST_P(Places, AreReadOrRefusedAtOnceAndStay) {
    const auto& [file, place] = GetParam();
    place.Make(PathOf(file), file.Good);
    EXPECT_EQ(Load(file), (Outcome{place.Error, false, {}}));
    EXPECT_TRUE(See(file).IsThere);
}

// Rights are those of an ordinary user, for root as well.
struct Rights {
    const char* Name;
    unsigned Folder;
    unsigned File;
    std::int32_t Error;
};

void PrintTo(const Rights& row, std::ostream* out) { *out << row.Name; }

const Rights kRights[] = {
    {"AFileThatMayBeRead", 0700, 0600, 0},
    {"AFileThatMayOnlyBeRead", 0500, 0400, 0},
    {"AClosedFile", 0700, 0000, PathFileAccess},
    {"AFileThatMayOnlyBeWritten", 0700, 0200, PathFileAccess},
    {"AClosedFolder", 0000, 0600, PathFileAccess},
    {"AFolderThatMayOnlyBeListed", 0600, 0600, PathFileAccess},
    {"AFolderThatMayOnlyBeSearched", 0100, 0600, 0},
};

class RightsOf : public BrokenFile,
                 public testing::WithParamInterface<std::tuple<KeptFile, Rights>> {
protected:
    void Set(const fs::path& path, unsigned rights) const {
        fs::permissions(path, static_cast<fs::perms>(rights));
    }
};

INSTANTIATE_TEST_SUITE_P(Broken, RightsOf,
                         testing::Combine(testing::ValuesIn(kFiles), testing::ValuesIn(kRights)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).Name) + "In" +
                                    std::get<1>(row.param).Name;
                         });

TEST_P(RightsOf, AUserAreKeptToAndNothingIsOverwritten) {
    const auto& [file, rights] = GetParam();
    Put(file, file.Good);
    Set(PathOf(file), rights.File);
    const Sight before = See(file);
    Set(PathOf(file).parent_path(), rights.Folder);
    EXPECT_EQ(WithoutRights([load = file.Load] { return OutcomeOf(load).Error; }), rights.Error);
    Set(PathOf(file).parent_path(), 0700);
    EXPECT_TRUE(See(file) == before);
    EXPECT_EQ(Folder.ContentOf(file.Path), file.Good);
}

// Texts that have been looked at.
struct BrokenText {
    const char* Name;
    std::string Text;
    Outcome Expected;
    std::string Holds; // in memory, when it is read
};

void PrintTo(const BrokenText& row, std::ostream* out) { *out << row.Name; }

BrokenText Reads(const char* name, const std::string& text, const std::string& holds) {
    return {name, text, {}, holds};
}

BrokenText Fails(const char* name, const std::string& text, RunTimeError error) {
    return {name, text, {error, false, {}}, ""};
}

BrokenText Ends(const char* name, const std::string& text, const Texts& boxes) {
    return {name, text, {0, true, boxes}, ""};
}

// Shown, and read as far as it goes.
BrokenText Shows(const char* name, const std::string& text, const Texts& boxes,
                 const std::string& holds) {
    return {name, text, {0, false, boxes}, holds};
}

class BrokenTexts : public BrokenFile, public testing::WithParamInterface<BrokenText> {
protected:
    void ExpectOf(const KeptFile& file) {
        Put(file, GetParam().Text);
        EXPECT_EQ(Load(file), GetParam().Expected);
        EXPECT_NE(Memory().find(GetParam().Holds), std::string::npos)
            << GetParam().Holds.substr(0, 80);
    }
};

std::string Replaced(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

// As an editor of another system would keep it.
std::string Utf16(const std::string& text, bool bigEndian) {
    std::string wide = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text)
        wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return wide;
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

const std::string kByteOrderMark = "\xEF\xBB\xBF";
const std::string kHuge(10'000'000, 'x');
const std::string kHugeShown = std::string(4096, 'x') + "...";
const std::string kDigits(400, '9');
const std::string kNuls(1000, '\0');
// The memory of a list that was not read.
const std::string kNoGame = FormatMudList(DefaultMudList()) + "[Colours]";

class BrokenGames : public BrokenTexts {};

TEST_P(BrokenGames, EndAsStated) { ExpectOf(kGames); }

const BrokenText kBrokenGames[] = {
    Fails("Nothing", "", InputPastEnd),
    Reads("ALineEnd", "\r\n", kNoGame),
    Ends("LineEnds", "\r\n\r\n\r\n", {kGameMessage, ""}),
    Ends("LineFeeds", "\n\n\n", {kGameMessage, ""}),
    Reads("CarriageReturns", "\r\r\r\r", kNoGame),
    Reads("Nuls", kNuls, kNoGame),
    Ends("NulsAndLineEnds", kNuls + "\r\n" + kNuls, {kGameMessage, kNuls}),
    Reads("LineFeedsAlone", Replaced(kGames.Good, "\r\n", "\n"), "Mud=B\r\nAddy=a\r\nPort=4000"),
    Reads("CarriageReturnsAlone", Replaced(kGames.Good, "\r\n", "\r"), kNoGame),
    Reads("MixedLineEnds", Replaced(kGames.Good, "a\r\n", "a\n"), "Mud=B\r\nAddy=a\r\nPort=4000"),
    Fails("DoubledCarriageReturns", Replaced(kGames.Good, "\r\n", "\r\r\n"), TypeMismatch),
    Ends("AByteOrderMark", kByteOrderMark + kGames.Good, {kGameMessage, kByteOrderMark + "[Mud]"}),
    Ends("WideCharacters", Utf16(kGames.Good, false),
         {kGameMessage, FirstLine(Utf16(kGames.Good, false))}),
    Ends("WideCharactersTheOtherWay", Utf16(kGames.Good, true),
         {kGameMessage, FirstLine(Utf16(kGames.Good, true))}),
    Fails("APortOf400Digits", Game("A", kDigits), Overflow),
    Fails("ANegativePortOf400Digits", Game("A", "-" + kDigits), Overflow),
    Fails("AnExponentOf400Digits", Game("A", "1e" + kDigits), Overflow),
    Fails("APortOf400HexadecimalDigits", Game("A", "&H" + std::string(400, 'F')), Overflow),
    Reads("APortOf400Zeros", Game("A", std::string(400, '0') + "7") + "[End]\r\n", "Port=7\r\n"),
    Reads("APortAlmostZero", Game("A", "1e-400") + "[End]\r\n", "Port=0\r\n"),
    Reads("ANegativePort", Game("A", "-1") + "[End]\r\n", "Port=-1\r\n"),
    Reads("TheLeastPort", Game("A", "-32768") + "[End]\r\n", "Port=-32768\r\n"),
    Fails("APortBelowTheLeast", Game("A", "-32769"), Overflow),
    Fails("APortThatIsNoNumber", Game("A", "nan"), TypeMismatch),
    Fails("AnInfinitePort", Game("A", "inf"), TypeMismatch),
    Fails("APortWithAComma", Game("A", "1,5"), TypeMismatch),
    Fails("APortInTheManyCsWay", Game("A", "0x10"), TypeMismatch),
    Fails("TwoPorts", Game("A", "12 34"), TypeMismatch),
    Fails("TwoSigns", Game("A", "+-1"), TypeMismatch),
    Fails("ANulInAPort", Game("A", "1\0"s), TypeMismatch),
    Fails("ASwitchWithABlank", Game("A", "1", "True "), TypeMismatch),
    Fails("ASwitchOfAnotherLanguage", Game("A", "1", "Wahr"), TypeMismatch),
    Fails("ADoubledHeader", "[Mud]\r\n" + kGames.Good, TypeMismatch),
    Ends("NoHeader", kGames.Good.substr(7), {kGameMessage, "Mud=A"}),
    Ends("ABlankBeforeTheHeader", " " + kGames.Good, {kGameMessage, " [Mud]"}),
    Ends("AnUnknownSection", Game("A") + "[Sounds]\r\n[End]\r\n", {kGameMessage, "[Sounds]"}),
    Reads("TheEndFirst", "[End]\r\n" + kGames.Good, kNoGame),
    Reads("TwoEnds", kGames.Good + kGames.Good, "Mud=B\r\n"),
    Reads("AnEndOfAnOlderSystem", kGames.Good + "\x1A", "Mud=B\r\n"),
    Reads("TextBehindTheEnd", kGames.Good + kNuls + kHuge, "Mud=B\r\n"),
    Reads("ANameOfTenMegabytes", Game(kHuge) + "[End]\r\n", "Mud=" + kHuge + "\r\n"),
    Ends("ALineOfTenMegabytes", Game("A") + kHuge + "\r\n[End]\r\n", {kGameMessage, kHugeShown}),
    Ends("ALineThatIsShownWhole", std::string(4096, 'x') + "\r\n[End]\r\n",
         {kGameMessage, std::string(4096, 'x')}),
    Ends("ALineOfACharacterMore", std::string(4097, 'x') + "\r\n[End]\r\n",
         {kGameMessage, kHugeShown}),
    Fails("APortOfTenMegabytes", Game("A", kHuge), TypeMismatch),
    Reads("ANulInAName", Game("A\0B"s) + "[End]\r\n", "Mud=A\0B\r\n"s),
    Reads("EveryByteInAName", Game("\x01\x7F\x80\x81\xFF\t\x1B") + "[End]\r\n",
          "Mud=\x01\x7F\x80\x81\xFF\t\x1B\r\n"),
    Ends("AnotherFileOfOurs", kMacros.Good, {kGameMessage, "AltKey75=kill "}),
    Ends("AnotherProgramsFile", "{\n  \"players\": []\n}\n", {kGameMessage, "{"}),
    Ends("AWebPage", "<!DOCTYPE html>\n<html></html>\n", {kGameMessage, "<!DOCTYPE html>"}),
};

INSTANTIATE_TEST_SUITE_P(Broken, BrokenGames, testing::ValuesIn(kBrokenGames),
                         [](const auto& row) { return row.param.Name; });

class BrokenConfigurations : public BrokenTexts {};

TEST_P(BrokenConfigurations, EndAsStated) { ExpectOf(kConfiguration); }

const std::string kNoColour = "MwBRed=&HFF\r\n"; // the memory of a configuration that was not read

const BrokenText kBrokenConfigurations[] = {
    Fails("Nothing", "", InputPastEnd),
    Reads("ALineEnd", "\r\n", kNoColour),
    Shows("LineEnds", "\r\n\r\n\r\n", {kColourMessage, ""}, kNoColour),
    Reads("CarriageReturns", "\r\r\r\r", kNoColour),
    Reads("Nuls", kNuls, kNoColour),
    Shows("NulsAndLineEnds", kNuls + "\r\n" + kNuls, {kColourMessage, kNuls}, kNoColour),
    Reads("LineFeedsAlone", Replaced(kConfiguration.Good, "\r\n", "\n"), "MwBRed=&H1\r\n"),
    Reads("CarriageReturnsAlone", Replaced(kConfiguration.Good, "\r\n", "\r"), kNoColour),
    Reads("MixedLineEnds", Replaced(kConfiguration.Good, "]\r\n", "]\n"), "Esc=:\r\n"),
    Shows("AByteOrderMark", kByteOrderMark + kConfiguration.Good,
          {kColourMessage, kByteOrderMark + "[Colours]"}, kNoColour),
    Shows("WideCharacters", Utf16(kConfiguration.Good, false),
          {kColourMessage, FirstLine(Utf16(kConfiguration.Good, false))}, kNoColour),
    Shows("WideCharactersTheOtherWay", Utf16(kConfiguration.Good, true),
          {kColourMessage, FirstLine(Utf16(kConfiguration.Good, true))}, kNoColour),
    Fails("AColourOf400Digits", Colour(kDigits), Overflow),
    Fails("AColourOf400HexadecimalDigits", Colour("&H" + std::string(400, '0')), Overflow),
    Fails("AnExponentOf400Digits", Colour("1e" + kDigits), Overflow),
    Reads("ANegativeColour", Colour("-1"), "MwBRed=&HFFFFFFFF\r\n"),
    Reads("TheLeastColour", Colour("-2147483648"), "MwBRed=&H80000000\r\n"),
    Fails("AColourBelowTheLeast", Colour("-2147483649"), Overflow),
    Fails("AColourAboveTheGreatest", Colour("2147483648"), Overflow),
    Fails("ANulInAColour", Colour("&HFF\0"s), TypeMismatch),
    Fails("NoColour", Colour(""), TypeMismatch),
    Fails("AColourForTheWeb", Colour("#FF0000"), TypeMismatch),
    Fails("AColourOfTenMegabytes", Colour(kHuge), TypeMismatch),
    Reads("DoubledSections",
          "[Config]\r\nEsc=1\r\n[Colours]\r\n[Config]\r\nEsc=2\r\n[Colours]\r\n[END]\r\n",
          "Esc=2\r\n"),
    Reads("AThousandSections", Replaced(std::string(1000, 's'), "s", "[Config]\r\n") + "[END]\r\n",
          kNoColour),
    Shows("AnUnknownSection", "[Config]\r\nEsc=!\r\n[Sounds]\r\nx\r\n[END]\r\n",
          {kColourMessage, "[Sounds]"}, "Esc=!\r\n"),
    Shows("AnUnknownSectionOfTenMegabytes", "[" + kHuge + "\r\n[END]\r\n",
          {kColourMessage, "[" + kHugeShown.substr(1)}, kNoColour),
    Ends("AnUnknownColour", "[Colours]\r\nMwPink=&H1\r\n[END]\r\n", {kColourMessage, "MwPink=&H1"}),
    Ends("AnUnknownColourOfTenMegabytes", "[Colours]\r\n" + kHuge + "\r\n[END]\r\n",
         {kColourMessage, kHugeShown}),
    Ends("AnEmptyLineAmongColours", "[Colours]\r\n\r\n[END]\r\n", {kColourMessage, ""}),
    Ends("NulsAmongColours", "[Colours]\r\n" + kNuls + "\r\n[END]\r\n", {kColourMessage, kNuls}),
    Ends("AnUnknownSetting", "[Config]\r\nColour=1\r\n[END]\r\n", {kConfigMessage, "Colour=1"}),
    Ends("AnUnknownSettingOfTenMegabytes", "[Config]\r\n" + kHuge + "\r\n[END]\r\n",
         {kConfigMessage, kHugeShown}),
    Ends("ASettingAmongColours", "[Colours]\r\nEsc=;\r\n[END]\r\n", {kColourMessage, "Esc=;"}),
    Reads("AnEscapeOfTenMegabytes", "[Config]\r\nEsc=" + kHuge + "\r\n[END]\r\n",
          "Esc=" + kHuge + "\r\n"),
    Reads("ANulForAnEscape", "[Config]\r\nEsc=\0\r\n[END]\r\n"s, "Esc=\0\r\n"s),
    Reads("ASetOfTenMegabytes", "[Macros]\r\n" + kHuge + "\r\n[END]\r\n", "\r\n" + kHuge + "\r\n"),
    Reads("EmptySets", "[Macros]\r\n\r\n\r\n\r\n[END]\r\n", "[Macros]\r\n\r\n\r\n\r\n[END]\r\n"),
    Reads("ASetThatLeadsElsewhere", "[Macros]\r\n../../x\r\n[END]\r\n", "\r\n../../x\r\n"),
    Fails("TooManySets",
          "[Macros]\r\n" + Replaced(std::string(32769, 's'), "s", "s\r\n") + "[END]\r\n", Overflow),
    Fails("NoEnd", "[Config]\r\nEsc=;\r\n[Macros]\r\nDefault\r\n", InputPastEnd),
    Reads("TheEndFirst", "[END]\r\n" + kConfiguration.Good, kNoColour),
    Reads("TextBehindTheEnd", kConfiguration.Good + kNuls + kHuge, "MwBRed=&H1\r\n"),
    Shows("AnotherFileOfOurs", kGames.Good, {kColourMessage, "[Mud]"}, kNoColour),
    Shows("AnotherProgramsFile", "{\n  \"players\": []\n}\n", {kColourMessage, "{"}, kNoColour),
};

INSTANTIATE_TEST_SUITE_P(Broken, BrokenConfigurations, testing::ValuesIn(kBrokenConfigurations),
                         [](const auto& row) { return row.param.Name; });

class BrokenMacros : public BrokenTexts {};

TEST_P(BrokenMacros, EndAsStated) { ExpectOf(kMacros); }

Texts SetBoxes(const std::string& line) {
    return {kSetMessage, "Macroset Default", "Curreadline " + line};
}

Texts KeyBoxes(const std::string& code, const std::string& line) {
    return {kKeyMessage, "GetArrayPoint " + code, "Error Point \r\n" + line + "\r\n"};
}

const std::string kNoMacro = "Default\r\n[END]\r\n[End]\r\n"; // the memory of a set that is empty

const BrokenText kBrokenMacros[] = {
    Fails("Nothing", "", InputPastEnd),
    Reads("ALineEnd", "\r\n", kNoMacro),
    Ends("LineEnds", "\r\n\r\n\r\n", SetBoxes("")),
    Reads("CarriageReturns", "\r\r\r\r", kNoMacro),
    Reads("Nuls", kNuls, kNoMacro),
    Ends("NulsAndLineEnds", kNuls + "\r\n" + kNuls, SetBoxes(kNuls)),
    Reads("LineFeedsAlone", Replaced(kMacros.Good, "\r\n", "\n"), "NormKey112=look\r\n"),
    Reads("CarriageReturnsAlone", Replaced(kMacros.Good, "\r\n", "\r"), kNoMacro),
    Reads("MixedLineEnds", Replaced(kMacros.Good, "k\r\n", "k\n"), "NormKey112=look\r\n"),
    Ends("AByteOrderMark", kByteOrderMark + kMacros.Good,
         SetBoxes(kByteOrderMark + "AltKey75=kill ")),
    Ends("WideCharacters", Utf16(kMacros.Good, false),
         SetBoxes(FirstLine(Utf16(kMacros.Good, false)))),
    Ends("WideCharactersTheOtherWay", Utf16(kMacros.Good, true),
         SetBoxes(FirstLine(Utf16(kMacros.Good, true)))),
    Fails("AKeyOf400Digits", "NormKey" + kDigits + "=x\r\n[End]\r\n", Overflow),
    Fails("ANegativeKey", "NormKey-1=x\r\n[End]\r\n", SubscriptOutOfRange),
    Fails("AKeyAboveTheTable", "NormKey256=x\r\n[End]\r\n", SubscriptOutOfRange),
    Reads("AKeyOf400Zeros", "NormKey" + std::string(400, '0') + "9=x\r\n[End]\r\n",
          "NormKey9=x\r\n"),
    Ends("AKeyOfLetters", "NormKeyF1=x\r\n[End]\r\n", KeyBoxes("F1", "NormKeyF1=x")),
    Ends("ANulForAKey", "NormKey\0=x\r\n[End]\r\n"s, KeyBoxes("\0"s, "NormKey\0=x"s)),
    Ends("AKeyOfTenMegabytes", "NormKey" + kHuge + "=x\r\n[End]\r\n",
         KeyBoxes(kHugeShown, "NormKey" + kHugeShown.substr(7))),
    Reads("AKeysTextOfTenMegabytes", "NormKey9=" + kHuge + "\r\n[End]\r\n",
          "NormKey9=" + kHuge + "\r\n"),
    Fails("AnIndexOf400Digits", Alias(kDigits), Overflow),
    Fails("ANegativeIndex", Alias("-1"), SubscriptOutOfRange),
    Fails("AnIndexAboveTheTable", Alias("32768"), Overflow),
    Reads("TheGreatestIndex", Alias("32767"), "Value=32767\r\nAlias=gt\r\n"),
    Shows("AnIndexOfLetters", Alias("first"), {kValueMessage, "Value=first", "first"},
          "Value=0\r\nAlias=gt\r\n"),
    Shows("AnIndexOfTenMegabytes", Alias(kHuge),
          {kValueMessage, "Value=" + kHugeShown.substr(6), kHugeShown}, "Value=0\r\nAlias=gt\r\n"),
    Shows("ANulForAnIndex", Alias("\0"s), {kValueMessage, "Value=\0"s, "\0"s},
          "Value=0\r\nAlias=gt\r\n"),
    Fails("ASwitchOfLetters", Alias("0", "maybe"), TypeMismatch),
    Fails("ASwitchOf400Letters", Alias("0", std::string(400, 'T')), TypeMismatch),
    Reads("ASwitchOf400Digits", Alias("0", kDigits), "IsEnabled=True\r\n"),
    Reads("DoubledEntries", Replaced(Alias("0"), "[End]\r\n", "") + Replaced(Alias("0"), "gt", "g"),
          "Value=0\r\nAlias=g\r\n"),
    Ends(
        "ADoubledHeader",
        "[Alias]\r\n[Alias]\r\nValue=0\r\nAlias=x\r\nReplace=0\r\nTrue\r\n[End]\r\n",
        {kValueMessage, "[Alias]", "[Alias]", kSetMessage, "Macroset Default", "Curreadline True"}),
    Ends("AnUnknownSection", "[Macros]\r\n[End]\r\n", SetBoxes("[Macros]")),
    Ends("ALineOfTenMegabytes", kHuge + "\r\n[End]\r\n", SetBoxes(kHugeShown)),
    Fails("AReactionWithoutEnd", "[Trigger]\r\nValue=0\r\nTrigger=t\r\n" + kHuge + "\r\n[End]\r\n",
          InputPastEnd),
    Reads("AReactionOfTenMegabytes",
          "[Trigger]\r\nValue=0\r\nTrigger=t\r\n" + kHuge + "\r\n~\r\n[End]\r\n", "Trigger=t\r\n"),
    Fails("NoEnd", "NormKey9=x\r\n[Alias]\r\nValue=0\r\nAlias=x\r\nReplace=y\r\nIsEnabled=0\r\n",
          InputPastEnd),
    Reads("TheEndFirst", "[End]\r\n" + kMacros.Good, kNoMacro),
    Reads("TextBehindTheEnd", kMacros.Good + kNuls + kHuge, "NormKey112=look\r\n"),
    Reads("EveryByteInAText", "NormKey9=\x01\x7F\x80\x81\xFF\t\x1B\r\n[End]\r\n",
          "NormKey9=\x01\x7F\x80\x81\xFF\t\x1B\r\n"),
    Ends("AnotherFileOfOurs", kGames.Good, SetBoxes("[Mud]")),
    Ends("AnotherProgramsFile", "{\n  \"players\": []\n}\n", SetBoxes("{")),
};

INSTANTIATE_TEST_SUITE_P(Broken, BrokenMacros, testing::ValuesIn(kBrokenMacros),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace mw
