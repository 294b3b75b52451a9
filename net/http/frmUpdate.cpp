#include "net/http/frmUpdate.h"

#include "net/http/VersionCheck.h"
#include "ui/UpdateControls.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/Text.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace mw {
namespace {

QPointer<frmUpdate> Form; // the one prompt

QLabel* AddLabel(QBoxLayout* column, const char* name) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    column->addWidget(label);
    return label;
}

} // namespace

frmUpdate::frmUpdate() : chkShow(new QCheckBox(tr("&Dont show me this again"))) {
    Form = this;
    setObjectName("frmUpdate");
    setWindowTitle(tr("New Version"));
    setAttribute(Qt::WA_DeleteOnClose);
    chkShow->setObjectName("chkShow");

    auto* const column = new QVBoxLayout(this);
    lblCurVer = AddLabel(column, "lblCurVer");
    QFont heading = font();
    heading.setBold(true);
    lblCurVer->setFont(heading);
    lblCurVersion = AddLabel(column, "lblCurVersion");
    lblYourVersion = AddLabel(column, "lblYourVersion");
    column->addSpacing(8);
    column->addWidget(new QLabel(tr("Do you want to see the web site now?")));
    column->addSpacing(8);
    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    buttons->addWidget(chkShow);
    buttons->addSpacing(24);
    buttons->addStretch(1);
    cmdYes = AddButton(buttons, "cmdYes", tr("&Yes"), [this] { Answer(cmdYes_Click); });
    cmdNo = AddButton(buttons, "cmdNo", tr("&No"), [this] { Answer(cmdNo_Click); });
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    cmdYes->setDefault(true);
    cmdYes->setFocus();
}

void frmUpdate::Answer(void (*handler)(bool)) {
    close();
    handler(chkShow->isChecked());
}

// Below the splash, which tells the same.
void frmUpdate::showEvent(QShowEvent* event) {
    const QRect screen = this->screen()->availableGeometry();
    adjustSize();
    move(screen.center().x() - width() / 2, screen.top() + screen.height() * 2 / 3);
    raise();
    QDialog::showEvent(event);
}

void frmUpdate::hideEvent(QHideEvent* event) {
    raise();
    QDialog::hideEvent(event);
}

void SetCaption(UpdateLabel label, std::string_view text) {
    if (!Form)
        return;
    QLabel* const labels[] = {Form->lblCurVer, Form->lblCurVersion, Form->lblYourVersion};
    labels[static_cast<int>(label)]->setText(ToQString(text));
}

void LoadUpdatePrompt() {
    new frmUpdate;
    RunHandler("frmUpdate_Load", frmUpdate_Load);
}

void ShowUpdatePrompt() {
    if (!Form)
        return;
    Form->show();
    Form->raise();
}

} // namespace mw
