#include "ui/qt/BoxNames.h"

#include <QLabel>
#include <QLineEdit>

namespace mw {

void NameBox(QComboBox* box, const QString& name) {
    auto* const label = new QLabel(name, box->parentWidget());
    label->setBuddy(box);
    label->hide();
    box->setAccessibleName(name);
    box->lineEdit()->setAccessibleName(name);
}

} // namespace mw
