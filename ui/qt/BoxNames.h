// Names for boxes that drop down a list.
#pragma once

#include <QComboBox>
#include <QString>

namespace mw {

// A screen reader takes what is typed into such a box for its name, so it gets a label, which
// nobody else sees.
void NameBox(QComboBox* box, const QString& name);

} // namespace mw
