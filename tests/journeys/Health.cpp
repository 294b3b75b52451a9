#include "Health.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace journey {
namespace {

namespace fs = std::filesystem;

fs::path FolderOf(const QProcess& process) {
    return "/proc/" + std::to_string(process.processId());
}

int EntriesIn(const fs::path& folder) {
    return static_cast<int>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

double ResidentMb(const QProcess& process) {
    double pages = 0;
    std::ifstream(FolderOf(process) / "statm") >> pages >> pages; // the second number
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

int HandlesOf(const QProcess& process) { return EntriesIn(FolderOf(process) / "fd"); }

int ThreadsOf(const QProcess& process) { return EntriesIn(FolderOf(process) / "task"); }

double CpuMs(const QProcess& process) {
    constexpr int kBehindTheName = 11; // fields from the name, in brackets, to the two times
    std::ifstream file(FolderOf(process) / "stat");
    file.ignore(std::numeric_limits<std::streamsize>::max(), ')');
    std::string skipped;
    for (int field = 0; field < kBehindTheName; ++field)
        file >> skipped;
    double user = 0;
    double system = 0;
    file >> user >> system;
    return 1000 * (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

double FirstThreadMs(const QProcess& process) {
    double nanoseconds = 0;
    std::ifstream(FolderOf(process) / "schedstat") >> nanoseconds;
    return nanoseconds / 1e6;
}

double OwnCpuMs() {
    const auto ms = [](const timeval& time) {
        return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e3;
    };
    double sum = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        sum += ms(usage.ru_utime) + ms(usage.ru_stime);
    }
    return sum;
}

} // namespace journey
