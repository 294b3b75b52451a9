// What the modules are measured by: pieces of work, each the same at every run.
//
// The benches run them by the clock (bench/ModuleBench.cpp), and the count of instructions runs
// each a fixed number of times (bench/Instructions.cpp). The ports do nothing (bench/Ports.cpp).
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

enum class Unit { Bytes, Lines, Entries };

struct Work {
    std::string Name;
    std::size_t Amount; // of what one run takes in, or gives out
    Unit Of;
    std::function<std::function<void()>()> Prepare; // returns one run
};

std::vector<Work> ReceiveWork(); // received bytes to appended runs
std::vector<Work> TriggerWork();
std::vector<Work> FileWork(); // readers and writers

inline std::vector<Work> AllWork() {
    std::vector<Work> all;
    for (const auto& some : {ReceiveWork(), TriggerWork(), FileWork()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace bench
