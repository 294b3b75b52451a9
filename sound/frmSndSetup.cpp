#include "sound/frmSndSetup.h"

#include "config/MudList.h"
#include "sound/SoundOptions.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/Text.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace mw {

frmSndSetup::frmSndSetup(QWidget* frame) : LockedDialog("frmSndSetup", tr("Sound"), frame) {
    auto* const column = new QVBoxLayout(this);
    auto* const game = new QLabel(tr("Sounds of %1").arg(ToQString(MudAt(CurrentMud).Name)));
    game->setTextFormat(Qt::PlainText);
    game->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // may be cut, never widens
    column->addWidget(game);
    column->addSpacing(6);
    chkMSP = AddBox(column, "chkMSP", tr("&Enable MSP"), chkMSP_Click);
    auto* const indented = new QVBoxLayout;
    indented->setContentsMargins(22, 0, 0, 0);
    column->addLayout(indented);
    chkWave = AddBox(indented, "chkWave", tr("Allow &Wav Files"), chkWave_Click);
    chkMidi = AddBox(indented, "chkMidi", tr("Allow &Midi Files"), chkMidi_Click);
    chkDownloads = AddBox(indented, "chkDownloads", tr("&Allow Download"), chkDownloads_Click);
    column->addSpacing(8);
    column->addStretch(1);
    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    buttons->addStretch(1);
    cmdDone = AddButton(buttons, "cmdDone", tr("&Done"), [this] { close(); });
    cmdDone->setDefault(true);
    chkMSP->setFocus();
    resize(320, sizeHint().height());
    ShowSwitches();
}

QCheckBox* frmSndSetup::AddBox(QLayout* column, const char* name, const QString& caption,
                               void (*handler)(bool)) {
    auto* const box = new QCheckBox(caption);
    box->setObjectName(name);
    column->addWidget(box);
    connect(box, &QCheckBox::clicked, this, [this, name, handler](bool checked) {
        RunHandler(name, [handler, checked] { handler(checked); });
        ShowSwitches();
    });
    return box;
}

// Without the first switch the others are shown clear and locked, whatever they are.
void frmSndSetup::ShowSwitches() {
    const MudEntry& mud = MudAt(CurrentMud);
    chkMSP->setChecked(mud.Msp);
    const std::pair<QCheckBox*, bool> others[] = {
        {chkWave, mud.SndW}, {chkMidi, mud.SndM}, {chkDownloads, mud.SndD}};
    for (const auto& [box, isOn] : others) {
        box->setChecked(mud.Msp && isOn);
        box->setEnabled(mud.Msp);
    }
}

} // namespace mw
