// A combo box that the mouse wheel leaves as it is, since the wheel is turned to scroll, wherever
// the pointer is. Its entries do not widen it, however long they are.
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace mw {

class ChoiceBox : public QComboBox {
public:
    explicit ChoiceBox(QWidget* parent = nullptr) : QComboBox(parent) {
        setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace mw
