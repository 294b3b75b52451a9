#include "ui/Events.h"

#include <QCoreApplication>

namespace mw {

void DoEvents() { QCoreApplication::processEvents(); }

} // namespace mw
