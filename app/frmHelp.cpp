#include "app/frmHelp.h"

#include "ui/qt/Buttons.h"

#include <QKeyEvent>
#include <QPointer>
#include <QVBoxLayout>

namespace mw {
namespace {

const QUrl kContents("qrc:/manual/index.html");

} // namespace

frmHelp::frmHelp() : Pages(new QTextBrowser) {
    setObjectName("frmHelp");
    setWindowTitle(tr("Manual - Quillmere Mud Client"));
    setAttribute(Qt::WA_DeleteOnClose);
    Pages->setObjectName("Pages");
    Pages->setAccessibleName(tr("Manual"));
    Pages->setOpenExternalLinks(true);
    Pages->setTextInteractionFlags(Pages->textInteractionFlags() | Qt::TextSelectableByKeyboard);
    Pages->setFrameShape(QFrame::NoFrame);
    Pages->document()->setDocumentMargin(16);

    auto* const buttons = new QHBoxLayout;
    buttons->setContentsMargins(8, 6, 8, 6);
    buttons->setSpacing(6);
    AddButton(buttons, "cmdContents", tr("&Contents"), [this] { Pages->setSource(kContents); });
    QPushButton* const back =
        AddButton(buttons, "cmdBack", tr("&Back"), [this] { Pages->backward(); });
    QPushButton* const forward =
        AddButton(buttons, "cmdForward", tr("&Forward"), [this] { Pages->forward(); });
    buttons->addStretch(1);
    AddButton(buttons, "cmdClose", tr("C&lose"), [this] { close(); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(Pages, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(Pages, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(buttons);
    column->addWidget(Pages, 1);
    resize(860, 640); // a picture of the manual is up to 800 wide
    Pages->setSource(kContents);
    Pages->setFocus();
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void ShowHelp() {
    static QPointer<frmHelp> window;
    if (!window)
        window = new frmHelp;
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace mw
