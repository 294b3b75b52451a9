// Base of the tests of the frame's dialogs: each is opened from the frame and worked with its own
// buttons and boxes.
#pragma once

#include "forms/FrameTest.h"

#include <QDialog>

namespace forms {

class DialogTest : public FrameTest {
protected:
    // Opens the dialog by a menu's item.
    template <typename Form> void Open(const char* item) {
        Item(item)->trigger();
        TakeOver<Form>();
    }

    // Goes on with the dialog of that kind that has just opened.
    template <typename Form> void TakeOver() {
        Dialog = Frame->findChild<Form*>();
        ASSERT_NE(Dialog, nullptr);
        ASSERT_TRUE(WaitFor([this] { return QApplication::activeWindow() == Dialog; }));
    }

    template <typename Control> Control* In(const char* name) const {
        return Dialog->findChild<Control*>(name);
    }

    QPushButton* Button(const char* name) const { return In<QPushButton>(name); }

    void Click(const char* name) const { QTest::mouseClick(Button(name), Qt::LeftButton); }

    void TypeInto(QWidget* box, const QString& text) const {
        box->setFocus();
        QTest::keyClicks(box, text);
    }

    bool Closed() const {
        return WaitFor([this] { return Dialog.isNull(); });
    }

    QPointer<QDialog> Dialog;
};

} // namespace forms
