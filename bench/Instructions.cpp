// Counts the instructions of every piece of work (bench/Work.h).
//
// Runs under callgrind, which writes one part of its counts for each piece; bench/instructions.py
// starts it and compares. Without callgrind it only shows that the work runs.
#include "bench/Work.h"

#include <valgrind/callgrind.h>

int main() {
    constexpr int kRuns = 2;
    for (const bench::Work& work : bench::AllWork()) {
        const std::function<void()> run = work.Prepare();
        run(); // what is made once is made
        CALLGRIND_ZERO_STATS;
        for (int i = 0; i < kRuns; ++i)
            run();
        CALLGRIND_DUMP_STATS_AT(work.Name.c_str());
    }
}
