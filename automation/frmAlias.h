// The alias editor, for the table of the current macro set (automation/Aliases.h).
#pragma once

#include "automation/frmEntries.h"

#include <QCheckBox>

namespace mw {

class frmAlias : public frmEntries {
    Q_OBJECT

public:
    explicit frmAlias(QWidget* frame);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    std::vector<Entry> Entries() const override;
    bool Store(const std::string& text, const std::string& action) override;
    bool Change(std::int16_t index, const std::string& text, const std::string& action) override;
    void Remove(std::int16_t index) override;
    void SelectionChanged() override;

private:
    void KeepOnOneLine();
    void chkDisable_Click(bool checked);

    QCheckBox* chkDisable;
};

} // namespace mw
