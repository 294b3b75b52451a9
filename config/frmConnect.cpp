#include "config/frmConnect.h"

#include "config/MudChooser.h"
#include "config/MudList.h"
#include "config/frmAddMud.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/Text.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace mw {
namespace {

QLabel* AddValue(QFormLayout* fields, const char* name, const QString& caption) {
    auto* const value = new QLabel;
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // may be cut, never widens
    fields->addRow(caption, value);
    return value;
}

} // namespace

frmConnect::frmConnect(QWidget* frame)
    : LockedDialog("frmConnect", tr("Add/Delete/Change Mud"), frame), Chooser(new MudCombo) {
    auto* const column = new QVBoxLayout(this);
    auto* const fields = new QFormLayout;
    column->addLayout(fields);
    fields->addRow(tr("&Mud"), Chooser);
    lblMud = AddValue(fields, "lblMud", tr("Address"));
    lblPort = AddValue(fields, "lblPort", tr("Port"));
    column->addSpacing(8);
    column->addStretch(1);
    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    cmdAdd = AddButton(buttons, "cmdAdd", tr("&Add..."), [this] { (new frmAddMud(this))->show(); });
    cmdDelete = AddButton(buttons, "cmdDelete", tr("De&lete"), DeleteMud);
    buttons->addStretch(1);
    cmdDone = AddButton(buttons, "cmdDone", tr("&Done"), [this] { close(); });
    cmdDone->setDefault(true);
    Chooser->setFocus();
    resize(420, sizeHint().height());
    connect(Chooser, &QComboBox::activated, this, [](int index) {
        RunHandler("cboMud_Click", [index] { cboMud_Click(static_cast<std::int16_t>(index)); });
    });
    connect(Chooser, &QComboBox::currentIndexChanged, this, &frmConnect::ShowSelected);
    ShowSelected();
}

void frmConnect::ShowSelected() {
    const auto index = static_cast<std::size_t>(Chooser->currentIndex());
    const MudEntry mud = index < MudList.size() ? MudList[index] : MudEntry();
    lblMud->setText(ToQString(mud.Address));
    lblMud->setToolTip(ToQString(mud.Address).toHtmlEscaped());
    lblPort->setText(QString::number(mud.Port));
}

} // namespace mw
