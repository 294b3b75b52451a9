#include "bench/program/Modules.h"

#include "bench/ModuleBench.h"

#include <benchmark/benchmark.h>

namespace bench {
namespace {

// Takes the medians.
struct Rows : benchmark::BenchmarkReporter {
    explicit Rows(Table& table) : Result(table) {}

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median")
                Result.Add(run.run_name.function_name + Arguments(run), Measured(run));
        }
    }

    static std::string Arguments(const Run& run) {
        return run.run_name.args.empty() ? "" : " " + run.run_name.args;
    }

    // Rates are by processor time, so the time beside one is too.
    static std::string Measured(const Run& run) {
        const auto counter = [&run](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? 0.0 : found->second.value;
        };
        const std::string cpu = Amount(run.GetAdjustedCPUTime(), "ms, ");
        if (const double bytes = counter("bytes_per_second"); bytes > 0)
            return cpu + Amount(bytes / 1e6, "MB/s");
        if (const double items = counter("items_per_second"); items > 0)
            return cpu + (items < 1e6 ? Amount(items / 1e3, "thousand/s")
                                      : Amount(items / 1e6, "million/s"));
        if (const double bytes = counter("bytes/trigger"); bytes > 0)
            return cpu + Amount(bytes, "bytes a trigger");
        return Amount(run.GetAdjustedRealTime(), "ms");
    }

    Table& Result;
};

} // namespace

void AddModules(Table& table) {
    std::string arguments[] = {"bench", "--benchmark_repetitions=5", "--benchmark_min_time=0.05",
                               "--benchmark_report_aggregates_only=true"};
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    int count = static_cast<int>(pointers.size());
    RegisterModules();
    benchmark::Initialize(&count, pointers.data());
    Rows rows(table);
    benchmark::RunSpecifiedBenchmarks(&rows);
}

} // namespace bench
