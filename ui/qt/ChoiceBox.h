// A combo box that the mouse wheel leaves as it is: it is turned to scroll, wherever the pointer
// is.
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace mw {

class ChoiceBox : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace mw
