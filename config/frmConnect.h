// The dialog in which games are chosen, added and deleted while the toolbar is switched off.
#pragma once

#include "ui/qt/MudCombo.h"
#include "ui/qt/WindowsOnTop.h"

#include <QLabel>
#include <QPushButton>

namespace mw {

class frmConnect : public LockedDialog {
    Q_OBJECT

public:
    explicit frmConnect(QWidget* frame);

    MudCombo* Chooser; // cboMud
    QLabel* lblMud;
    QLabel* lblPort;
    QPushButton* cmdAdd;
    QPushButton* cmdDelete;
    QPushButton* cmdDone;

private:
    void ShowSelected();
};

} // namespace mw
