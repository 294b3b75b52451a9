#include "Wait.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace journey {
namespace {

// From one look to the next: what is quick is seen soon, and what takes long costs few looks.
constexpr int kShortestMs = 2;
constexpr int kLongestMs = 32;

// Sockets and processes are served meanwhile.
void LetEventsRun(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

bool Becomes(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    QElapsedTimer clock;
    clock.start();
    for (int ms = kShortestMs; !condition(); ms = std::min(2 * ms, kLongestMs)) {
        if (clock.hasExpired(limit.count()))
            return false;
        LetEventsRun(ms);
    }
    return true;
}

void WaitFor(const std::string& what, const std::function<bool()>& condition) {
    if (!Becomes(condition))
        throw std::runtime_error("Waited " + std::to_string(kLimit.count()) + " s for " + what);
}

void StartChild(QProcess& process, const QString& program, const QStringList& arguments) {
    // Also when this program is killed, nothing it started stays behind.
    process.setChildProcessModifier([] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::signal(SIGHUP, SIG_DFL); // also below nohup
    });
    process.start(program, arguments);
    if (!process.waitForStarted())
        throw std::runtime_error("Can't start " + program.toStdString());
}

void StopChild(QProcess& process) {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (process.waitForFinished(5000))
        return;
    process.kill();
    process.waitForFinished(5000);
}

std::string Escaped(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code >= ' ' && code <= '~' && code != '%')
            text += byte;
        else
            text += {'%', kDigits[code / 16], kDigits[code % 16]};
    }
    return text;
}

} // namespace journey
