// The macro key editor: the F keys, Alt and Ctrl letters of the current macro set, and new sets.
//
// The sets are automation/Macros.h's; the boxes are stored by "Done" alone.
#pragma once

#include "ui/qt/WindowsOnTop.h"

#include <array>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace mw {

class frmMacros : public LockedDialog {
    Q_OBJECT

public:
    explicit frmMacros(QWidget* frame);

private:
    QWidget* MakePanel(QLineEdit** boxes, int count, const char* name, const QString& prefix,
                       int firstKey);
    void FillSets();
    void ShowTexts();
    void cboMacro_Click(int index);
    void cmdNMacro_Click();
    void cmdDone_Click();

    QComboBox* cboMacro;
    QPushButton* cmdNMacro;
    QTabWidget* tsbMacros;
    QPushButton* cmdDone;
    std::array<QLineEdit*, 12> txtF{};
    std::array<QLineEdit*, 26> TxtAlt{};
    std::array<QLineEdit*, 26> txtCtrl{};
};

} // namespace mw
