#include "terminal/Incoming.h"

#include "sound/SoundTrigger.h"
#include "terminal/Ansi.h"
#include "terminal/Output.h"
#include "ui/Players.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace mw {
namespace {

constexpr std::string_view kSoundOff = "!!SOUND(Off)";
constexpr std::string_view kMusicOff = "!!MUSIC(Off)";

// Where the first character that is more than text stands; the size when there is none. A look
// into a table a character costs a third of find_first_of.
std::size_t PlainLength(std::string_view text) {
    static constexpr auto kMatters = [] {
        std::array<bool, 256> matters{};
        for (const char c : {'\r', '\n', '\x1b', '!'})
            matters[static_cast<unsigned char>(c)] = true;
        return matters;
    }();
    const auto* const first = std::find_if(
        text.begin(), text.end(), [](char c) { return kMatters[static_cast<unsigned char>(c)]; });
    return static_cast<std::size_t>(first - text.begin());
}

struct Walk {
    std::string Run;           // text for the next append
    std::string PendingBreaks; // CRs and LFs that wait for text to follow them
};

void ReleaseBreaks(Walk& walk) {
    walk.Run += walk.PendingBreaks;
    walk.PendingBreaks.clear();
}

void TakeBreak(Walk& walk) {
    AtLineStart = true;
    walk.PendingBreaks += View(IncomingBuffer).front();
    TakeFront(IncomingBuffer, 1);
}

// Returns false when the sequence has no end yet.
bool TakeSequence(Walk& walk) {
    AtLineStart = false;
    ReleaseBreaks(walk);
    AppendOutput(walk.Run); // also when it is empty: a waiting line is handed on
    walk.Run.clear();
    const std::uint64_t taken = IncomingBuffer.Taken;
    DecodeAnsi();
    if (IncomingBuffer.Taken != taken)
        return true;
    if (View(IncomingBuffer).size() - 1 <= kLongestSequence)
        return false;
    TakeFront(IncomingBuffer, 1);
    return true;
}

// Meant: a trigger that is none shows as its first "!", and the word "False" stands where the next
// line breaks would.
void TakeFailedCommand(Walk& walk) {
    walk.Run += walk.PendingBreaks;
    walk.Run += View(IncomingBuffer).front();
    walk.PendingBreaks = "False";
    TakeFront(IncomingBuffer, 1);
}

void TakeText(Walk& walk, std::size_t count) {
    ReleaseBreaks(walk);
    walk.Run += View(IncomingBuffer).substr(0, count);
    TakeFront(IncomingBuffer, count);
    AtLineStart = false;
}

void TakeStop(std::string_view command, void (*stop)()) {
    TakeFront(IncomingBuffer, command.size());
    AtLineStart = false;
    stop();
}

void TakeExclamation(Walk& walk) {
    const std::string_view text = View(IncomingBuffer);
    if (text.starts_with(kSoundOff)) {
        TakeStop(kSoundOff, wavPlayer::Stop);
    } else if (text.starts_with(kMusicOff)) {
        TakeStop(kMusicOff, midiPlayer::Stop);
    } else if (AtLineStart && (text.starts_with("!!SOUND") || text.starts_with("!!MUSIC"))) {
        AtLineStart = false;
        if (!ParseSoundTrigger())
            TakeFailedCommand(walk);
    } else {
        TakeText(walk, 1);
    }
}

} // namespace

void ProcessIncoming() {
    Walk walk;
    while (!View(IncomingBuffer).empty()) {
        const std::string_view text = View(IncomingBuffer);
        const std::size_t plain = PlainLength(text);
        if (plain != 0)
            TakeText(walk, plain);
        else if (text.front() == '\r' || text.front() == '\n')
            TakeBreak(walk);
        else if (text.front() == '!')
            TakeExclamation(walk);
        else if (!TakeSequence(walk)) {
            AppendWaitingLines();
            return;
        }
    }
    if (!walk.Run.empty())
        AppendOutput(walk.Run);
}

void FinishIncoming() {
    while (!View(IncomingBuffer).empty()) {
        ProcessIncoming();
        TakeFront(IncomingBuffer, 1);
    }
}

void ResetIncoming() {
    TakeFront(IncomingBuffer, View(IncomingBuffer).size());
    AtLineStart = false;
}

} // namespace mw
