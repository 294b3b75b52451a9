// The trigger check at 0 to 10,000 triggers that do not match, the building of its matcher, and
// what a trigger costs in memory.
#include "automation/TriggerMatcher.h"
#include "automation/Triggers.h"
#include "bench/Corpus.h"

#include <benchmark/benchmark.h>

namespace {

// Texts that begin as the lines do and are never in one.
std::vector<mw::TriggerEntry> Table(std::size_t count) {
    std::mt19937 random(3);
    std::vector<mw::TriggerEntry> entries(count);
    for (mw::TriggerEntry& entry : entries)
        entry = {bench::Word(random) + ' ' + bench::Word(random) + ' ' + bench::Word(random) +
                     " #" + std::to_string(random() % 100000),
                 "say I saw it"};
    return entries;
}

void CheckLine(benchmark::State& state) {
    const std::vector<std::string> lines = bench::Lines(2000);
    const auto count = static_cast<std::size_t>(state.range(0));
    mw::CurrentSet().Triggers = count == 0 ? mw::TriggerTable() : mw::TriggerTable(Table(count));
    mw::CheckTriggers(lines[0]);
    for (auto _ : state)
        for (const std::string& line : lines)
            mw::CheckTriggers(line);
    state.counters["lines/s"] = benchmark::Counter(static_cast<double>(lines.size()) *
                                                       static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate);
}
BENCHMARK(CheckLine)->Arg(0)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BuildTriggers(benchmark::State& state) {
    const std::vector<mw::TriggerEntry> table = Table(static_cast<std::size_t>(state.range(0)));
    mw::TriggerMatcher matcher;
    for (auto _ : state)
        matcher = mw::BuildMatcher(table);
    const std::size_t bytes = matcher.Nodes.capacity() * sizeof(mw::TriggerMatcher::Node) +
                              matcher.Labels.capacity() +
                              matcher.Entries.capacity() * sizeof(std::uint32_t) +
                              matcher.Rows.capacity() * sizeof matcher.Rows[0] +
                              matcher.Rests.capacity() + sizeof matcher;
    state.counters["bytes/trigger"] =
        static_cast<double>(bytes) / static_cast<double>(table.size());
}
BENCHMARK(BuildTriggers)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
