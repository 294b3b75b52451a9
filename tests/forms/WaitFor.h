// Waiting without delay for what takes hundreds of steps.
#pragma once

#include <algorithm>
#include <functional>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

namespace forms {

// Lets events run until the condition holds; false when that takes too long. It looks behind every
// event: QTest::qWaitFor would sleep ten milliseconds between two of them.
inline bool WaitFor(const std::function<bool()>& condition) {
    constexpr int kLimit = 15000; // milliseconds
    QElapsedTimer clock;
    clock.start();
    QTimer tick;
    tick.start(1);
    while (!condition()) {
        if (clock.elapsed() > kLimit)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

// Whether a timer of an object or of its children wakes the program.
inline bool TimerRunsIn(const QObject& object) {
    const auto timers = object.findChildren<QTimer*>();
    return std::any_of(timers.begin(), timers.end(), [](QTimer* t) { return t->isActive(); });
}

} // namespace forms
