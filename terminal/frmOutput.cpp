#include "terminal/frmOutput.h"

#include "automation/CommandLine.h"
#include "automation/frmInput.h"
#include "net/Connection.h"
#include "terminal/OutPutScroll.h"
#include "terminal/Output.h"
#include "ui/OutputControls.h"
#include "ui/Socket.h"
#include "ui/Timers.h"
#include "ui/qt/Announcer.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/GameSocket.h"
#include "ui/qt/KeyCodes.h"
#include "ui/qt/OutputFont.h"
#include "ui/qt/OutputView.h"
#include "ui/qt/Text.h"

#include <deque>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace mw {
namespace {

constexpr int kBarFrame = 16;          // milliseconds
constexpr std::int32_t kHookToken = 1; // there is one way the box handled its messages before

QPointer<frmOutput> Form; // null while the window is closed

// The looks of text that were made last; a game uses a handful. Making one takes microseconds.
const QTextCharFormat& FormatOf(std::int32_t colour, const std::string& fontName,
                                const std::string& fontSize) {
    struct Look {
        std::int32_t Colour;
        std::string FontName;
        std::string FontSize;
        QTextCharFormat Format;
    };
    constexpr std::size_t kMostLooks = 64;
    static std::deque<Look> looks;
    for (const Look& look : looks) {
        if (look.Colour == colour && look.FontName == fontName && look.FontSize == fontSize)
            return look.Format;
    }
    if (looks.size() == kMostLooks)
        looks.pop_front();
    QTextCharFormat format;
    format.setFont(OutputFont(fontName, fontSize));
    format.setForeground(QColor(colour & 255, (colour >> 8) & 255, (colour >> 16) & 255));
    looks.push_back({colour, fontName, fontSize, format});
    return looks.back().Format;
}

} // namespace

frmOutput::frmOutput(QWidget* parent)
    : QWidget(parent), rtfOutPut(nullptr), rtfScroll(nullptr),
      vslRTF(new QScrollBar(Qt::Vertical, this)), wskTCP(new GameSocket(this)),
      Boxes(new QSplitter(Qt::Vertical, this)), NewText(new Announcer(this)) {
    Form = this;
    setObjectName("frmOutput");
    setAttribute(Qt::WA_DeleteOnClose);
    rtfScroll = MakeBox("rtfScroll", tr("Earlier game output"));
    rtfOutPut = MakeBox("rtfOutPut", tr("Game output"));
    rtfScroll->hide();
    Boxes->setStretchFactor(0, 2);
    Boxes->setStretchFactor(1, 1);
    Boxes->setChildrenCollapsible(false);
    QPalette divider = Boxes->palette();
    divider.setColor(QPalette::Window, QColor(64, 64, 64));
    Boxes->setPalette(divider);
    Boxes->setAutoFillBackground(true);
    vslRTF->setObjectName("vslRTF");
    vslRTF->setRange(0, 0);
    vslRTF->setFocusPolicy(Qt::NoFocus);
    vslRTF->setAccessibleName(tr("Scroll back"));

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Boxes);
    layout->addWidget(vslRTF);
    setFocusProxy(rtfOutPut);
    vslRTF->installEventFilter(this);
    BarFrame.setSingleShot(true);
    BarFrame.setInterval(kBarFrame);
    connect(&BarFrame, &QTimer::timeout, this, &frmOutput::MoveBarNow);

    connect(vslRTF, &QScrollBar::valueChanged, this, &frmOutput::ScrollBarMoved);
    connect(rtfScroll->verticalScrollBar(), &QScrollBar::rangeChanged, this, &frmOutput::PlaceCopy);
    connect(rtfOutPut, &OutputView::applied, this, [this] {
        if (Hooked)
            RunHandler("OutputWindowMessage", [] { OutputWindowMessage(ReplaceSelection); });
    });
    connect(rtfOutPut, &OutputView::arrived, NewText, &Announcer::Announce);
    WireSocket();
    WireTimers();
    InstallOutputHook();
}

frmOutput::~frmOutput() {
    if (Hooked)
        OutputWindowMessage(WindowDestroyed);
    // The port's functions find no window from here on, also those that a child's end may call.
    Form = nullptr;
}

OutputView* frmOutput::MakeBox(const char* name, const QString& accessibleName) {
    auto* const box = new OutputView(Boxes);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setFont(OutputFont(rtfOutPut::kBaseFontName, rtfOutPut::kBaseFontSize));
    box->setTabStopDistance(8 * QFontMetricsF(box->font()).horizontalAdvance(' '));
    QPalette palette = box->palette();
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(38, 79, 120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    box->setPalette(palette);
    box->setAutoFillBackground(true);
    box->installEventFilter(this);
    box->viewport()->installEventFilter(this);
    Boxes->addWidget(box);
    return box;
}

void frmOutput::WireSocket() {
    connect(wskTCP, &GameSocket::connected, this,
            [] { RunHandler("wskTCP_Connect", wskTCP_Connect); });
    connect(wskTCP, &GameSocket::dataArrival, this,
            [] { RunHandler("wskTCP_DataArrival", wskTCP_DataArrival); });
    connect(wskTCP, &GameSocket::closed, this, [] { RunHandler("wskTCP_Close", wskTCP_Close); });
    connect(wskTCP, &GameSocket::error, this, [](int number, const QString& description) {
        RunHandler("wskTCP_Error", [&] { wskTCP_Error(number, FromQString(description)); });
    });
}

void frmOutput::WireTimers() {
    connect(&tmrConnect, &QTimer::timeout, this,
            [] { RunHandler("tmrConnect_Timer", tmrConnect_Timer); });
    connect(&tmrLog, &QTimer::timeout, this, [] { RunHandler("tmrLog_Timer", tmrLog_Timer); });
}

void frmOutput::ShowScrollBack() {
    rtfScroll->CopyFrom(*rtfOutPut);
    rtfScroll->show();
    Boxes->setSizes({2 * Boxes->height() / 3, Boxes->height() / 3});
}

void frmOutput::HideScrollBack() {
    if (rtfScroll->hasFocus())
        rtfOutPut->setFocus();
    rtfScroll->hide();
    rtfScroll->clear();
}

void frmOutput::MoveBarLater(const BarState& state) {
    if (state == Bar && (BarWaits || vslRTF->value() == Bar.Maximum))
        return;
    Bar = state;
    BarWaits = true;
    if (!BarFrame.isActive())
        BarFrame.start();
}

void frmOutput::MoveBarNow() {
    if (!BarWaits)
        return;
    BarWaits = false;
    BarFrame.stop();
    const QSignalBlocker quiet(vslRTF);
    vslRTF->setMaximum(Bar.Maximum);
    vslRTF->setValue(Bar.Maximum);
    vslRTF->setSingleStep(Bar.SmallChange);
    vslRTF->setPageStep(Bar.LargeChange);
}

// By the player, even while it waits to be moved.
void frmOutput::ScrollBarMoved() {
    BarWaits = false;
    BarFrame.stop();
    RunHandler("vslRTF_Change", vslRTF_Change);
    PlaceCopy();
}

// The copy's position follows the bar in proportion.
void frmOutput::PlaceCopy() {
    QScrollBar* const inner = rtfScroll->verticalScrollBar();
    if (vslRTF->maximum() > 0)
        inner->setValue(
            static_cast<int>(qint64{inner->maximum()} * vslRTF->value() / vslRTF->maximum()));
}

// By the player. Past the bar's end the box, that a selection may have scrolled, is shown at its
// own.
void frmOutput::ScrollBy(int change) {
    vslRTF->setValue(vslRTF->value() + change);
    if (change > 0 && vslRTF->value() == vslRTF->maximum())
        rtfOutPut->ScrollToEnd();
}

bool frmOutput::ScrollKey(const QKeyEvent& event) {
    MoveBarNow();
    switch (event.key()) {
    case Qt::Key_PageUp:
        ScrollBy(-vslRTF->pageStep());
        return true;
    case Qt::Key_PageDown:
        ScrollBy(vslRTF->pageStep());
        return true;
    case Qt::Key_End:
        vslRTF->setValue(vslRTF->maximum());
        return true;
    default:
        return false;
    }
}

bool frmOutput::eventFilter(QObject* watched, QEvent* event) {
    // Whoever moves the bar moves it from where it should stand.
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel)
        MoveBarNow();
    if (watched == vslRTF)
        return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!IsMenuKey(*static_cast<QKeyEvent*>(event)))
            event->accept();
        return false;
    case QEvent::KeyPress:
        return KeyDown(static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease: {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (!key->isAutoRepeat())
            RunHandler("frmOutput_KeyUp", [key] { frmOutput_KeyUp(KeyCodeOf(*key)); });
        return false;
    }
    case QEvent::Wheel: {
        constexpr int kNotch = 120;
        constexpr int kStepsANotch = 3;
        const int steps = static_cast<QWheelEvent*>(event)->angleDelta().y() * kStepsANotch;
        ScrollBy(-steps * vslRTF->singleStep() / kNotch);
        return true;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

bool frmOutput::KeyDown(QKeyEvent* event) {
    RunHandler("frmOutput_KeyDown", [event] { frmOutput_KeyDown(KeyCodeOf(*event)); });
    std::int16_t character = CharacterOf(*event);
    RunHandler("frmOutput_KeyPress", [&character] { frmOutput_KeyPress(character); });
    return ScrollKey(*event);
}

bool frmOutput::focusNextPrevChild(bool next) {
    emit tabKey(next);
    return true;
}

void frmOutput::closeEvent(QCloseEvent* event) {
    vslRTF->setValue(vslRTF->maximum()); // scroll-back ends with the window
    RunHandler("frmOutput_Unload", frmOutput_Unload);
    event->accept();
}

void StartTimer(Timer timer, int intervalMs) {
    if (Form)
        (timer == Timer::Connect ? Form->tmrConnect : Form->tmrLog).start(intervalMs);
}

void StopTimer(Timer timer) {
    if (Form)
        (timer == Timer::Connect ? Form->tmrConnect : Form->tmrLog).stop();
}

namespace wskTCP {

void Connect(const std::string& host, std::int16_t port) {
    if (Form)
        Form->wskTCP->Connect(host, port);
}

void Close() {
    if (Form)
        Form->wskTCP->Close();
}

void SendData(std::string_view bytes) {
    if (Form)
        Form->wskTCP->Send(bytes);
}

std::string GetData() { return Form ? Form->wskTCP->GetData() : std::string(); }

std::int16_t State() { return Form ? Form->wskTCP->State() : std::int16_t{SocketClosed}; }

} // namespace wskTCP

namespace rtfOutPut {

std::size_t TextLength() { return Form ? Form->rtfOutPut->Length() : 0; }

void Append(std::string_view text, std::int32_t colour, const std::string& fontName,
            const std::string& fontSize) {
    if (Form)
        Form->rtfOutPut->Append(text, FormatOf(colour, fontName, fontSize));
}

void RemoveFirst(std::size_t count) {
    if (Form)
        Form->rtfOutPut->RemoveFirst(count);
}

void MoveCaretToEnd() {
    if (Form)
        Form->rtfOutPut->ScrollToEnd();
}

// The box applies its queue in one edit a frame, so a trim is never painted by itself. Switching
// the widget's updates off and on would paint all of it every time, half of the work in a flood.
void SetRedraw(bool) {}

void Refresh() {
    if (Form)
        Form->rtfOutPut->viewport()->update();
}

std::int32_t Hook() {
    Form->Hooked = true;
    return kHookToken;
}

void Unhook(std::int32_t) { Form->Hooked = false; }

// Qt's box has seen to it before the hook is told.
void CallPrevious(std::int32_t, std::int32_t) {}

} // namespace rtfOutPut

namespace rtfScroll {

void ShowCopyOfOutput() {
    if (Form)
        Form->ShowScrollBack();
}

void Hide() {
    if (Form)
        Form->HideScrollBack();
}

} // namespace rtfScroll

namespace vslRTF {

std::int16_t Max() {
    if (!Form)
        return 0;
    return static_cast<std::int16_t>(Form->BarWaits ? Form->Bar.Maximum : Form->vslRTF->maximum());
}

std::int16_t Value() {
    if (!Form)
        return 0;
    return static_cast<std::int16_t>(Form->BarWaits ? Form->Bar.Maximum : Form->vslRTF->value());
}

void SetMaxAndValue(std::int16_t maximum) {
    if (Form)
        Form->MoveBarLater({maximum, Form->Bar.SmallChange, Form->Bar.LargeChange});
}

void SetChange(std::int16_t smallChange, std::int16_t largeChange) {
    if (Form)
        Form->MoveBarLater({Form->Bar.Maximum, smallChange, largeChange});
}

} // namespace vslRTF
} // namespace mw
