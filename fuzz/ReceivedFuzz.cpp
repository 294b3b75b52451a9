// Any bytes of a game server, all the way: telnet, walk, colours, sounds, output, triggers.
//
// The first byte is what is set up, the rest what arrives; kCut cuts it into arrivals. One that
// begins with kOften arrives many times, so that short inputs come up to the limits.
#include "automation/Macros.h"
#include "config/MudList.h"
#include "fuzz/Fresh.h"
#include "net/Connection.h"
#include "net/Telnet.h"
#include "net/http/DownLoad.h"
#include "sound/PlaySound.h"
#include "terminal/Ansi.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace mw {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using Strings = std::vector<std::string>;

enum SetUp : std::uint8_t { HasTriggers = 1, ByParameter = 2, WavePlays = 4, MayFetch = 8 };

constexpr char kOften = '\x1d';
constexpr int kTimes = 256;
constexpr std::size_t kMostBytes = 100000; // of one input; above all limits
constexpr std::size_t kMostTriggered = 5000;

// The longest run is what waited and what arrived; "False" may stand for a mark of seven.
constexpr std::size_t kLongestRun = 2 * (kLongestSequence + kLongestChunk);

fs::path Sounds() { return ApplicationFolder / "Quillmere" / "sounds"; }

fs::path Outside() { return ApplicationFolder / "outside.wav"; }

// Two sounds that can be played, and one that must not be.
void MakeFiles() {
    fs::create_directories(Sounds());
    for (const fs::path& file : {Sounds() / "rain.wav", Sounds() / "tune.mid", Outside()})
        std::ofstream(file) << "x";
}

void Begin(std::uint8_t setUp) {
    static const bool made = (MakeFiles(), true);
    Must(made);
    Connected = true;
    MudList[0].SndW = true;
    MudList[0].SndD = (setUp & MayFetch) != 0;
    WholeSequenceMode = (setUp & ByParameter) == 0;
    if ((setUp & WavePlays) != 0)
        fakes::WaveState = PlayState::Playing;
    if ((setUp & HasTriggers) != 0)
        CurrentSet().Triggers = {{"hungry", "eat bread;drink"}, {"o", "x"}, {"", "all"}};
}

// What the client sends without being asked by the player, at the front of sent; 0 for nothing.
std::size_t AnswerLength(std::string_view sent) {
    for (const auto whole : {"\xff\xfa\0DEC-VT100\xff\xf0"sv, "SMWCLIENT\r"sv,
                             "eat bread\rdrink\r"sv, "x\r"sv, "all\r"sv}) {
        if (sent.starts_with(whole))
            return whole.size();
    }
    if (sent.size() < 3 || sent[0] != '\xff')
        return 0;
    const bool isAgreed = "\0\1\x18\x5a"sv.find(sent[2]) != std::string_view::npos;
    const auto answers = isAgreed ? "\xfb\xfd"sv : "\xfc\xfe"sv;
    return answers.find(sent[1]) != std::string_view::npos ? 3 : 0;
}

void MustBeAnswers(std::string_view sent) {
    while (!sent.empty()) {
        const std::size_t length = AnswerLength(sent);
        Must(length != 0);
        sent.remove_prefix(length);
    }
}

void MustBeBounded() {
    const std::string_view waiting = View(IncomingBuffer);
    Must(waiting.empty() || waiting.front() == '\x1b');
    Must(waiting.size() <= kLongestSequence + 1);
    Must(View(PendingLine).size() <= kLongestPendingLine);
    Must(fakes::Shown.size() <= kLongestOutput + kLongestRun);
    Must(cboWavPlayer.size() <= kMostWaitingWaves && cboWavPlayer.size() == cboWavVolume.size());
    Must(fakes::Transfers.size() <= kMostDownloads);
    Must(fakes::Messages.empty());
}

void Arrive(const std::string& bytes) {
    fakes::Arrivals.push_back(bytes.substr(0, kLongestChunk));
    wskTCP_DataArrival();
    MustBeBounded();
    fakes::Calls.clear();
}

void ArriveAll(const Strings& pieces, std::uint8_t setUp) {
    std::size_t left = (setUp & HasTriggers) != 0 ? kMostTriggered : kMostBytes;
    for (const std::string& piece : pieces) {
        for (int i = piece.starts_with(kOften) ? kTimes : 1; i > 0 && piece.size() <= left; --i) {
            left -= piece.size();
            Arrive(piece);
        }
    }
}

// No sound comes from elsewhere.
void MustBeOurs() {
    for (const fs::path& file : {fakes::WaveFile, fakes::MusicFile})
        Must(file.empty() || file.lexically_normal().parent_path() == Sounds());
}

void PlayOut() {
    MustBeOurs();
    fakes::WaveState = PlayState::Stopped;
    while (!cboWavPlayer.empty()) {
        wavTimer_Timer();
        MustBeOurs();
    }
}

// Each download brings its file, which shows where it goes.
void FetchAll() {
    const auto transfers = fakes::Transfers;
    for (const auto& [number, transfer] : transfers) {
        fakes::Transfers[number].Header = "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n";
        fakes::Transfers[number].Body = "x";
        fakes::Transfers[number].Ended = true;
        inet_StateChanged(number);
    }
    if (transfers.empty())
        return;
    for (const auto& entry : fs::recursive_directory_iterator(ApplicationFolder))
        Must(entry.is_directory() || entry.path().parent_path() == Sounds() ||
             entry.path() == Outside());
    fs::remove_all(Sounds());
    MakeFiles();
}

void PlaySession(const Strings& pieces, std::uint8_t setUp) {
    const Fresh fresh;
    Begin(setUp);
    ArriveAll(pieces, setUp);
    wskTCP_Close();
    Must(View(IncomingBuffer).empty() && !Connected);
    Must(fakes::Shown.find('\r') == std::string::npos);
    MustBeAnswers(fakes::Sent());
    PlayOut();
    FetchAll();
}

// Where it is not said to matter, it must not matter how the text is cut.

// Said to matter are telnet commands, sound triggers, line breaks that end an arrival, and
// sequences that end in "K", for which an "m" may yet come.
bool MayBeCut(const Strings& pieces) {
    return std::ranges::none_of(pieces, [](const std::string& piece) {
        return piece.find_first_of("\xff!K") != std::string::npos || piece.ends_with('\r') ||
               piece.ends_with('\n');
    });
}

struct Result {
    std::string Text;
    std::vector<std::int32_t> Colours; // of each character
    std::string Sent;
    std::string Waiting;
    std::int32_t Colour = 0;

    bool operator==(const Result&) const = default;
};

Result ResultOf(const Strings& pieces, std::uint8_t setUp) {
    const Fresh fresh;
    Begin(setUp);
    for (const std::string& piece : pieces)
        Arrive(piece + '\r'); // the last byte is lost
    AppendWaitingLines();
    Result result{{}, {}, fakes::Sent(), std::string(View(IncomingBuffer)), CurrentColour};
    for (const fakes::Run& run : fakes::Runs) {
        result.Text += run.Text;
        result.Colours.resize(result.Text.size(), run.Colour);
    }
    return result;
}

std::string Joined(const Strings& pieces) {
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    return text;
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count == 0)
        return 0;
    const std::uint8_t setUp = bytes[0];
    const std::vector<std::string> pieces = Pieces(Text(bytes + 1, count - 1));
    mw::PlaySession(pieces, setUp);
    if (count < mw::kLongestChunk && (setUp & mw::ByParameter) == 0 && mw::MayBeCut(pieces))
        Must(mw::ResultOf(pieces, setUp) == mw::ResultOf({mw::Joined(pieces)}, setUp));
    return 0;
}
