// The main frame: menus, toolbar, the output window, the command line and the status bar.
//
// Menus and buttons call the modules; what is shown and enabled is set by the modules through
// ui/FrameControls.h, which this form implements.
#pragma once

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
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

    QComboBox* cboMud;
    QLabel* lblAddress;
    QLabel* lblPort;
    QPushButton* cmdConn;
    QPushButton* cmdDisco;
    QPushButton* cmdNew;
    QPushButton* cmdDel;
    QAction* mnuConnect;
    QAction* mnuDisconnect;
    QAction* mnuADCmud;
    QMenu* mnuMud;
    QToolButton* closeOutput;
    QLabel* Panels[3];

private:
    void MakeMenus();
    void MakeCloseButton();
    QWidget* MakeToolbar();
    void MakeStatusBar();

    QMdiArea* ClientArea;
    frmInput* Input;
    QPointer<frmOutput> Output;
};

} // namespace mw
