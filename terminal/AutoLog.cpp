#include "terminal/AutoLog.h"

#include "base/CodePage.h"
#include "base/Error.h"
#include "ui/Clock.h"

#include <filesystem>
#include <fstream>

namespace mw {
namespace {

constexpr std::int16_t kOnlyFileNumber = 1; // the log is the one file that is kept open

std::ofstream LogFile;

} // namespace

void OpenLog() {
    CloseLog();
    LogFileNumber = kOnlyFileNumber;
    LogFile.open(std::filesystem::path(ToUnicode(LogFilePath)), std::ios::app | std::ios::binary);
    if (!LogFile.is_open())
        Raise(PathFileAccess, "OpenLog");
    LogFileOpen = true;
}

void CloseLog() {
    if (!LogFileOpen)
        return;
    LogFile.close();
    LogFileOpen = false;
}

void WriteLogLine(std::string_view line) {
    if (!AutoLogOn || !LogFileOpen)
        return;
    LogFile << '"' << GeneralDate() << ": " << line << "\"\r\n";
    LogFile.flush();
}

} // namespace mw
