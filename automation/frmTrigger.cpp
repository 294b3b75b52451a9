#include "automation/frmTrigger.h"

#include "automation/Macros.h"
#include "automation/Triggers.h"

namespace mw {

frmTrigger::frmTrigger(QWidget* frame) : frmEntries("frmTrigger", tr("Triggers"), frame) {
    List->setObjectName("lstTrigger");
    List->setAccessibleName(tr("Triggers"));
    Text->setObjectName("txtTrigger");
    Action->setObjectName("txtAction");
    TextLabel->setText(tr("W&hen a line contains"));
    ActionLabel->setText(tr("send this &reaction"));
    Refill();
    Browse();
}

// Every entry is shown, an empty one too.
std::vector<frmEntries::Entry> frmTrigger::Entries() const {
    std::vector<Entry> entries;
    for (const TriggerEntry& trigger : CurrentSet().Triggers.Entries())
        entries.push_back(
            {static_cast<std::int16_t>(entries.size()), trigger.Trigger, trigger.React, false});
    return entries;
}

bool frmTrigger::Store(const std::string& text, const std::string& action) {
    return AddTrigger(text, action);
}

bool frmTrigger::Change(std::int16_t index, const std::string& text, const std::string& action) {
    return ChangeTrigger(index, text, action);
}

void frmTrigger::Remove(std::int16_t index) { DeleteTrigger(index); }

} // namespace mw
