// A program that the bench starts, and what the system tells of it.
#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace bench {

struct Process {
    // Starts the program. Its environment is the one given and no other; what it prints goes to
    // output, or nowhere. It ends with the bench at the latest.
    Process(const std::vector<std::string>& command, const std::vector<std::string>& environment,
            int output = -1);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t Id = 0;
};

// What each of its threads has used since it was started.
struct Usage {
    struct Thread {
        double CpuMs = 0;
        double Switches = 0; // how often it went to sleep and came back
    };
    std::map<std::string, Thread> Threads; // by id
};

Usage UsageOf(const Process& process);

// All threads together. What one did that ended meanwhile is not known, but that it ended.
Usage::Thread Between(const Usage& before, const Usage& after);

double ResidentMb(const Process& process); // 10^6 bytes

} // namespace bench
