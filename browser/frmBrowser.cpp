#include "browser/frmBrowser.h"

#include "base/Notice.h"
#include "browser/Browser.h"
#include "ui/BrowserControls.h"
#include "ui/qt/BoxNames.h"
#include "ui/qt/ChoiceBox.h"
#include "ui/qt/EventBoundary.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QKeyEvent>
#include <QLibrary>
#include <QLineEdit>
#include <QOpenGLContext>
#include <QPointer>
#include <QStyle>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

QT_BEGIN_NAMESPACE
// Of QtGui, which has it in no header.
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
QT_END_NAMESPACE

namespace mw {
namespace {

constexpr int kNavInterval = 250;      // milliseconds
constexpr int kLeftOfAddressBox = 100; // pixels that stay free beside it

QPointer<frmBrowser> Form; // the one browser window

// Beside the program, or where both are installed; tests say it themselves. Empty when it is
// nowhere.
QString PluginFile() {
    const QString name = QStringLiteral("libquillmere-pageview.so");
    const QString folder = QCoreApplication::applicationDirPath();
    for (const QString& file : {qEnvironmentVariable("QUILLMERE_PAGE_VIEW"), folder + '/' + name,
                                folder + "/" QUILLMERE_PAGE_VIEW_FOLDER "/" + name}) {
        if (!file.isEmpty() && QFile::exists(file))
            return file;
    }
    return {};
}

// A web engine that is loaded late wants what it would have prepared at the program's start.
void PrepareForWebEngine() {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    auto* const context = new QOpenGLContext(qApp);
    context->create();
    qt_gl_set_global_share_context(context);
#ifndef Q_OS_WIN
    if (::geteuid() == 0) { // its sandbox refuses to run as root
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        ShowNotice("Web pages are shown without their sandbox, because you are root");
    }
#endif
}

} // namespace

PageView* LoadPageView() {
    static const auto make = []() -> MakePageView {
        const QString file = PluginFile();
        if (file.isEmpty())
            return nullptr;
        PrepareForWebEngine();
        return reinterpret_cast<MakePageView>(QLibrary::resolve(file, kMakePageView));
    }();
    return make == nullptr ? nullptr : make(nullptr);
}

frmBrowser::frmBrowser(PageView* view)
    : Menu(new QMenuBar(this)), tbrMain(new QToolBar(this)), cboAdd(new ChoiceBox(this)),
      wbrScreen(view), lblWork(new QLabel(this)) {
    Form = this;
    setObjectName("frmBrowser");
    setWindowTitle(tr("Web Browser"));
    setAttribute(Qt::WA_DeleteOnClose);
    wbrScreen->Widget()->setParent(this);
    wbrScreen->NavigateComplete = [] {
        RunHandler("wbrScreen_NavigateComplete", wbrScreen_NavigateComplete);
    };

    QAction* const mnuExit =
        Menu->addMenu(tr("&File"))->addAction(tr("E&xit"), this, &QWidget::close);
    mnuExit->setObjectName("mnuExit");
    tbrMain->setObjectName("tbrMain");
    tbrMain->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    AddButton("Back", QStyle::SP_ArrowBack, tr("To the page before"));
    AddButton("Forward", QStyle::SP_ArrowForward, tr("To the page after"));
    AddButton("Stop", QStyle::SP_BrowserStop, tr("Stop loading"));
    AddButton("Home", QStyle::SP_DirHomeIcon, tr("To the first page"));
    AddButton("Refresh", QStyle::SP_BrowserReload, tr("Load the page again"));

    cboAdd->setObjectName("cboAdd");
    cboAdd->setEditable(true);
    NameBox(cboAdd, tr("Address"));
    cboAdd->setInsertPolicy(QComboBox::NoInsert); // the list is the module's
    cboAdd->setCompleter(nullptr);
    cboAdd->installEventFilter(this);
    // Leaving the box is no choice of an entry, though its text may be one.
    disconnect(cboAdd->lineEdit(), &QLineEdit::editingFinished, cboAdd, nullptr);
    connect(cboAdd, &QComboBox::activated, this, [] { RunHandler("cboAdd_Click", cboAdd_Click); });
    lblWork->setObjectName("lblWork");
    lblWork->setTextFormat(Qt::PlainText);
    lblWork->setContentsMargins(6, 2, 6, 2);
    lblWork->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    timNav.setInterval(kNavInterval);
    connect(&timNav, &QTimer::timeout, this, [] { RunHandler("timNav_Timer", timNav_Timer); });
    resize(900, 640);
    setMinimumSize(300, 200);
    setTabOrder(tbrMain, cboAdd);
    setTabOrder(cboAdd, wbrScreen->Widget());
    RunHandler("frmBrowser_Load", frmBrowser_Load);
}

// What the controls tell while they go finds no window any more.
frmBrowser::~frmBrowser() { Form.clear(); }

void frmBrowser::AddButton(const char* key, QStyle::StandardPixmap icon, const QString& toolTip) {
    QAction* const button = tbrMain->addAction(style()->standardIcon(icon), tr(key));
    button->setObjectName(key);
    button->setToolTip(toolTip);
    tbrMain->widgetForAction(button)->setFocusPolicy(Qt::TabFocus);
    connect(button, &QAction::triggered, this,
            [key] { RunHandler("tbrMain_ButtonClick", [key] { tbrMain_ButtonClick(key); }); });
}

void frmBrowser::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int menuHeight = Menu->sizeHint().height();
    const int barHeight = tbrMain->sizeHint().height();
    const int boxHeight = cboAdd->sizeHint().height();
    const int labelHeight = lblWork->sizeHint().height();
    Menu->setGeometry(0, 0, width(), menuHeight);
    tbrMain->setGeometry(0, menuHeight, width(), barHeight);
    const int boxTop = menuHeight + barHeight;
    if (width() > kLeftOfAddressBox)
        cboAdd->setGeometry(0, boxTop, width() - kLeftOfAddressBox, boxHeight);
    const int viewTop = boxTop + boxHeight;
    const int labelTop = height() - labelHeight;
    lblWork->setGeometry(0, labelTop, width(), labelHeight);
    wbrScreen->Widget()->setGeometry(0, viewTop, width(), qMax(0, labelTop - viewTop));
}

// An editable combo box has the keys itself.
bool frmBrowser::eventFilter(QObject* watched, QEvent* event) {
    if (watched != cboAdd || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    RunHandler("cboAdd_KeyPress", [] { cboAdd_KeyPress('\r'); });
    return true;
}

void ShowBrowser() {
    if (!Form) {
        PageView* const view = LoadPageView();
        if (view == nullptr) {
            ShowNotice(
                "The web page opens in the system's browser: the page view is not installed");
            QDesktopServices::openUrl(QUrl(QString::fromStdString(StartAddress)));
            return;
        }
        new frmBrowser(view);
    }
    Form->setWindowState(Form->windowState() & ~Qt::WindowMinimized);
    Form->show();
    Form->raise();
    Form->activateWindow();
}

void SetBrowserCaption(const std::string& text) {
    if (Form)
        Form->setWindowTitle(QString::fromStdString(text));
}

void SetWorkCaption(const std::string& text) {
    if (Form)
        Form->lblWork->setText(QString::fromStdString(text));
}

void SetNavTimer(bool enabled) {
    if (!Form)
        return;
    if (enabled)
        Form->timNav.start();
    else
        Form->timNav.stop();
}

namespace cboAdd {

std::string Text() { return Form ? Form->cboAdd->currentText().toStdString() : std::string(); }

void SetText(const std::string& text) {
    if (Form)
        Form->cboAdd->setEditText(QString::fromStdString(text));
}

void AddItem(const std::string& text) {
    if (Form)
        Form->cboAdd->addItem(QString::fromStdString(text));
}

} // namespace cboAdd

namespace wbrScreen {

void Navigate(const std::string& address) {
    if (Form)
        Form->wbrScreen->Navigate(QUrl(QString::fromStdString(address)));
}

void GoBack() {
    if (Form)
        Form->wbrScreen->GoBack();
}

void GoForward() {
    if (Form)
        Form->wbrScreen->GoForward();
}

void Stop() {
    if (Form)
        Form->wbrScreen->Stop();
}

void Refresh() {
    if (Form)
        Form->wbrScreen->Refresh();
}

bool Busy() { return Form && Form->wbrScreen->Busy(); }

std::string LocationName() {
    return Form ? Form->wbrScreen->LocationName().toStdString() : std::string();
}

std::string LocationURL() {
    return Form ? Form->wbrScreen->LocationURL().toString().toStdString() : std::string();
}

} // namespace wbrScreen
} // namespace mw
