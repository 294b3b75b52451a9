// Measures the modules and the whole program, prints one table, and adds it to a file.
// Usage: bench [--history FILE] [--commit NAME] [--only modules|traffic|paint|rest|start]
#include "bench/program/Modules.h"
#include "bench/program/Program.h"

#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>

namespace {

std::map<std::string, std::string> Options(int argc, char** argv) {
    std::map<std::string, std::string> options;
    for (int i = 1; i + 1 < argc; i += 2)
        options[argv[i]] = argv[i + 1];
    return options;
}

struct Part {
    const char* Name;
    void (*AddTo)(bench::Table& table);
};

constexpr Part kParts[] = {
    {"modules", bench::AddModules}, {"traffic", bench::AddTraffic}, {"paint", bench::AddPaint},
    {"rest", bench::AddRest},       {"start", bench::AddStart},
};

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
