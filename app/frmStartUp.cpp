#include "app/frmStartUp.h"

#include "app/StartUp.h"
#include "ui/SplashControls.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/Text.h"

#include <algorithm>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace mw {
namespace {

QPointer<frmStartUp> Form; // the one splash

// Dark blue and purple on white, whatever the desktop's colours are.
constexpr const char* kTitle = "<p align='center' style='font-family:Arial'>"
                               "<span style='font-size:16pt; color:#0000a0'>Quill</span><br>"
                               "<span style='font-size:16pt; color:#8c008c'>mere</span><br>"
                               "<span style='font-size:12pt; color:#0000a0'>Mud Client</span></p>";

QLabel* AddLabel(QBoxLayout* layout, const char* name, Qt::Alignment alignment) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(alignment | Qt::AlignVCenter);
    layout->addWidget(label);
    return label;
}

} // namespace

frmStartUp::frmStartUp() : QWidget(nullptr, Qt::SplashScreen), rtbTitle(new QLabel(kTitle)) {
    Form = this;
    setObjectName("frmStartUp");
    setWindowTitle(tr("Quillmere Mud Client"));
    setAttribute(Qt::WA_DeleteOnClose);
    setStyleSheet("#frmStartUp { background: white; border: 1px solid #8c008c }"
                  "#frmStartUp > QLabel { color: #303030 }"
                  "#frmStartUp > #lblStatus { font-weight: bold }");
    setAttribute(Qt::WA_StyledBackground);
    rtbTitle->setObjectName("rtbTitle");

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->addWidget(rtbTitle);
    column->addStretch(1);
    lblUpdateText = AddLabel(column, "lblUpdateText", Qt::AlignHCenter);
    lblCurVersion = AddLabel(column, "lblCurVersion", Qt::AlignHCenter);
    lblYourVersion = AddLabel(column, "lblYourVersion", Qt::AlignHCenter);
    column->addStretch(1);
    auto* const row = new QHBoxLayout;
    column->addLayout(row);
    lblLoading = AddLabel(row, "lblLoading", Qt::AlignLeft);
    lblDots = AddLabel(row, "lblDots", Qt::AlignLeft);
    row->addStretch(1);
    lblStatus = AddLabel(row, "lblStatus", Qt::AlignRight);
    const int line = fontMetrics().height();
    setFixedSize(std::max(380, 24 * line), std::max(230, 14 * line));
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());

    timerLoad.setInterval(kLoadInterval);
    timerFinished.setInterval(kFinishedInterval);
    connect(&timerLoad, &QTimer::timeout, this, &frmStartUp::LoadTick);
    connect(&timerFinished, &QTimer::timeout, this, &frmStartUp::FinishedTick);
    RunHandler("frmStartUp_Load", frmStartUp_Load);
}

// A loader that fails ends the program, and what could not be read stays as it is.
void frmStartUp::LoadTick() {
    if (SavingMode)
        RunHandler("timerLoad_Timer", timerLoad_Timer);
    else if (!RunAtStart(timerLoad_Timer))
        QCoreApplication::exit(1);
}

void frmStartUp::FinishedTick() {
    RunHandler("timerFinished_Timer", timerFinished_Timer);
    if (SavingMode)
        QCoreApplication::exit(0);
}

// Closed from outside while it loads, nothing is saved. Once the main frame is there, the splash is
// taken away by the client itself.
void frmStartUp::closeEvent(QCloseEvent* event) {
    const bool isLoading = !SavingMode && (timerLoad.isActive() || timerFinished.isActive());
    event->setAccepted(!SavingMode);
    if (isLoading)
        QCoreApplication::exit(0);
}

namespace {

QLabel* LabelOf(SplashLabel label) {
    switch (label) {
    case SplashLabel::lblLoading:
        return Form->lblLoading;
    case SplashLabel::lblStatus:
        return Form->lblStatus;
    case SplashLabel::lblDots:
        return Form->lblDots;
    case SplashLabel::lblYourVersion:
        return Form->lblYourVersion;
    case SplashLabel::lblCurVersion:
        return Form->lblCurVersion;
    case SplashLabel::lblUpdateText:
        return Form->lblUpdateText;
    }
    return nullptr;
}

} // namespace

void SetCaption(SplashLabel label, std::string_view text) {
    if (!Form)
        return;
    LabelOf(label)->setText(ToQString(text));
    // A stage's work lets no events run, and its name is to be read while it lasts.
    Form->layout()->activate();
    Form->repaint();
}

void SetEnabled(SplashTimer timer, bool enabled) {
    if (!Form)
        return;
    QTimer& own = timer == SplashTimer::timerLoad ? Form->timerLoad : Form->timerFinished;
    if (enabled)
        own.start();
    else
        own.stop();
}

void ShowSplash() { (new frmStartUp)->show(); }

void UnloadSplash() {
    if (Form)
        Form->close();
}

} // namespace mw
