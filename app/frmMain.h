// The main frame: menus, toolbar, the output window, the command line and the status bar.
//
// Menus and buttons call the modules; what is shown and enabled is set by the modules through
// ui/FrameControls.h, which this form implements.
#pragma once

#include "ui/FrameControls.h"
#include "ui/qt/MudCombo.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

namespace mw {

class frmInput;
class frmOutput;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    frmMain();
    ~frmMain() override;

    // Shows the output window, anew when it was closed, filling the client area.
    void ShowOutput();

    // Closes every window but this one.
    void CloseOthers();

    // The object behind a control: a widget or a menu's item.
    QObject* Object(FrameControl control) const;

    QWidget* picTool;
    MudCombo* Chooser; // cboMud
    QLabel* lblAddress;
    QLabel* lblPort;
    QPushButton* cmdConn;
    QPushButton* cmdDisco;
    QPushButton* cmdNew;
    QPushButton* cmdDel;
    QToolButton* closeOutput;
    QLabel* Panels[3];

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void MakeMenus();
    void MakeCloseButton();
    void MakeToolbar();
    void MakeStatusBar();

    QMdiArea* ClientArea;
    frmInput* Input;
    QPointer<frmOutput> Output;
};

} // namespace mw
