// The system's wish that the program stops: SIGTERM, SIGINT and SIGHUP.
#pragma once

#include <functional>

class QObject;

namespace mw {

// Has stop called from the event loop when one of the signals arrives, as long as context lives.
// Without an event loop the signals wait for one. SIGPIPE is ignored from then on.
void OnStopSignal(QObject* context, const std::function<void()>& stop);

} // namespace mw
