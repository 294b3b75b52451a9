// The road of received text: telnet scan, and the walk with decoder and append.
#include "bench/Corpus.h"
#include "config/Palette.h"
#include "net/Telnet.h"
#include "terminal/Incoming.h"

#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t kText = 1024 * 1024;

void TelnetScan(benchmark::State& state) {
    const std::vector<std::string> arrivals = bench::Arrivals(kText);
    for (auto _ : state)
        for (const std::string& arrival : arrivals)
            benchmark::DoNotOptimize(mw::ScanTelnet(arrival, [](std::string_view) {}));
    state.SetBytesProcessed(static_cast<std::int64_t>(kText) * state.iterations());
}
BENCHMARK(TelnetScan)->Unit(benchmark::kMillisecond);

void WalkDecodeAppend(benchmark::State& state) {
    const std::vector<std::string> arrivals = bench::Arrivals(kText);
    mw::Palette = mw::kDefaultPalette;
    for (auto _ : state)
        for (const std::string& arrival : arrivals) {
            mw::Append(mw::IncomingBuffer, arrival);
            mw::ProcessIncoming();
        }
    state.SetBytesProcessed(static_cast<std::int64_t>(kText) * state.iterations());
}
BENCHMARK(WalkDecodeAppend)->Unit(benchmark::kMillisecond);

} // namespace
