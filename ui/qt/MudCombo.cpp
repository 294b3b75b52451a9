#include "ui/qt/MudCombo.h"

#include "ui/FrameControls.h"
#include "ui/qt/Text.h"

namespace mw {
namespace {

QList<MudCombo*> Choosers; // the toolbar's first

} // namespace

MudCombo::MudCombo() {
    setObjectName("cboMud");
    setAccessibleName(tr("Mud"));
    setMinimumWidth(180);
    if (!Choosers.isEmpty()) {
        setModel(Choosers.first()->model());
        setCurrentIndex(Choosers.first()->currentIndex());
    }
    Choosers.append(this);
}

MudCombo::~MudCombo() { Choosers.removeOne(this); }

namespace cboMud {

void AddItem(std::string_view name) {
    if (!Choosers.isEmpty())
        Choosers.first()->addItem(ToQString(name));
}

void RemoveItem(std::int16_t index) {
    if (!Choosers.isEmpty())
        Choosers.first()->removeItem(index);
}

void Clear() {
    if (!Choosers.isEmpty())
        Choosers.first()->clear();
}

void SetListIndex(std::int16_t index) {
    for (MudCombo* const chooser : Choosers)
        chooser->setCurrentIndex(index);
}

std::int16_t ListIndex() {
    return static_cast<std::int16_t>(Choosers.isEmpty() ? -1 : Choosers.first()->currentIndex());
}

std::string Text() {
    return Choosers.isEmpty() ? std::string() : FromQString(Choosers.first()->currentText());
}

} // namespace cboMud
} // namespace mw
