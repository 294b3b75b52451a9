// The modules alone, with the options of Google Benchmark.
#include "bench/ModuleBench.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    bench::RegisterModules();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
