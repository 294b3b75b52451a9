#include "app/frmMain.h"

#include "app/MainFrame.h"
#include "automation/frmAlias.h"
#include "automation/frmInput.h"
#include "automation/frmMacros.h"
#include "automation/frmTrigger.h"
#include "net/Connection.h"
#include "terminal/frmOutput.h"
#include "ui/FrameControls.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/Text.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>

namespace mw {
namespace {

QPointer<frmMain> Frame; // the one main frame

QAction* AddItem(QMenu* menu, const char* name, const QString& caption,
                 const std::function<void()>& handler) {
    QAction* const item = menu->addAction(caption);
    item->setObjectName(name);
    QObject::connect(item, &QAction::triggered, menu,
                     [name, handler] { RunHandler(name, handler); });
    return item;
}

QPushButton* AddButton(QBoxLayout* row, const char* name, const QString& caption,
                       const std::function<void()>& handler) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    QObject::connect(button, &QPushButton::clicked, button,
                     [name, handler] { RunHandler(name, handler); });
    row->addWidget(button);
    return button;
}

QLabel* AddValue(QBoxLayout* row, const char* name, const QString& caption) {
    auto* const title = new QLabel(caption);
    title->setForegroundRole(QPalette::PlaceholderText);
    auto* const value = new QLabel;
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    value->setAccessibleName(caption);
    row->addSpacing(8);
    row->addWidget(title);
    row->addWidget(value);
    return value;
}

} // namespace

frmMain::frmMain() : ClientArea(new QMdiArea), Input(new frmInput) {
    Frame = this;
    setObjectName("frmMain");
    setWindowTitle(ToQString(FrameCaption()));
    MakeMenus();
    MakeStatusBar();

    auto* const centre = new QWidget;
    auto* const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(MakeToolbar());
    column->addWidget(ClientArea, 1);
    column->addWidget(Input);
    setCentralWidget(centre);
    ClientArea->setBackground(palette().color(QPalette::Dark));
    resize(1000, 700);

    connect(Input, &frmInput::pageKey, this, [this](QKeyEvent* event) {
        if (Output)
            Output->ScrollKey(*event);
    });
    ShowOutput();
    RunHandler("MDIForm_Load", MDIForm_Load);
    Input->setFocus();
}

frmMain::~frmMain() {
    // The output window first: what its end tells the frame still finds the frame's controls.
    delete Output;
}

void frmMain::ShowOutput() {
    if (Output) {
        ClientArea->setActiveSubWindow(ClientArea->subWindowList().value(0));
        return;
    }
    Output = new frmOutput;
    QMdiSubWindow* const window =
        ClientArea->addSubWindow(Output, Qt::SubWindow | Qt::CustomizeWindowHint);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(QIcon());
    window->showMaximized();
    closeOutput->show();
    connect(Output, &QObject::destroyed, closeOutput, &QWidget::hide);
}

void frmMain::MakeMenus() {
    QMenu* const mnuFile = menuBar()->addMenu(tr("&File"));
    AddItem(mnuFile, "mnuExit", tr("&Exit"), UnloadFrame);

    QMenu* const windows = menuBar()->addMenu(tr("&Windows"));
    AddItem(windows, "GameW", tr("&Game Window"), GameW_Click);

    QMenu* const configuration = menuBar()->addMenu(tr("&Configuration"));
    AddItem(configuration, "Macros", tr("&Macros"), [this] { (new frmMacros(this))->show(); });
    AddItem(configuration, "mnuTriggers", tr("&Triggers"),
            [this] { (new frmTrigger(this))->show(); });
    AddItem(configuration, "mnuAlias", tr("&Alias's"), [this] { (new frmAlias(this))->show(); });

    // The Mud menu takes the toolbar's place when that is switched off.
    mnuMud = menuBar()->addMenu(tr("&Mud"));
    mnuConnect = AddItem(mnuMud, "mnuConnect", tr("&Connect"), ConnectToMud);
    mnuDisconnect = AddItem(mnuMud, "mnuDisconnect", tr("&Disconnect"), DisconnectFromMud);
    mnuADCmud = AddItem(mnuMud, "mnuADCmud", tr("&Add/Delete/Change Mud"), [] {});
    mnuDisconnect->setEnabled(false);
    mnuMud->menuAction()->setVisible(false);
    mnuMud->setEnabled(false);
    MakeCloseButton();
}

// The output window fills the client area and has no title bar, so its close button stands at the
// end of the menu bar.
void frmMain::MakeCloseButton() {
    closeOutput = new QToolButton;
    closeOutput->setObjectName("closeOutput");
    closeOutput->setAutoRaise(true);
    closeOutput->setFocusPolicy(Qt::NoFocus);
    closeOutput->setIconSize({12, 12}); // with its margin no higher than the menu bar
    closeOutput->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    closeOutput->setToolTip(tr("Close the game window"));
    closeOutput->setAccessibleName(closeOutput->toolTip());
    connect(closeOutput, &QToolButton::clicked, this, [this] {
        if (Output)
            Output->parentWidget()->close();
    });
    menuBar()->setCornerWidget(closeOutput);
}

QWidget* frmMain::MakeToolbar() {
    auto* const picTool = new QWidget;
    picTool->setObjectName("picTool");
    auto* const row = new QHBoxLayout(picTool);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(6);

    auto* const lbllName = new QLabel(tr("Mud"));
    lbllName->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(lbllName);
    cboMud = new QComboBox;
    cboMud->setObjectName("cboMud");
    cboMud->setAccessibleName(tr("Mud"));
    cboMud->setMinimumWidth(180);
    cboMud->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    row->addWidget(cboMud);
    connect(cboMud, &QComboBox::activated, this, [](int index) {
        RunHandler("cboMud_Click", [index] { cboMud_Click(static_cast<std::int16_t>(index)); });
    });
    lblAddress = AddValue(row, "lblAddress", tr("Address"));
    lblPort = AddValue(row, "lblPort", tr("Port"));
    row->addStretch(1);
    cmdConn = AddButton(row, "cmdConn", tr("C&onnect"), ConnectToMud);
    cmdDisco = AddButton(row, "cmdDisco", tr("&Disconnect"), DisconnectFromMud);
    cmdDisco->setEnabled(false);
    cmdNew = AddButton(row, "cmdNew", tr("&New"), [] {});
    cmdDel = AddButton(row, "cmdDel", tr("D&elete"), [] {});
    cmdNew->hide();
    cmdDel->hide();
    return picTool;
}

void frmMain::MakeStatusBar() {
    const char* const names[] = {"State", "Notices", "Session clock"};
    const int stretches[] = {3, 3, 0};
    statusBar()->setObjectName("stsBar");
    for (int i = 0; i < 3; ++i) {
        Panels[i] = new QLabel;
        Panels[i]->setTextFormat(Qt::PlainText);
        Panels[i]->setAccessibleName(tr(names[i]));
        Panels[i]->setObjectName(QStringLiteral("panel%1").arg(i + 1));
        Panels[i]->setMinimumWidth(i == 2 ? 80 : 1);
        statusBar()->addWidget(Panels[i], stretches[i]);
    }
    Panels[2]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void SetEnabled(FrameControl control, bool enabled) {
    if (!Frame)
        return;
    switch (control) {
    case FrameControl::cmdConn:
        return Frame->cmdConn->setEnabled(enabled);
    case FrameControl::cmdDisco:
        return Frame->cmdDisco->setEnabled(enabled);
    case FrameControl::cmdNew:
        return Frame->cmdNew->setEnabled(enabled);
    case FrameControl::cmdDel:
        return Frame->cmdDel->setEnabled(enabled);
    case FrameControl::cboMud:
        return Frame->cboMud->setEnabled(enabled);
    case FrameControl::mnuConnect:
        return Frame->mnuConnect->setEnabled(enabled);
    case FrameControl::mnuDisconnect:
        return Frame->mnuDisconnect->setEnabled(enabled);
    case FrameControl::mnuADCmud:
        return Frame->mnuADCmud->setEnabled(enabled);
    }
}

namespace stsBar {

void SetPanel(Panel panel, std::string_view text) {
    if (Frame)
        Frame->Panels[panel - 1]->setText(ToQString(text));
}

} // namespace stsBar

namespace cboMud {

void AddItem(std::string_view name) { Frame->cboMud->addItem(ToQString(name)); }

void SetListIndex(std::int16_t index) { Frame->cboMud->setCurrentIndex(index); }

std::string Text() { return FromQString(Frame->cboMud->currentText()); }

} // namespace cboMud

void lblAddress::SetCaption(std::string_view text) {
    constexpr int kWidest = 240; // pixels; a longer address is cut and shown whole as a tool tip
    const QString address = ToQString(text);
    Frame->lblAddress->setText(
        Frame->lblAddress->fontMetrics().elidedText(address, Qt::ElideRight, kWidest));
    Frame->lblAddress->setToolTip(address.toHtmlEscaped());
}

void lblPort::SetCaption(std::string_view text) { Frame->lblPort->setText(ToQString(text)); }

void ShowOutputWindow() { Frame->ShowOutput(); }

void UnloadFrame() { Frame->close(); }

} // namespace mw
