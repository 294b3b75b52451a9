#include "app/frmMain.h"

#include "app/MainFrame.h"
#include "app/Placement.h"
#include "app/StartUp.h"
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "automation/frmAlias.h"
#include "automation/frmInput.h"
#include "automation/frmMacros.h"
#include "automation/frmTrigger.h"
#include "browser/Browser.h"
#include "config/MudChooser.h"
#include "config/frmAddMud.h"
#include "config/frmConnect.h"
#include "config/frmSetup.h"
#include "net/Connection.h"
#include "sound/frmSndSetup.h"
#include "terminal/frmOutput.h"
#include "ui/UpdateControls.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/OutputView.h"
#include "ui/qt/Text.h"

#include <string_view>

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace mw {
namespace {

QPointer<frmMain> Frame; // the one main frame

struct Menu {
    const char* Name;
    const char* Caption;
};

constexpr Menu kMenus[] = {
    {"mnuFile", "&File"}, {"Windows", "&Windows"}, {"Conf", "&Configuration"},
    {"mnuHelp", "&Help"}, {"mnuMud", "&Mud"},
};

enum class Kind { Plain, Mark }; // a mark can be set

struct Item {
    const char* Menu;
    const char* Name;
    const char* Caption;
    Kind ItemKind;
    void (*Click)();
};

// Dialogs of the frame delete themselves.
template <typename Dialog> void Open() { (new Dialog(Frame))->show(); }

constexpr Item kItems[] = {
    {"mnuFile", "mnuExit", "&Exit", Kind::Plain, UnloadFrame},
    {"mnuFile", "mnuAutoLog", "Autolog Each Session", Kind::Plain, mnuAutoLog_Click},
    {"Windows", "GameW", "&Game Window", Kind::Plain, GameW_Click},
    {"Windows", "mnuMwWite", "&Quillmere Website", Kind::Plain, OpenWebSite},
    {"Conf", "Macros", "&Macros", Kind::Plain, Open<frmMacros>},
    {"Conf", "mnuTriggers", "&Triggers", Kind::Plain, Open<frmTrigger>},
    {"Conf", "mnuAlias", "&Alias's", Kind::Plain, Open<frmAlias>},
    {"Conf", "mnuEcho", "&Echo", Kind::Mark, mnuEcho_Click},
    {"Conf", "mnuSetUp", "&Fonts and Colours", Kind::Plain, Open<frmSetup>},
    {"Conf", "mnuInput", "&Keep Sent Text", Kind::Mark, mnuInput_Click},
    {"Conf", "mnuSound", "&Sound", Kind::Plain, Open<frmSndSetup>},
    {"Conf", "mnutoolbar", "&Enable Toolbar", Kind::Mark, mnutoolbar_Click},
    {"mnuHelp", "mnuGHlp", "&General Help", Kind::Plain, ShowHelp},
    {"mnuHelp", "mnuAbout", "About", Kind::Plain, Open<frmAbout>},
    {"mnuMud", "mnuConnect", "&Connect", Kind::Plain, ConnectToMud},
    {"mnuMud", "mnuDisconnect", "&Disconnect", Kind::Plain, DisconnectFromMud},
    {"mnuMud", "mnuADCmud", "&Add/Delete/Change Mud", Kind::Plain, Open<frmConnect>},
};

void AddItem(QMenu* menu, const Item& row) {
    QAction* const item = menu->addAction(frmMain::tr(row.Caption));
    item->setObjectName(row.Name);
    item->setCheckable(row.ItemKind == Kind::Mark);
    QObject::connect(item, &QAction::triggered, menu, [&row] { RunHandler(row.Name, row.Click); });
}

QLabel* AddValue(QBoxLayout* row, const char* name, const QString& caption) {
    auto* const title = new QLabel(caption);
    title->setForegroundRole(QPalette::PlaceholderText);
    auto* const value = new QLabel;
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    title->setBuddy(value);
    row->addSpacing(8);
    row->addWidget(title);
    row->addWidget(value);
    return value;
}

// Captions and hints are the text's colour, half seen. A desktop's palette may lack that, and
// theirs would be black on black.
void MakeHintsReadable() {
    constexpr int kHalf = 128;
    QPalette palette = QApplication::palette();
    QColor faint = palette.color(QPalette::Text);
    faint.setAlpha(kHalf);
    if (palette.color(QPalette::PlaceholderText) == faint)
        return;
    palette.setColor(QPalette::PlaceholderText, faint);
    QApplication::setPalette(palette);
}

} // namespace

frmMain::frmMain() : picTool(new QWidget), ClientArea(new QMdiArea), Input(new frmInput) {
    Frame = this;
    MakeHintsReadable();
    setObjectName("frmMain");
    setWindowTitle(ToQString(FrameCaption()));
    MakeMenus();
    MakeToolbar();
    MakeStatusBar();

    auto* const centre = new QWidget;
    auto* const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(picTool);
    column->addWidget(ClientArea, 1);
    column->addWidget(Input);
    setCentralWidget(centre);
    ClientArea->setBackground(palette().color(QPalette::Dark));

    connect(Input, &frmInput::pageKey, this, [this](QKeyEvent* event) {
        if (Output)
            Output->ScrollKey(*event);
    });
    ShowOutput();
    RunHandler("MDIForm_Load", MDIForm_Load);
    RunHandler("RestorePlacement", RestorePlacement);
    Input->setFocus();
}

frmMain::~frmMain() {
    // The output window first: what its end tells the frame still finds the frame's controls.
    delete Output;
}

// The output window goes first: with it the frame's placement is kept and the connection closed.
void frmMain::CloseOthers() {
    if (Output)
        Output->parentWidget()->close();
    QList<QPointer<QWidget>> windows; // one that is closed may take others with it
    for (QWidget* const window : QApplication::topLevelWidgets())
        windows.append(window);
    for (const QPointer<QWidget>& window : windows) {
        if (window && window != this && window->isVisible())
            window->close();
    }
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!SavingMode)
        RunHandler("MDIForm_Unload", MDIForm_Unload);
    event->accept();
}

void frmMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        MakeHintsReadable(); // the desktop has turned dark, or light
    QMainWindow::changeEvent(event);
}

void frmMain::ShowOutput() {
    if (Output && Output->parentWidget()->isHidden())
        delete Output->parentWidget(); // just closed, and to be deleted soon
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
    connect(Output, &frmOutput::tabKey, this, &frmMain::focusNextPrevChild);
}

// From the top of the frame to its end. The client area would keep the focus in the output, which
// is asked for by its boxes because it may be half gone: its end moves the focus.
bool frmMain::focusNextPrevChild(bool next) {
    const QWidget* const last = focusWidget();
    if (last && (!last->isEnabled() || !last->isVisibleTo(this))) {
        Input->setFocus(); // what can't be used any more leaves it to the command line
        return true;
    }
    QList<QWidget*> stops{closeOutput, Chooser, cmdConn, cmdDisco, cmdNew, cmdDel};
    for (OutputView* const box : ClientArea->findChildren<OutputView*>())
        stops << box;
    stops << Input->focusProxy();
    stops.removeIf(
        [this](const QWidget* stop) { return !stop->isVisibleTo(this) || !stop->isEnabled(); });
    if (stops.isEmpty())
        return false;
    const qsizetype at = stops.indexOf(focusWidget());
    const qsizetype count = stops.size();
    stops[(at + (next ? 1 : count - 1)) % count]->setFocus(next ? Qt::TabFocusReason
                                                                : Qt::BacktabFocusReason);
    return true;
}

void frmMain::MakeMenus() {
    for (const Menu& row : kMenus) {
        QMenu* const menu = menuBar()->addMenu(tr(row.Caption));
        menu->menuAction()->setObjectName(row.Name);
        for (const Item& item : kItems) {
            if (std::string_view(item.Menu) == row.Name)
                AddItem(menu, item);
        }
    }
    findChild<QAction*>("mnuDisconnect")->setEnabled(false);
    MakeCloseButton();
}

// The output window fills the client area and has no title bar, so its close button stands at the
// end of the menu bar.
void frmMain::MakeCloseButton() {
    closeOutput = new QToolButton;
    closeOutput->setObjectName("closeOutput");
    closeOutput->setAutoRaise(true);
    closeOutput->setFocusPolicy(Qt::TabFocus);
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

void frmMain::MakeToolbar() {
    picTool->setObjectName("picTool");
    auto* const row = new QHBoxLayout(picTool);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(6);

    auto* const lbllName = new QLabel(tr("M&ud"));
    lbllName->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(lbllName);
    Chooser = new MudCombo;
    lbllName->setBuddy(Chooser);
    row->addWidget(Chooser);
    connect(Chooser, &QComboBox::activated, this, [](int index) {
        RunHandler("cboMud_Click", [index] { cboMud_Click(static_cast<std::int16_t>(index)); });
    });
    lblAddress = AddValue(row, "lblAddress", tr("Address"));
    lblPort = AddValue(row, "lblPort", tr("Port"));
    row->addStretch(1);
    cmdConn = AddButton(row, "cmdConn", tr("C&onnect"), ConnectToMud);
    cmdDisco = AddButton(row, "cmdDisco", tr("&Disconnect"), DisconnectFromMud);
    cmdDisco->setEnabled(false);
    cmdNew = AddButton(row, "cmdNew", tr("&New"), Open<frmAddMud>);
    cmdDel = AddButton(row, "cmdDel", tr("De&lete"), DeleteMud);
}

void frmMain::MakeStatusBar() {
    const char* const names[] = {"State", "Notices", "Session clock"};
    const int stretches[] = {2, 3, 0};
    statusBar()->setObjectName("stsBar");
    statusBar()->setContentsMargins(6, 0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        Panels[i] = new QLabel;
        Panels[i]->setTextFormat(Qt::PlainText);
        Panels[i]->setAccessibleDescription(tr(names[i])); // its name is what it shows
        Panels[i]->setObjectName(QStringLiteral("panel%1").arg(i + 1));
        Panels[i]->setMinimumWidth(i == 2 ? 80 : 1);
        statusBar()->addWidget(Panels[i], stretches[i]);
    }
    Panels[2]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QObject* frmMain::Object(FrameControl control) const {
    const auto action = [this](const char* name) { return findChild<QAction*>(name); };
    switch (control) {
    case FrameControl::cmdConn:
        return cmdConn;
    case FrameControl::cmdDisco:
        return cmdDisco;
    case FrameControl::cmdNew:
        return cmdNew;
    case FrameControl::cmdDel:
        return cmdDel;
    case FrameControl::cboMud:
        return Chooser;
    case FrameControl::picTool:
        return picTool;
    case FrameControl::mnuConnect:
        return action("mnuConnect");
    case FrameControl::mnuDisconnect:
        return action("mnuDisconnect");
    case FrameControl::mnuADCmud:
        return action("mnuADCmud");
    case FrameControl::mnuMud:
        return action("mnuMud");
    case FrameControl::mnutoolbar:
        return action("mnutoolbar");
    case FrameControl::mnuEcho:
        return action("mnuEcho");
    case FrameControl::mnuInput:
        return action("mnuInput");
    }
    return nullptr;
}

// Widgets and menu items have their state in properties of the same names.

void SetEnabled(FrameControl control, bool enabled) {
    if (Frame)
        Frame->Object(control)->setProperty("enabled", enabled);
}

void SetVisible(FrameControl control, bool visible) {
    if (Frame)
        Frame->Object(control)->setProperty("visible", visible);
}

bool IsVisible(FrameControl control) {
    return Frame && Frame->Object(control)->property("visible").toBool();
}

void SetChecked(FrameControl item, bool checked) {
    if (Frame)
        Frame->Object(item)->setProperty("checked", checked);
}

namespace stsBar {

void SetPanel(Panel panel, std::string_view text) {
    if (!Frame)
        return;
    QString line = ToQString(text);
    for (QChar& character : line)
        character = character < ' ' ? QChar(' ') : character; // a server's line breaks among them
    Frame->Panels[panel - 1]->setText(line);
    Frame->Panels[panel - 1]->setToolTip(line.toHtmlEscaped()); // it may be cut
}

} // namespace stsBar

void lblAddress::SetCaption(std::string_view text) {
    constexpr int kWidest = 240; // pixels; a longer address is cut and shown whole as a tool tip
    const QString address = ToQString(text);
    if (!Frame)
        return;
    Frame->lblAddress->setText(
        Frame->lblAddress->fontMetrics().elidedText(address, Qt::ElideRight, kWidest));
    Frame->lblAddress->setToolTip(address.toHtmlEscaped());
    Frame->lblAddress->setAccessibleName(address);
}

void lblPort::SetCaption(std::string_view text) {
    if (Frame)
        Frame->lblPort->setText(ToQString(text));
}

void ShowOutputWindow() {
    if (Frame)
        Frame->ShowOutput();
}

// Lives until the program ends: a message box of its own may still be open when it is closed.
void ShowFrame() {
    auto* const frame = new frmMain;
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, frame, &QObject::deleteLater);
    frame->show();
    ShowUpdatePrompt(); // it stays in front of the frame
    QTimer::singleShot(0, frame, [] {
        if (!SavingMode) // it may have been told to stop meanwhile
            RunHandler("ConnectAsAsked", ConnectAsAsked);
    });
}

bool FrameIsShown() { return Frame && Frame->isVisible(); }

void UnloadFrame() {
    if (Frame)
        Frame->close();
}

void UnloadOtherForms() {
    if (Frame)
        Frame->CloseOthers();
}

Rectangle FramePlace() {
    const QRect place = Frame ? Frame->normalGeometry() : QRect();
    return {place.x(), place.y(), place.width(), place.height()};
}

WindowState FrameState() {
    if (!Frame || !(Frame->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)))
        return WindowState::Normal;
    return Frame->isMinimized() ? WindowState::Minimised : WindowState::Maximised;
}

void PlaceFrame(const Rectangle& place, WindowState state) {
    if (!Frame)
        return;
    Frame->setGeometry(place.Left, place.Top, place.Width, place.Height);
    if (state == WindowState::Maximised)
        Frame->setWindowState(Qt::WindowMaximized);
}

std::vector<Rectangle> Screens() {
    std::vector<Rectangle> all;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        all.push_back({area.x(), area.y(), area.width(), area.height()});
    }
    return all;
}

} // namespace mw
