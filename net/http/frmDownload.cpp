#include "net/http/frmDownload.h"

#include "net/http/DownLoad.h"
#include "net/http/WebBoxes.h"
#include "ui/DownloadControls.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/ShownText.h"
#include "ui/qt/Text.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMap>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace mw {
namespace {

// All in pixels.
constexpr int kWidth = 340;
constexpr int kWidestName = 300;
constexpr int kTitleBar = 40; // with some room
constexpr int kBeside = 12;   // between two columns of windows
constexpr int kClearBelow = 70;
constexpr int kClearRight = 16;

constexpr int kColumns = 3; // of windows; more begin at the right again

QMap<std::int32_t, frmDownload*> Forms; // by the number of the download
QPointer<QMessageBox> Box;              // the one that a web server has caused

} // namespace

frmDownload::frmDownload(std::int32_t download, std::int16_t slot, const QString& fileName)
    : QWidget(nullptr, Qt::Dialog), lblSlot(new QLabel(QString::number(slot), this)),
      ProgressBar(new QProgressBar), Download(download) {
    setObjectName("frmDownload");
    setWindowTitle(tr("Download"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating); // the player goes on typing
    lblSlot->setObjectName("lblSlot");
    lblSlot->hide();
    auto* const name = new QLabel;
    name->setTextFormat(Qt::PlainText);
    name->setText(name->fontMetrics().elidedText(fileName, Qt::ElideMiddle, kWidestName));
    name->setToolTip(fileName.toHtmlEscaped());
    ProgressBar->setObjectName("ProgressBar");
    ProgressBar->setRange(0, 100);
    ProgressBar->setValue(0);
    ProgressBar->setAccessibleName(fileName);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(name);
    auto* const row = new QHBoxLayout;
    column->addLayout(row);
    row->addWidget(ProgressBar, 1);
    cmdCancel = AddButton(row, "cmdCancel", tr("&Cancel"), [this] { close(); });
    setFixedSize(kWidth, sizeHint().height());
    PlaceBySlot(slot);
}

// Stacked above the screen's lower right corner: clear of the command line and the scroll bar of a
// frame that fills the screen.
void frmDownload::PlaceBySlot(std::int16_t slot) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const int step = height() + kTitleBar;
    const int rows = qMax(1, (screen.height() - kClearBelow) / step);
    move(screen.right() - kClearRight - (width() + kBeside) * (1 + slot / rows % kColumns),
         screen.bottom() - kClearBelow - step * (1 + slot % rows));
}

void frmDownload::closeEvent(QCloseEvent* event) {
    Forms.remove(Download);
    RunHandler("frmDownload_Unload", [this] { frmDownload_Unload(Download); });
    event->accept();
}

void frmDownload::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void OpenDownloadWindow(std::int32_t download, std::int16_t slot, const std::string& fileName) {
    auto* const form = new frmDownload(download, slot, ToQString(fileName));
    Forms.insert(download, form);
    form->show();
}

void SetProgress(std::int32_t download, std::int16_t percent) {
    if (frmDownload* const form = Forms.value(download))
        form->ProgressBar->setValue(percent);
}

void CloseDownloadWindow(std::int32_t download) {
    if (frmDownload* const form = Forms.value(download))
        form->close();
}

void ShowWebBox(const std::string& text, bool isError) {
    Box =
        new QMessageBox(isError ? QMessageBox::Critical : QMessageBox::Information,
                        isError ? QStringLiteral("Error") : QStringLiteral("Quillmere Mud Client"),
                        ShownText(ToQString(text)), QMessageBox::Ok);
    Box->setTextFormat(Qt::PlainText);
    Box->setAttribute(Qt::WA_DeleteOnClose);
    Box->setModal(false);
    Box->setAttribute(Qt::WA_ShowWithoutActivating); // the player may be in the middle of a line
    QObject::connect(Box, &QDialog::finished, Box, [] {
        Box.clear();
        RunHandler("WebBox_Closed", WebBox_Closed);
    });
    Box->show();
}

void HideWebBox() {
    if (!Box)
        return;
    Box->disconnect();
    Box->close();
}

} // namespace mw
