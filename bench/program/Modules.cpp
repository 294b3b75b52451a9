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

    static std::string Measured(const Run& run) {
        std::string text = Amount(run.GetAdjustedRealTime(), "ms");
        for (const auto& [name, counter] : run.counters) {
            if (name == "bytes_per_second")
                text += ", " + Amount(counter / 1e6, "MB/s");
            else if (name == "items_per_second")
                text += ", " + Amount(counter / 1e6, "million/s");
            else
                text += ", " + Amount(counter, name);
        }
        return text;
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
