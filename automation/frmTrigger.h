// The trigger editor, for the table of the current macro set (automation/Triggers.h).
#pragma once

#include "automation/frmEntries.h"

namespace mw {

class frmTrigger : public frmEntries {
    Q_OBJECT

public:
    explicit frmTrigger(QWidget* frame);

protected:
    std::vector<Entry> Entries() const override;
    bool Store(const std::string& text, const std::string& action) override;
    bool Change(std::int16_t index, const std::string& text, const std::string& action) override;
    void Remove(std::int16_t index) override;
};

} // namespace mw
