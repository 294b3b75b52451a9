#include "ui/Events.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace mw {
namespace {

constexpr qint64 kNoticed = 5; // milliseconds; nobody notices less

} // namespace

// Asked for at every line of a file, which takes less time than a look for events.
void DoEvents() {
    static QElapsedTimer since;
    if (since.isValid() && !since.hasExpired(kNoticed))
        return;
    QCoreApplication::processEvents();
    since.start();
}

} // namespace mw
