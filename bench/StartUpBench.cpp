// The stages of the start, one by one, on real files in a temporary folder, and the version check
// against a server of its own on this machine.
#include "app/StartUp.h"
#include "bench/Corpus.h"
#include "bench/Home.h"
#include "bench/VersionServer.h"

#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

// A player's folder, made once and removed at the end.
struct PlayersFolder {
    PlayersFolder() { bench::Keep(Place.Path, bench::ManyGames(), bench::ManySets()); }

    bench::Folder Place;
};

void RunStage(benchmark::State& state) {
    const PlayersFolder folder;
    const bench::VersionServer server;
    ::setenv("QUILLMERE_WEB_ROOT", server.Root.c_str(), 1);
    for (auto _ : state) {
        mw::Splash.stage = static_cast<std::int16_t>(state.range(0));
        mw::timerLoad_Timer();
    }
}
// Mud list, configuration, macro sets, version check.
BENCHMARK(RunStage)->Name("stage of the start")->DenseRange(1, 4)->Unit(benchmark::kMillisecond);

void SaveStage(benchmark::State& state) {
    const PlayersFolder folder;
    mw::SavingMode = true;
    for (auto _ : state) {
        mw::Splash.stage = static_cast<std::int16_t>(state.range(0));
        mw::timerLoad_Timer();
    }
    mw::SavingMode = false;
}
BENCHMARK(SaveStage)->Name("stage of the saving")->DenseRange(1, 3)->Unit(benchmark::kMillisecond);

} // namespace
