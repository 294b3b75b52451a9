#include "config/frmAddMud.h"

#include "config/MudChooser.h"
#include "config/MudList.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/OneLine.h"
#include "ui/qt/Text.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace mw {
namespace {

QLineEdit* AddField(QFormLayout* fields, const char* name, const QString& caption) {
    auto* const box = new QLineEdit;
    box->setObjectName(name);
    box->setValidator(new OneLine(box)); // a break would make the file unreadable
    fields->addRow(caption, box);
    return box;
}

} // namespace

frmAddMud::frmAddMud(QWidget* frame) : LockedDialog("frmAddMud", tr("Add Mud"), frame) {
    auto* const column = new QVBoxLayout(this);
    auto* const fields = new QFormLayout;
    column->addLayout(fields);
    txtmName = AddField(fields, "txtmName", tr("&Name"));
    txtmAddress = AddField(fields, "txtmAddress", tr("A&ddress"));
    txtmPort = AddField(fields, "txtmPort", tr("&Port"));
    txtmAddress->setPlaceholderText(tr("host name or numbers"));
    column->addSpacing(8);
    column->addStretch(1);
    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    buttons->addStretch(1);
    cmdmAdd = AddButton(buttons, "cmdmAdd", tr("&Add"), [this] { cmdmAdd_Click(); });
    cmdCancel = AddButton(buttons, "cmdCancel", tr("&Cancel"), [this] { close(); });
    cmdmAdd->setDefault(true);
    resize(380, sizeHint().height());
}

// Closed before the folder is made: should that fail, the game is in the list all the same.
void frmAddMud::cmdmAdd_Click() {
    const std::string name = FromQString(txtmName->text());
    if (!AddMud(name, FromQString(txtmAddress->text()), FromQString(txtmPort->text())))
        return;
    close();
    MakeGameFolders(name);
}

} // namespace mw
