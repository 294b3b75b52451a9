// The sound options of the current game.
#pragma once

#include "ui/qt/WindowsOnTop.h"

#include <QCheckBox>
#include <QPushButton>

namespace mw {

class frmSndSetup : public LockedDialog {
    Q_OBJECT

public:
    explicit frmSndSetup(QWidget* frame);

    QCheckBox* chkMSP;
    QCheckBox* chkWave;
    QCheckBox* chkMidi;
    QCheckBox* chkDownloads;
    QPushButton* cmdDone;

private:
    QCheckBox* AddBox(QLayout* column, const char* name, const QString& caption,
                      void (*handler)(bool));
    void ShowSwitches();
};

} // namespace mw
