// The prompt that announces a newer client. Stands beside the splash and the main frame, which go
// on behind it.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace mw {

class frmUpdate : public QDialog {
    Q_OBJECT

public:
    frmUpdate();

    QLabel* lblCurVer;
    QLabel* lblCurVersion;
    QLabel* lblYourVersion;
    QCheckBox* chkShow;
    QPushButton* cmdYes;
    QPushButton* cmdNo;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Answer(void (*handler)(bool));
};

} // namespace mw
