#include "bench/program/Process.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// The number behind "name:" in a file of the system's.
double NumberIn(const std::filesystem::path& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name + ':'))
            return std::stod(line.substr(name.size() + 1));
    }
    return 0;
}

std::filesystem::path FolderOf(const Process& process) {
    return "/proc/" + std::to_string(process.Id);
}

} // namespace

Process::Process(const std::vector<std::string>& command,
                 const std::vector<std::string>& environment, int output) {
    const std::vector<char*> arguments = Pointers(command);
    const std::vector<char*> variables = Pointers(environment);
    Id = ::fork();
    if (Id < 0)
        throw std::runtime_error("No process could be made for " + command[0]);
    if (Id > 0)
        return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = ::open("/dev/null", O_RDWR);
    ::dup2(nowhere, STDIN_FILENO);
    ::dup2(output >= 0 ? output : nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    ::execvpe(arguments[0], arguments.data(), variables.data());
    ::_exit(127);
}

Process::~Process() {
    ::kill(Id, SIGKILL);
    ::waitpid(Id, nullptr, 0);
}

Usage UsageOf(const Process& process) {
    constexpr double kNanosecondsAMs = 1e6;
    Usage usage;
    for (const auto& entry : std::filesystem::directory_iterator(FolderOf(process) / "task")) {
        Usage::Thread& thread = usage.Threads[entry.path().filename()];
        std::ifstream(entry.path() / "schedstat") >> thread.CpuMs;
        thread.CpuMs /= kNanosecondsAMs;
        thread.Switches = NumberIn(entry.path() / "status", "voluntary_ctxt_switches");
    }
    return usage;
}

Usage::Thread Between(const Usage& before, const Usage& after) {
    Usage::Thread sum;
    for (const auto& [id, thread] : after.Threads) {
        const auto earlier = before.Threads.find(id);
        const Usage::Thread none;
        const Usage::Thread& start = earlier == before.Threads.end() ? none : earlier->second;
        sum.CpuMs += thread.CpuMs - start.CpuMs;
        sum.Switches += thread.Switches - start.Switches;
    }
    for (const auto& [id, thread] : before.Threads)
        sum.Switches += after.Threads.contains(id) ? 0 : 1;
    return sum;
}

double ResidentMb(const Process& process) {
    constexpr double kKilobyte = 1024;
    return NumberIn(FolderOf(process) / "status", "VmRSS") * kKilobyte / 1e6;
}

} // namespace bench
