#include "automation/Triggers.h"

#include "automation/Macros.h"
#include "net/Send.h"

namespace mw {

void CheckTriggers(std::string_view line) {
    if (line.empty() || CurrentSet().Triggers[0].Trigger.empty())
        return;
    for (const TriggerEntry& entry : CurrentSet().Triggers) {
        if (line.find(entry.Trigger) != std::string_view::npos)
            SendLine(entry.React);
    }
}

} // namespace mw
