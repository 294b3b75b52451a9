// The dialog that adds a game to the list.
#pragma once

#include "ui/qt/WindowsOnTop.h"

#include <QLineEdit>
#include <QPushButton>

namespace mw {

class frmAddMud : public LockedDialog {
    Q_OBJECT

public:
    explicit frmAddMud(QWidget* frame);

    QLineEdit* txtmName;
    QLineEdit* txtmAddress;
    QLineEdit* txtmPort;
    QPushButton* cmdmAdd;
    QPushButton* cmdCancel;

private:
    void cmdmAdd_Click();
};

} // namespace mw
