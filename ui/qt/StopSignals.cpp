#include "ui/qt/StopSignals.h"

#include <QObject>
#include <QSocketNotifier>

#ifndef Q_OS_WIN
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace mw {

#ifdef Q_OS_WIN

// Windows tells its programs to stop by closing their windows.
void OnStopSignal(QObject*, const std::function<void()>&) {}

#else

namespace {

// A signal handler may do little more than write a byte; the event loop reads it.
int Pipe[2] = {-1, -1};

void WriteByte(int) {
    const char byte = 0;
    // A full pipe has told already.
    [[maybe_unused]] const ssize_t written = ::write(Pipe[1], &byte, 1);
}

} // namespace

void OnStopSignal(QObject* context, const std::function<void()>& stop) {
    if (::pipe2(Pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const notifier = new QSocketNotifier(Pipe[0], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [stop] {
        char bytes[16];
        [[maybe_unused]] const ssize_t read = ::read(Pipe[0], bytes, sizeof bytes);
        stop();
    });
    std::signal(SIGTERM, WriteByte);
    std::signal(SIGINT, WriteByte);
    if (std::signal(SIGHUP, WriteByte) == SIG_IGN) // it is to outlive its terminal
        std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN); // a warning may find its reader gone
}

#endif

} // namespace mw
