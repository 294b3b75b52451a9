// Base of the tests of the frame's dialogs: each is opened from the frame and worked with its own
// buttons and boxes.
#pragma once

#include "forms/FrameTest.h"

#include <string>
#include <vector>

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

    // A click of the mouse on a button of the frame, as the window system reports it.
    void ClickInFrame(const QWidget* button) const {
        QTest::mouseClick(Frame->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          button->mapTo(Frame.get(), button->rect().center()));
        LetEventsRun();
    }

    // The names of the controls that the focus visits by the Tab key, until it is back.
    std::vector<std::string> TabOrder() const {
        constexpr std::size_t kMost = 40;
        std::vector<std::string> order;
        const QWidget* const first = Dialog->focusWidget();
        do {
            order.push_back(Dialog->focusWidget()->objectName().toStdString());
            QTest::keyClick(Dialog->focusWidget(), Qt::Key_Tab);
        } while (Dialog->focusWidget() != first && order.size() < kMost);
        return order;
    }

    bool Closed() const {
        return WaitFor([this] { return Dialog.isNull(); });
    }

    QPointer<QDialog> Dialog;
};

} // namespace forms
