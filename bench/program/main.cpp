// Measures the modules and the whole program, prints one table, and adds it to a file.
#include "bench/program/Modules.h"
#include "bench/program/Program.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace {

struct Part {
    const char* Name;
    void (*AddTo)(bench::Table& table);
};

constexpr Part kParts[] = {
    {"modules", bench::AddModules}, {"traffic", bench::AddTraffic}, {"paint", bench::AddPaint},
    {"rest", bench::AddRest},       {"start", bench::AddStart},
};

constexpr const char* kUsage =
    "Usage: bench [--history FILE] [--commit NAME] [--only modules|traffic|paint|rest|start]";

bool IsPart(const std::string& name) {
    return std::any_of(std::begin(kParts), std::end(kParts),
                       [&](const Part& part) { return name == part.Name; });
}

// Throws what it is used for when they are others.
std::map<std::string, std::string> Options(int argc, char** argv) {
    std::map<std::string, std::string> options{{"--history", ""}, {"--commit", ""}, {"--only", ""}};
    for (int i = 1; i < argc; i += 2) {
        if (!options.contains(argv[i]) || i + 1 == argc)
            throw std::runtime_error(kUsage);
        options[argv[i]] = argv[i + 1];
    }
    if (!options["--only"].empty() && !IsPart(options["--only"]))
        throw std::runtime_error(kUsage);
    return options;
}

void Run(std::map<std::string, std::string> options) {
    const std::string heading = bench::Heading(options["--commit"]);
    bench::Table table;
    for (const Part& part : kParts) {
        if (options["--only"].empty() || options["--only"] == part.Name)
            part.AddTo(table);
    }
    std::cout << heading << bench::Format(table);
    if (!options["--history"].empty())
        std::ofstream(options["--history"], std::ios::app)
            << heading << bench::Format(table) << "\n";
}

} // namespace

int main(int argc, char** argv) {
    try {
        Run(Options(argc, argv));
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
