#include "sound/PlaySound.h"

#include "base/Error.h"
#include "base/Notice.h"
#include "config/FreshFolder.h"
#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "net/http/DownLoad.h"
#include "sound/SoundTrigger.h"
#include "support/ErrorOf.h"
#include "terminal/IncomingBuffer.h"

#include <algorithm>
#include <ostream>

namespace mw {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;
using namespace std::string_literals;

const std::string kAddress = "http://h/rain.wav";

class Playing : public RuleTest {
protected:
    Playing() {
        ResetPlaySound();
        MudList = {{"Home", "h", 1, true, true, true, true},
                   {"Realm", "r", 2, true, true, true, true}};
        CurrentMud = 1;
        MakeGameFolders("Realm");
        fakes::Calls.clear();
    }

    ~Playing() override {
        ResetDownloads();
        ResetPlaySound();
    }

    static MudEntry& Game() { return MudList.at(static_cast<std::size_t>(CurrentMud)); }

    // Makes sounds of the game Realm.
    void Keep(std::initializer_list<const char*> names) const {
        for (const char* const name : names)
            Folder.MakeFile(fs::path("Realm/sounds") / name);
    }

    fs::path SoundFile(const std::string& name) const {
        return Folder.Path / "Realm" / "sounds" / name;
    }

    static Texts Requested() {
        Texts addresses;
        for (const auto& [number, transfer] : fakes::Transfers)
            addresses.push_back(transfer.Request.Address);
        return addresses;
    }

    // The file that was asked for first arrives whole.
    static void Arrive(const std::string& content) {
        auto& [number, transfer] = *fakes::Transfers.begin();
        transfer.Header =
            "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(content.size()) + "\r\n\r\n";
        transfer.Body = content;
        transfer.Ended = true;
        inet_StateChanged(number);
    }

    static bool NothingHappened() { return fakes::Calls.empty() && fakes::Transfers.empty(); }

    FreshFolder Folder;
};

Texts WavePlayed(const std::string& name, const std::string& volume) {
    return {"wave URL " + name, "Stop wave", "wave volume " + volume, "wave play"};
}

Texts MusicPlayed(const std::string& name, const std::string& volume) {
    return {"Stop music", "music FileName " + name, "music volume " + volume, "music play"};
}

// Waves and music are alike in what follows.
struct Kind {
    const char* Name;
    void (*Play)(const std::string&, const std::string&, std::int32_t, std::int16_t);
    mw::PlayState* State;
    const char* PlayCall;
    fs::path* File;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.Name; }

const Kind kKinds[] = {
    {"Waves", PlayWave, &fakes::WaveState, "wave play", &fakes::WaveFile},
    {"Music", PlayMusic, &fakes::MusicState, "music play", &fakes::MusicFile},
};

class PlayingEither : public Playing, public testing::WithParamInterface<Kind> {
protected:
    static void Ask(const std::string& name, const std::string& address = "",
                    std::int16_t priority = 0) {
        GetParam().Play(name, address, 0, priority);
    }

    static bool IsPlayed() { return fakes::CallsOf(GetParam().PlayCall) == 1; }
};

INSTANTIATE_TEST_SUITE_P(Kinds, PlayingEither, testing::ValuesIn(kKinds),
                         [](const auto& row) { return row.param.Name; });

TEST_P(PlayingEither, TakesTheSoundOfTheCurrentGame) {
    Keep({"rain.wav"});
    Ask("rain.wav");
    EXPECT_TRUE(IsPlayed());
    EXPECT_EQ(*GetParam().File, SoundFile("rain.wav"));
}

TEST_P(PlayingEither, LeavesTheSoundsOfOtherGamesAlone) {
    MakeGameFolders("Home");
    Folder.MakeFile("Home/sounds/rain.wav");
    Folder.MakeFile("rain.wav");
    Folder.MakeFile("Realm/rain.wav");
    Ask("rain.wav");
    EXPECT_TRUE(NothingHappened());
}

TEST_P(PlayingEither, IsOffWithoutTheSwitchOfTheWavesWhateverTheOthersSayOnPurpose) {
    Keep({"rain.wav"});
    for (int others = 0; others < 8; ++others) {
        Game() = {"Realm", "r", 2, (others & 1) != 0, false, (others & 2) != 0, (others & 4) != 0};
        Ask("rain.wav");
        Ask("gone.wav", "http://h/gone.wav");
        EXPECT_TRUE(NothingHappened()) << others;
        EXPECT_EQ(LastRequestedDownload, "");
    }
}

TEST_P(PlayingEither, IsOnWithTheSwitchOfTheWavesWhateverTheOthersSayOnPurpose) {
    Keep({"rain.wav"});
    for (int others = 0; others < 8; ++others) {
        Game() = {"Realm", "r", 2, (others & 1) != 0, true, (others & 2) != 0, (others & 4) != 0};
        fakes::Calls.clear();
        Ask("rain.wav");
        EXPECT_TRUE(IsPlayed()) << others;
    }
}

TEST_P(PlayingEither, RaisesSubscriptOutOfRangeWithoutACurrentGame) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{2}}) {
        CurrentMud = index;
        EXPECT_EQ(ErrorOf([] { Ask("rain.wav"); }), SubscriptOutOfRange);
    }
    EXPECT_TRUE(NothingHappened());
}

TEST_P(PlayingEither, AtNegativePriorityPlaysAtOnce) {
    Keep({"rain.wav"});
    *GetParam().State = PlayState::Playing;
    for (const std::int16_t priority : {std::int16_t{-1}, std::int16_t{-32768}}) {
        fakes::Calls.clear();
        Ask("rain.wav", "", priority);
        EXPECT_TRUE(IsPlayed()) << priority;
    }
    EXPECT_TRUE(cboWavPlayer.empty());
}

TEST_P(PlayingEither, AtAnyOtherPriorityGivesWayToWhatPlays) {
    Keep({"rain.wav"});
    *GetParam().State = PlayState::Playing;
    for (const std::int16_t priority :
         {std::int16_t{0}, std::int16_t{1}, std::int16_t{50}, std::int16_t{32767}}) {
        Ask("rain.wav", "", priority);
        EXPECT_FALSE(IsPlayed()) << priority;
    }
    EXPECT_EQ(PlayingPriority, 0);
}

TEST_P(PlayingEither, NeverChangesThePriorityOfWhatPlaysOnPurpose) {
    Keep({"rain.wav"});
    Ask("rain.wav", "", 99);
    EXPECT_TRUE(IsPlayed());
    EXPECT_EQ(PlayingPriority, 0);
}

TEST_P(PlayingEither, AtPriorityZeroCountsAsFifty) {
    Keep({"rain.wav"});
    *GetParam().State = PlayState::Playing;
    PlayingPriority = 50;
    Ask("rain.wav");
    EXPECT_FALSE(IsPlayed());
    PlayingPriority = 51;
    Ask("rain.wav");
    EXPECT_TRUE(IsPlayed());
}

// Missing files.

TEST_P(PlayingEither, FetchesAMissingFileAndDoesNotPlayIt) {
    Ask("rain.wav", kAddress);
    EXPECT_FALSE(IsPlayed());
    EXPECT_EQ(Requested(), Texts{kAddress});
    EXPECT_EQ(LastRequestedDownload, kAddress);
}

TEST_P(PlayingEither, PlaysAFetchedFileTheNextTime) {
    Ask("rain.wav", kAddress);
    Arrive("abc");
    EXPECT_EQ(Folder.ContentOf("Realm/sounds/rain.wav"), "abc");
    EXPECT_FALSE(IsPlayed());
    Ask("rain.wav", kAddress);
    EXPECT_TRUE(IsPlayed());
    EXPECT_EQ(Requested(), Texts{});
}

TEST_P(PlayingEither, FetchesNothingThatIsThere) {
    Keep({"rain.wav"});
    Ask("rain.wav", kAddress);
    EXPECT_TRUE(IsPlayed());
    EXPECT_EQ(Requested(), Texts{});
    EXPECT_EQ(LastRequestedDownload, "");
}

TEST_P(PlayingEither, FetchesNothingWithoutAnAddress) {
    Ask("rain.wav");
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "");
}

TEST_P(PlayingEither, FetchesNothingFromABareExtension) {
    Ask("rain.wav", ".wav");
    Ask("rain.mid", ".mid");
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "");
}

TEST_P(PlayingEither, FetchesNothingWhenTheGamesDownloadsAreOff) {
    Game().SndD = false;
    Ask("rain.wav", kAddress);
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "");
}

TEST_P(PlayingEither, FetchesWhileSomethingPlays) {
    *GetParam().State = PlayState::Playing;
    Ask("rain.wav", kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
    EXPECT_TRUE(cboWavPlayer.empty());
}

TEST_P(PlayingEither, FetchesUnderTheNameInTheAddress) {
    Ask("rain.wav", "http://h/a/b/storm.wav");
    Arrive("x");
    EXPECT_EQ(Folder.ContentOf("Realm/sounds/storm.wav"), "x");
    EXPECT_FALSE(fs::exists(SoundFile("rain.wav")));
}

TEST_P(PlayingEither, RemembersTheAddressThatWasRequestedLast) {
    Ask("a.wav", "http://h/a.wav");
    Ask("b.wav", "http://h/b.wav");
    Keep({"c.wav"});
    Ask("c.wav", "http://h/c.wav");
    EXPECT_EQ(LastRequestedDownload, "http://h/b.wav");
}

TEST_P(PlayingEither, CountsAFolderAsMissing) {
    fs::create_directory(SoundFile("rain.wav"));
    Ask("rain.wav");
    EXPECT_TRUE(NothingHappened());
}

TEST_P(PlayingEither, FetchesNothingIntoAFolderThatAnotherClientHas) {
    FolderIsTaken = true;
    Ask("rain.wav", kAddress);
    EXPECT_TRUE(NothingHappened());
    Keep({"rain.wav"});
    Ask("rain.wav", kAddress);
    EXPECT_TRUE(IsPlayed()); // reading is allowed
}

TEST_P(PlayingEither, OpensTenWindowsForTenMissingFilesAndTakesSlot0Again) {
    for (int i = 0; i < 10; ++i)
        Ask("gone.wav", "http://h/" + std::to_string(i) + ".wav");
    std::int16_t slot = 0;
    for (const DownloadSlot& row : DownloadTable) {
        const std::string window = std::to_string(row.Download) + " " + std::to_string(slot) + " ";
        EXPECT_EQ(fakes::CallsOf("OpenDownloadWindow " + window + std::to_string(slot) + ".wav"),
                  1);
        ++slot;
    }
    EXPECT_EQ(slot, 10);
    for (const DownloadSlot& row : std::vector<DownloadSlot>(DownloadTable)) {
        fakes::Transfers.at(row.Download).Header = "HTTP/1.1 200 OK\r\n\r\n";
        inet_StateChanged(row.Download);
        frmDownload_Unload(row.Download); // its window closes
    }
    Ask("gone.wav", kAddress);
    EXPECT_EQ(DownloadTable.size(), 1u);
    EXPECT_EQ(DownloadTable[0].Busy, 1);
}

// Names that lead elsewhere.

struct BadName {
    const char* Name;
    std::string Text;
};

const BadName kBadNames[] = {
    {"Nothing", ""},
    {"Dot", "."},
    {"TwoDots", ".."},
    {"Up", "../away.wav"},
    {"UpByABackslash", "..\\away.wav"},
    {"UpTwice", "../../away.wav"},
    {"UpInside", "weather/../rain.wav"},
    {"UpInsideByBackslashes", "weather\\..\\rain.wav"},
    {"UpOutOfAFolder", "weather/../../away.wav"},
    {"IntoAnotherGame", "../../Home/sounds/rain.wav"},
    {"IntoTheClientsData", "../../Data/client.cfg"},
    {"HereInFront", "./rain.wav"},
    {"HereInside", "weather/./rain.wav"},
    {"AnAbsolutePath", "/etc/hostname"},
    {"ASlashInFront", "/rain.wav"},
    {"ABackslashInFront", "\\rain.wav"},
    {"AServersShare", "\\\\server\\share\\rain.wav"},
    {"ADrive", "C:rain.wav"},
    {"ADrivesPath", "C:\\rain.wav"},
    {"AStream", "rain.wav:x.wav"},
    {"TwoSlashes", "weather//rain.wav"},
    {"ASlashBehind", "rain.wav/"},
    {"ABackslashBehind", "rain.wav\\"},
    {"ALineFeed", "ra\nin.wav"},
    {"ACarriageReturn", "rain.wav\r"},
    {"ANul", "rain.wav\0"s},
    {"AnEsc", "\x1b.wav"},
    {"FarTooLong", std::string(5000, 'x')},
};

class BadSoundName : public Playing, public testing::WithParamInterface<BadName> {};

TEST_P(BadSoundName, IsNeitherPlayedNorFetched) {
    MakeGameFolders("Home");
    fs::create_directory(SoundFile("weather"));
    fs::create_directory(Folder.Path / "Data");
    Keep({"rain.wav", "weather/rain.wav", "ra\nin.wav", "rain.wav\r", "\x1b.wav", "C:rain.wav"});
    for (const char* const away :
         {"away.wav", "Realm/away.wav", "Home/sounds/rain.wav", "Data/client.cfg"})
        Folder.MakeFile(away);
    PlayWave(GetParam().Text, kAddress, 0, 0);
    PlayMusic(GetParam().Text, kAddress, 0, 0);
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "");
}

INSTANTIATE_TEST_SUITE_P(Names, BadSoundName, testing::ValuesIn(kBadNames),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Playing, FindsSoundsInFoldersBelow) {
    fs::create_directory(SoundFile("weather"));
    Keep({"weather/rain.wav"});
    PlayWave("weather/rain.wav", "", 0, 0);
    EXPECT_EQ(fakes::WaveFile, SoundFile("weather/rain.wav"));
    fakes::WaveFile.clear();
    PlayWave("weather\\rain.wav", "", 0, 0);
    EXPECT_EQ(fakes::WaveFile, SoundFile("weather/rain.wav"));
}

TEST_F(Playing, FindsSoundsByNamesOfTheClientsCodePage) {
    Keep({"caf\xc3\xa9.wav"}); // in UTF-8, as the disk has it
    PlayWave("caf\xe9.wav", "", 0, 0);
    EXPECT_EQ(fakes::WaveFile, SoundFile("caf\xc3\xa9.wav"));
}

TEST_F(Playing, TellsSoundsByCase) {
    Keep({"rain.wav"});
    PlayWave("Rain.wav", "", 0, 0);
    EXPECT_TRUE(NothingHappened());
}

// Games without a folder of their own.

const BadName kBadGames[] = {
    {"Nothing", ""},
    {"Dot", "."},
    {"TwoDots", ".."},
    {"ABlank", " "},
    {"TheClientsData", "Data"},
    {"TheClientsMacros", "Macros"},
    {"ASlash", "Realm/inner"},
    {"ABackslash", "Realm\\inner"},
    {"Up", "../Realm"},
    {"AnAbsolutePath", "/Realm"},
    {"ADrive", "C:"},
    {"ALineFeed", "Re\nalm"},
    {"FarTooLong", std::string(300, 'x')},
};

class BadGameName : public Playing, public testing::WithParamInterface<BadName> {};

TEST_P(BadGameName, HasNoSoundsAndFetchesNone) {
    for (const char* const below : {"sounds", " /sounds", "Data/sounds", "Macros/sounds",
                                    "Realm/inner/sounds", "C:/sounds", "Re\nalm/sounds"}) {
        fs::create_directories(Folder.Path / below);
        Folder.MakeFile(fs::path(below) / "rain.wav");
    }
    Game().Name = GetParam().Text;
    for (const auto play : {PlayWave, PlayMusic}) {
        play("rain.wav", kAddress, 0, 0);
        play("gone.wav", kAddress, 0, 0);
    }
    FetchSound(kAddress);
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "");
}

INSTANTIATE_TEST_SUITE_P(Names, BadGameName, testing::ValuesIn(kBadGames),
                         [](const auto& row) { return row.param.Name; });

// Addresses.

struct Address {
    const char* Name;
    std::string Text;
    bool IsOne;
};

void PrintTo(const Address& address, std::ostream* out) { *out << address.Text; }

const Address kAddresses[] = {
    {"Http", "http://h/rain.wav", true},
    {"Https", "https://h/rain.wav", true},
    {"SchemeInCapitals", "HTTP://h/rain.wav", true},
    {"SchemeInBothCases", "hTtPs://h/rain.wav", true},
    {"Port", "http://h:8080/rain.wav", true},
    {"Folders", "http://h/a/b/rain.wav", true},
    {"Nothing", "", false},
    {"BareExtension", ".wav", false},
    {"BareName", "rain.wav", false},
    {"NoScheme", "h/rain.wav", false},
    {"NoSchemeButSlashes", "//h/rain.wav", false},
    {"EmptyScheme", "://h/rain.wav", false},
    {"NoColon", "http//h/rain.wav", false},
    {"OneSlash", "http:/h/rain.wav", false},
    {"SchemeAlone", "http://", false},
    {"NoHost", "http:///rain.wav", false},
    {"NothingBehindTheHost", "http://h", false},
    {"HostWithTheExtension", "http://h.wav", false},
    {"Ftp", "ftp://h/rain.wav", false},
    {"File", "file:///etc/rain.wav", false},
    {"FileOnAHost", "file://h/rain.wav", false},
    {"LongerScheme", "httpx://h/rain.wav", false},
    {"ShorterScheme", "htt://h/rain.wav", false},
    {"BlankInFront", " http://h/rain.wav", false},
    {"SchemeFurtherBack", "x http://h/rain.wav", false},
    {"Javascript", "javascript:http://h/rain.wav", false},
    {"OnlyAPort", "http://:80/rain.wav", false},
    {"OnlyAQuestion", "http://?a/rain.wav", false},
    {"OnlyAUser", "http://me@/rain.wav", false},
};

class SoundAddress : public Playing, public testing::WithParamInterface<Address> {};

TEST_P(SoundAddress, IsOneOfTheWebOrNone) {
    EXPECT_EQ(IsWebAddress(GetParam().Text), GetParam().IsOne);
}

TEST_P(SoundAddress, IsFetchedFromOrNot) {
    PlayWave("gone.wav", GetParam().Text, 0, 0);
    EXPECT_EQ(Requested(), GetParam().IsOne ? Texts{GetParam().Text} : Texts{});
    EXPECT_EQ(LastRequestedDownload, GetParam().IsOne ? GetParam().Text : "");
}

INSTANTIATE_TEST_SUITE_P(Addresses, SoundAddress, testing::ValuesIn(kAddresses),
                         [](const auto& row) { return row.param.Name; });

struct Fetched {
    const char* Name;
    std::string Address;
    std::string File; // below the game's sounds; empty when nothing is fetched
};

void PrintTo(const Fetched& fetched, std::ostream* out) { *out << fetched.Address; }

const Fetched kFetched[] = {
    {"TheNameBehindTheLastSlash", "http://h/a/b/rain.wav", "rain.wav"},
    {"WithoutASlashTheWholeText", "rain.wav", "rain.wav"},
    {"AQuestionIsPartOfTheName", "http://h/rain.wav?v2", "rain.wav?v2"},
    {"PercentsStay", "http://h/%2e%2e%2fx.wav", "%2e%2e%2fx.wav"},
    {"FoldersUpInThePathMatterToTheServerAlone", "http://h/../../rain.wav", "rain.wav"},
    {"ABareExtension", "http://h/.wav", ".wav"},
    {"NoName", "http://h/a/", ""},
    {"Nothing", "", ""},
    {"Dot", "http://h/.", ""},
    {"TwoDots", "http://h/..", ""},
    {"ABackslash", "http://h/a\\rain.wav", ""},
    {"UpByABackslash", "http://h/..\\rain.wav", ""},
    {"ADrive", "http://h/C:rain.wav", ""},
    {"AControlCharacter", "http://h/ra\nin.wav", ""},
    {"ANul", "http://h/rain\0.wav"s, ""},
    {"ALongName", "http://h/" + std::string(300, 'x'), ""},
};

class FetchedSound : public Playing, public testing::WithParamInterface<Fetched> {};

TEST_P(FetchedSound, HasTheNameOfItsAddress) {
    FetchSound(GetParam().Address);
    ASSERT_EQ(fakes::Transfers.size(), GetParam().File.empty() ? 0u : 1u);
    if (GetParam().File.empty()) {
        EXPECT_TRUE(fakes::Calls.empty());
        return;
    }
    EXPECT_EQ(Requested(), Texts{GetParam().Address});
    Arrive("x");
    EXPECT_EQ(Folder.ContentOf(fs::path("Realm/sounds") / GetParam().File), "x");
}

INSTANTIATE_TEST_SUITE_P(Names, FetchedSound, testing::ValuesIn(kFetched),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Playing, RemembersAnAddressWhoseNameIsRefused) {
    PlayWave("rain.wav", "http://h/..", 0, 0);
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(LastRequestedDownload, "http://h/..");
}

TEST_F(Playing, FetchesIntoAGameWhoseSoundsFolderIsGone) {
    fs::remove(Folder.Path / "Realm" / "sounds");
    FetchSound(kAddress);
    Arrive("x");
    EXPECT_EQ(Folder.ContentOf("Realm/sounds/rain.wav"), "x");
}

TEST_F(Playing, FetchesInSpiteOfTheSwitchesWhenItIsAskedTo) {
    Game() = {"Realm", "r", 2, false, false, false, false};
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
}

TEST_F(Playing, FetchesNothingItIsAskedForIntoAFolderThatAnotherClientHas) {
    FolderIsTaken = true;
    FetchSound(kAddress);
    EXPECT_TRUE(NothingHappened());
}

// How much a game may have.

class FullGame : public Playing {
protected:
    // Makes a sound that large.
    void Keep(const std::string& name, std::uintmax_t bytes) const {
        Folder.MakeFile(fs::path("Realm/sounds") / name);
        fs::resize_file(SoundFile(name), bytes);
    }

    static constexpr const char* kNotice =
        "Not downloaded, because the game has too many sounds already: http://h/rain.wav";
};

TEST_F(FullGame, IsOneWithAThousandSounds) {
    for (int i = 1; i < 1000; ++i)
        Folder.MakeFile("Realm/sounds/" + std::to_string(i) + ".wav");
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
    EXPECT_EQ(Notice, "");
    Folder.MakeFile("Realm/sounds/1000.wav");
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
    EXPECT_EQ(Notice, kNotice);
}

TEST_F(FullGame, IsOneWithHalfAGibibyteOfThem) {
    Keep("a.wav", kLargestSounds - 2);
    Keep("b.wav", 1);
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
    Keep("b.wav", 2);
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
    EXPECT_EQ(Notice, kNotice);
}

TEST_F(FullGame, PlaysWhatItHasAndFillsNoOther) {
    Keep("a.wav", kLargestSounds);
    PlayWave("gone.wav", kAddress, 0, 0);
    EXPECT_TRUE(fakes::Transfers.empty());
    PlayWave("a.wav", "", 0, 0);
    EXPECT_EQ(fakes::WaveFile, SoundFile("a.wav"));
    CurrentMud = 0;
    MakeGameFolders("Home");
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
}

TEST_F(FullGame, IsNotLookedIntoAgain) {
    Keep("a.wav", kLargestSounds);
    FetchSound(kAddress);
    Keep("a.wav", 0);
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{});
    ResetPlaySound(); // as a new start of the client
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
}

TEST_F(FullGame, IsNotLookedForWhileTooManyAreUnderWay) {
    for (std::size_t i = 0; i < kMostDownloads; ++i)
        FetchSound("http://h/" + std::to_string(i) + ".wav");
    Keep("a.wav", kLargestSounds);
    FetchSound(kAddress);
    EXPECT_EQ(Notice, "Not downloaded, because too many are under way: " + kAddress);
    EXPECT_EQ(FullFolder, "");
}

// What a client that was killed has left of its downloads.

class LeftParts : public Playing {
protected:
    LeftParts() { Keep({"old.wav.1.part", "storm.mid.27.part", "thunder.wav"}); }

    Texts Sounds() const {
        Texts names;
        for (const auto& file : fs::directory_iterator(SoundFile("")))
            names.push_back(file.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    // The part of a download into the current game that is under way.
    fs::path PartUnderWay() const {
        FetchSound(kAddress);
        auto& [number, transfer] = *fakes::Transfers.rbegin();
        transfer.Header = "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n";
        inet_StateChanged(number);
        return SoundFile("rain.wav." + std::to_string(number) + ".part");
    }
};

TEST_F(LeftParts, GoBeforeTheFirstFetchOfTheirGame) {
    EXPECT_EQ(Sounds().size(), 3u);
    FetchSound(kAddress);
    EXPECT_EQ(Sounds(), Texts{"thunder.wav"});
}

TEST_F(LeftParts, GoThoughTheGameIsFull) {
    fs::resize_file(SoundFile("thunder.wav"), kLargestSounds);
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{});
    EXPECT_EQ(Sounds(), Texts{"thunder.wav"});
}

TEST_F(LeftParts, MakeNoGameFull) {
    for (std::size_t i = 0; i < kMostSounds; ++i)
        Folder.MakeFile("Realm/sounds/rain.wav." + std::to_string(i) + ".part");
    FetchSound(kAddress);
    EXPECT_EQ(Requested(), Texts{kAddress});
}

TEST_F(LeftParts, GoWhileAnotherGameFetches) {
    CurrentMud = 0;
    MakeGameFolders("Home");
    FetchSound(kAddress);
    EXPECT_EQ(Sounds().size(), 3u);
    CurrentMud = 1;
    FetchSound(kAddress);
    EXPECT_EQ(Sounds(), Texts{"thunder.wav"});
}

TEST_F(LeftParts, StayInAFolderThatAnotherClientHas) {
    FolderIsTaken = true;
    FetchSound(kAddress);
    EXPECT_EQ(Sounds().size(), 3u);
}

TEST_F(LeftParts, AreNoneThatThisClientIsWriting) {
    const fs::path part = PartUnderWay();
    FetchSound("http://h/snow.wav");
    EXPECT_TRUE(fs::exists(part));
}

TEST_F(LeftParts, AreNoneThatThisClientIsWritingIntoAFolderItMade) {
    fs::remove_all(SoundFile(""));
    const fs::path part = PartUnderWay();
    FetchSound("http://h/snow.wav");
    EXPECT_TRUE(fs::exists(part));
}

TEST_F(LeftParts, AreNoneThatThisClientIsWritingForAGameInTheSameFolder) {
    const fs::path part = PartUnderWay();
    fs::create_directory_symlink("Realm", Folder.Path / "Home");
    CurrentMud = 0;
    FetchSound("http://h/snow.wav");
    EXPECT_EQ(Requested().size(), 2u);
    EXPECT_TRUE(fs::exists(part));
}

TEST_F(LeftParts, AreNoSoundsOfSuchANameThatThisClientFetched) {
    FetchSound("http://h/rain.wav.7.part");
    Arrive("abc");
    FetchSound("http://h/snow.wav");
    EXPECT_EQ(Sounds(), (Texts{"rain.wav.7.part", "thunder.wav"}));
}

// Volumes.

struct Loudness {
    const char* Name;
    std::int32_t Given;
    std::string OfWaves;
    std::string OfMusic; // hundredths of a decibel
};

void PrintTo(const Loudness& loudness, std::ostream* out) { *out << loudness.Given; }

const Loudness kLoudnesses[] = {
    {"NotGivenIsFull", 0, "100", "0"},
    {"Full", 100, "100", "0"},
    {"Half", 50, "50", "-5000"},
    {"TheLowest", 1, "1", "-9900"},
    {"AlmostFull", 99, "99", "-100"},
    {"AboveFullIsFull", 101, "100", "0"},
    {"FarAboveFullIsFull", 2147483647, "100", "0"},
    {"BelowZeroIsSilent", -1, "0", "-10000"},
    {"FarBelowZeroIsSilent", -2147483647 - 1, "0", "-10000"},
};

class Volume : public Playing, public testing::WithParamInterface<Loudness> {};

TEST_P(Volume, IsThatOfTheWave) {
    Keep({"rain.wav"});
    PlayWave("rain.wav", "", GetParam().Given, 0);
    EXPECT_EQ(fakes::Calls, WavePlayed("rain.wav", GetParam().OfWaves));
}

TEST_P(Volume, IsThatOfTheMusicInHundredthsOfADecibel) {
    Keep({"tune.mid"});
    PlayMusic("tune.mid", "", GetParam().Given, 0);
    EXPECT_EQ(fakes::Calls, MusicPlayed("tune.mid", GetParam().OfMusic));
}

TEST_P(Volume, IsKeptInTheQueue) {
    Keep({"rain.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("rain.wav", "", GetParam().Given, 0);
    EXPECT_EQ(cboWavVolume, std::deque<std::string>{GetParam().OfWaves});
}

INSTANTIATE_TEST_SUITE_P(Volumes, Volume, testing::ValuesIn(kLoudnesses),
                         [](const auto& row) { return row.param.Name; });

// The queue.

TEST_F(Playing, QueuesAWaveBehindTheOneThatPlays) {
    Keep({"rain.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("rain.wav", "", 80, 60);
    EXPECT_EQ(cboWavPlayer, std::deque<fs::path>{SoundFile("rain.wav")});
    EXPECT_EQ(cboWavVolume, std::deque<std::string>{"80"});
    EXPECT_EQ(fakes::Calls, Texts{"Start wavTimer"});
}

TEST_F(Playing, PlaysTwoWavesOneAfterTheOtherEachWithItsOwnVolume) {
    Keep({"rain.wav", "bell.wav"});
    PlayWave("rain.wav", "", 80, 0);
    fakes::WaveState = PlayState::Playing;
    PlayWave("bell.wav", "", 30, 0);
    EXPECT_EQ(Texts(fakes::Calls.begin(), fakes::Calls.begin() + 4), WavePlayed("rain.wav", "80"));
    fakes::Calls.clear();
    wavTimer_Timer();
    EXPECT_TRUE(NothingHappened()); // the first one still plays
    fakes::WaveState = PlayState::Stopped;
    wavTimer_Timer();
    EXPECT_EQ(fakes::Calls, (Texts{"wave volume 30", "wave URL bell.wav", "wave play"}));
    EXPECT_EQ(fakes::WaveFile, SoundFile("bell.wav"));
    EXPECT_TRUE(cboWavPlayer.empty());
    EXPECT_TRUE(cboWavVolume.empty());
}

TEST_F(Playing, KeepsTheOrderOfTheQueue) {
    Keep({"a.wav", "b.wav", "c.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("a.wav", "", 10, 1);
    PlayWave("b.wav", "", 20, 99); // a higher priority does not overtake
    PlayWave("c.wav", "", 30, 0);
    fakes::WaveState = PlayState::Stopped;
    fakes::Calls.clear();
    for (int i = 0; i < 3; ++i)
        wavTimer_Timer();
    EXPECT_EQ(fakes::Calls, (Texts{"wave volume 10", "wave URL a.wav", "wave play",
                                   "wave volume 20", "wave URL b.wav", "wave play",
                                   "wave volume 30", "wave URL c.wav", "wave play"}));
}

TEST_F(Playing, PlaysAWaveAtOnceThatFindsTheQueueWaitingAndNothingPlaying) {
    Keep({"a.wav", "b.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("a.wav", "", 10, 0);
    fakes::WaveState = PlayState::Stopped;
    fakes::Calls.clear();
    PlayWave("b.wav", "", 20, 0);
    EXPECT_EQ(fakes::Calls, WavePlayed("b.wav", "20"));
    EXPECT_EQ(cboWavPlayer.size(), 1u);
}

TEST_F(Playing, LeavesTheQueueWhenANegativePriorityPlaysAtOnce) {
    Keep({"a.wav", "b.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("a.wav", "", 10, 0);
    fakes::Calls.clear();
    PlayWave("b.wav", "", 20, -1);
    EXPECT_EQ(fakes::Calls, WavePlayed("b.wav", "20"));
    EXPECT_EQ(cboWavPlayer, std::deque<fs::path>{SoundFile("a.wav")});
}

TEST_F(Playing, QueuesTheSameWaveAsOftenAsItIsAskedFor) {
    Keep({"rain.wav"});
    fakes::WaveState = PlayState::Playing;
    for (int i = 0; i < 3; ++i)
        PlayWave("rain.wav", "", 0, 0);
    EXPECT_EQ(cboWavPlayer.size(), 3u);
}

TEST_F(Playing, Queues256WavesAndDropsTheNewest) {
    EXPECT_EQ(kMostWaitingWaves, 256u);
    Keep({"a.wav", "b.wav"});
    fakes::WaveState = PlayState::Playing;
    for (int i = 0; i < 256; ++i)
        PlayWave("a.wav", "", 10, 0);
    EXPECT_EQ(cboWavPlayer.size(), 256u);
    PlayWave("b.wav", "", 20, 0);
    EXPECT_EQ(cboWavPlayer, std::deque<fs::path>(256, SoundFile("a.wav")));
    EXPECT_EQ(cboWavVolume, std::deque<std::string>(256, "10"));
    fakes::WaveState = PlayState::Stopped;
    wavTimer_Timer();
    fakes::WaveState = PlayState::Playing;
    PlayWave("b.wav", "", 20, 0);
    EXPECT_EQ(cboWavPlayer.size(), 256u);
    EXPECT_EQ(cboWavPlayer.back(), SoundFile("b.wav"));
}

TEST_F(Playing, OfMusicDoesNotHoldUpWaves) {
    Keep({"rain.wav"});
    fakes::MusicState = PlayState::Playing;
    PlayWave("rain.wav", "", 0, 0);
    EXPECT_EQ(fakes::Calls, WavePlayed("rain.wav", "100"));
}

TEST_F(Playing, OfWavesDoesNotHoldUpMusic) {
    Keep({"tune.mid"});
    fakes::WaveState = PlayState::Playing;
    PlayMusic("tune.mid", "", 0, 0);
    EXPECT_EQ(fakes::Calls, MusicPlayed("tune.mid", "0"));
}

TEST_F(Playing, DropsMusicWhileMusicPlays) {
    Keep({"tune.mid", "song.mid"});
    PlayMusic("tune.mid", "", 0, 0);
    fakes::MusicState = PlayState::Playing;
    fakes::Calls.clear();
    PlayMusic("song.mid", "", 80, 99);
    EXPECT_TRUE(NothingHappened());
    EXPECT_TRUE(cboMidiPlayer.empty());
    EXPECT_TRUE(cboMidiVolume.empty());
    EXPECT_TRUE(cboWavPlayer.empty());
}

// Timers.

TEST_F(Playing, StopsTheTimerOfTheWavesWhenItFindsTheQueueEmpty) {
    wavTimer_Timer();
    EXPECT_EQ(fakes::Calls, Texts{"Stop wavTimer"});
}

TEST_F(Playing, StopsTheTimerOfTheWavesWhileTheLastOnePlays) {
    fakes::WaveState = PlayState::Playing;
    wavTimer_Timer();
    EXPECT_EQ(fakes::Calls, Texts{"Stop wavTimer"});
}

TEST_F(Playing, StopsTheTimerOfTheWavesOnTheTickBehindTheLastOne) {
    Keep({"rain.wav"});
    fakes::WaveState = PlayState::Playing;
    PlayWave("rain.wav", "", 0, 0);
    fakes::WaveState = PlayState::Stopped;
    fakes::Calls.clear();
    wavTimer_Timer();
    EXPECT_EQ(fakes::CallsOf("Stop wavTimer"), 0);
    fakes::Calls.clear();
    wavTimer_Timer();
    EXPECT_EQ(fakes::Calls, Texts{"Stop wavTimer"});
}

TEST_F(Playing, StopsTheTimerOfTheMusicWhenItFindsTheQueueEmpty) {
    midiTimer_Timer();
    EXPECT_EQ(fakes::Calls, Texts{"Stop midiTimer"});
}

TEST_F(Playing, TakesFromTheQueueOfMusicAndPlaysFromThatOfWavesOnPurpose) {
    cboMidiPlayer = {"tune.mid", "song.mid"};
    cboWavPlayer = {SoundFile("rain.wav"), SoundFile("bell.wav")};
    cboWavVolume = {"10", "20"};
    midiTimer_Timer();
    EXPECT_EQ(fakes::Calls, (Texts{"music FileName rain.wav", "music play"}));
    EXPECT_EQ(fakes::MusicFile, SoundFile("rain.wav"));
    EXPECT_EQ(cboMidiPlayer, std::deque<fs::path>{"song.mid"});
    EXPECT_EQ(cboWavPlayer.size(), 2u); // left as it is
    EXPECT_EQ(cboWavVolume.size(), 2u);
}

TEST_F(Playing, PlaysNoFileFromTheQueueOfMusicWhenNoWaveWaits) {
    cboMidiPlayer = {"tune.mid"};
    midiTimer_Timer();
    EXPECT_EQ(fakes::Calls, (Texts{"music FileName ", "music play"}));
    EXPECT_TRUE(cboMidiPlayer.empty());
}

TEST_F(Playing, LeavesTheQueueOfMusicWhileMusicPlays) {
    cboMidiPlayer = {"tune.mid"};
    fakes::MusicState = PlayState::Playing;
    midiTimer_Timer();
    EXPECT_TRUE(NothingHappened());
    EXPECT_EQ(cboMidiPlayer.size(), 1u);
}

TEST_F(Playing, BeginsAgainWithEmptyQueues) {
    cboWavPlayer = cboMidiPlayer = {"a"};
    cboWavVolume = cboMidiVolume = {"1"};
    PlayingPriority = 7;
    LastRequestedDownload = "x";
    ResetPlaySound();
    EXPECT_TRUE(cboWavPlayer.empty() && cboMidiPlayer.empty());
    EXPECT_TRUE(cboWavVolume.empty() && cboMidiVolume.empty());
    EXPECT_EQ(PlayingPriority, 0);
    EXPECT_EQ(LastRequestedDownload, "");
}

// From the trigger to the player.

class Triggered : public Playing {
protected:
    static void Receive(std::string_view text) {
        TakeFront(IncomingBuffer, View(IncomingBuffer).size());
        Append(IncomingBuffer, text);
        EXPECT_TRUE(ParseSoundTrigger());
    }
};

TEST_F(Triggered, WavesPlayWithTheirVolume) {
    Keep({"thunder.wav"});
    Receive("!!SOUND(thunder.wav V=80 P=60 )");
    EXPECT_EQ(fakes::Calls, WavePlayed("thunder.wav", "80"));
}

TEST_F(Triggered, WavesPlayAtFullVolumeWhenItStandsBeforeTheCloseOnPurpose) {
    Keep({"thunder.wav"});
    Receive("!!SOUND(thunder V=30)");
    EXPECT_EQ(fakes::Calls, WavePlayed("thunder.wav", "100"));
}

TEST_F(Triggered, MusicPlaysAtItsHundredths) {
    Keep({"theme.mid"});
    Receive("!!MUSIC(theme.mid V=25 L=-1 )");
    EXPECT_EQ(fakes::Calls, MusicPlayed("theme.mid", "-7500"));
}

TEST_F(Triggered, OffIsASoundLikeAnyOther) {
    Keep({"Off.wav"});
    Receive("!!SOUND(Off)");
    EXPECT_EQ(fakes::Calls, WavePlayed("Off.wav", "100"));
}

TEST_F(Triggered, SoundsWithoutAnAddressAreNotFetched) {
    Receive("!!SOUND(gone)");
    Receive("!!MUSIC(gone)");
    EXPECT_TRUE(NothingHappened());
}

TEST_F(Triggered, SoundsAreFetchedFromTheirCompletedAddress) {
    Receive("!!SOUND(gone U=http://h/gone)");
    Receive("!!MUSIC(gone U=http://h/gone.mid)");
    EXPECT_EQ(Requested(), (Texts{"http://h/gone.wav", "http://h/gone.mid"}));
}

TEST_F(Triggered, NamesThatLeadAwayAreNeitherPlayedNorFetched) {
    Folder.MakeFile("away.wav");
    Receive("!!SOUND(../../away U=http://h/away.wav)");
    Receive("!!SOUND(..\\..\\away U=http://h/away.wav)");
    Receive("!!SOUND(ra\r\nin U=http://h/away.wav)");
    EXPECT_TRUE(NothingHappened());
}

} // namespace
} // namespace mw
