#include "bench/Corpus.h"
#include "bench/Work.h"
#include "config/Palette.h"
#include "net/Telnet.h"
#include "terminal/Ansi.h"
#include "terminal/Incoming.h"
#include "terminal/Output.h"

#include <string_view>

namespace bench {
namespace {

constexpr std::size_t kText = std::size_t{1024} * 1024;
constexpr std::size_t kLines = 10000;
constexpr std::size_t kSequences = 20000;

std::function<void()> PrepareScan() {
    return [arrivals = Arrivals(kText, Dress::Coloured)] {
        for (const std::string& arrival : arrivals)
            mw::ScanTelnet(arrival, [](std::string_view) {});
    };
}

std::function<void()> PrepareWalk(Dress dress) {
    mw::Palette = mw::kDefaultPalette;
    mw::MacroSets = mw::OneMacroSet("Default");
    mw::ResetIncoming();
    mw::ResetOutput();
    return [arrivals = Arrivals(kText, dress)] {
        for (const std::string& arrival : arrivals) {
            mw::Append(mw::IncomingBuffer, arrival);
            mw::ProcessIncoming();
        }
    };
}

std::string Sequences() {
    static const char* const kCodes[] = {"0;31m", "0;1;32m", "1;33m", "0m", "1;5;36m", "7m"};
    std::string text;
    for (std::size_t i = 0; i < kSequences; ++i)
        text.append("\x1b[").append(kCodes[i % std::size(kCodes)]);
    return text;
}

std::function<void()> PrepareDecoder() {
    mw::Palette = mw::kDefaultPalette;
    mw::ResetIncoming();
    return [sequences = Sequences()] {
        mw::Append(mw::IncomingBuffer, sequences);
        while (!View(mw::IncomingBuffer).empty())
            mw::DecodeAnsi();
    };
}

std::function<void()> PrepareAppend() {
    mw::MacroSets = mw::OneMacroSet("Default");
    mw::ResetOutput();
    return [lines = Lines(kLines), run = std::string()]() mutable {
        for (const std::string& line : lines) {
            run = line;
            mw::AppendOutput(run);
        }
    };
}

} // namespace

std::vector<Work> ReceiveWork() {
    return {
        {"telnet scan", kText, Unit::Bytes, PrepareScan},
        {"walk, plain text", kText, Unit::Bytes, [] { return PrepareWalk(Dress::Plain); }},
        {"walk, coloured text", kText, Unit::Bytes, [] { return PrepareWalk(Dress::Coloured); }},
        {"decoder", kSequences, Unit::Entries, PrepareDecoder},
        {"append", kLines, Unit::Lines, PrepareAppend},
    };
}

} // namespace bench
