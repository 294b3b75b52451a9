// The boxes that a web server causes: what they say, and closing them as a player does.
#pragma once

#include "forms/FormTest.h"
#include "forms/GameServer.h"
#include "forms/WaitFor.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include <QMessageBox>
#include <QPushButton>

namespace forms {

struct ShownBox {
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    std::string Title;
    std::string Text;

    bool operator==(const ShownBox&) const = default;
};

inline void PrintTo(const ShownBox& box, std::ostream* out) {
    *out << (box.Icon == QMessageBox::Critical ? "critical \"" : "plain \"") << box.Title
         << "\": " << testing::PrintToString(box.Text);
}

inline ShownBox ErrorBox(const std::string& text) { return {QMessageBox::Critical, "Error", text}; }

inline ShownBox PlainBox(const std::string& text) {
    return {QMessageBox::Information, "Quillmere Mud Client", text};
}

inline QList<QMessageBox*> OpenBoxes() {
    QList<QMessageBox*> boxes;
    for (QWidget* const window : VisibleWindows()) {
        if (auto* const box = qobject_cast<QMessageBox*>(window))
            boxes.append(box);
    }
    return boxes;
}

// The one box that is open, once there is one; null when none comes.
inline QMessageBox* OpenBox() {
    EXPECT_TRUE(WaitFor([] { return !OpenBoxes().isEmpty(); })) << "no box";
    EXPECT_LE(OpenBoxes().size(), 1);
    return OpenBoxes().value(0);
}

inline ShownBox WhatItSays(const QMessageBox* box) {
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_FALSE(box->isModal());
    return {box->icon(), box->windowTitle().toStdString(), box->text().toStdString()};
}

// Closes the box that is open with its button. Answers what it said.
inline ShownBox CloseBox() {
    QMessageBox* const box = OpenBox();
    if (box == nullptr)
        return {};
    const ShownBox shown = WhatItSays(box);
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    return shown;
}

} // namespace forms
