// The modules by the clock: every piece of work (bench/Work.h), and what a trigger costs in memory.
#include "bench/ModuleBench.h"

#include "automation/TriggerMatcher.h"
#include "bench/Corpus.h"
#include "bench/Work.h"

#include <benchmark/benchmark.h>

namespace {

void Measure(benchmark::State& state, const bench::Work& work) {
    const std::function<void()> run = work.Prepare();
    run();
    for (auto _ : state)
        run();
    const auto amount = static_cast<std::int64_t>(work.Amount) * state.iterations();
    if (work.Of == bench::Unit::Bytes)
        state.SetBytesProcessed(amount);
    else
        state.SetItemsProcessed(amount);
}

void TriggerMemory(benchmark::State& state) {
    const std::vector<mw::TriggerEntry> table =
        bench::Triggers(static_cast<std::size_t>(state.range(0)));
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
BENCHMARK(TriggerMemory)
    ->Name("automaton's memory at")
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

} // namespace

void bench::RegisterModules() {
    for (const Work& work : AllWork())
        benchmark::RegisterBenchmark(work.Name.c_str(), Measure, work)
            ->Unit(benchmark::kMillisecond);
}
