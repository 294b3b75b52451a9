// Closes message boxes as a player does, and remembers what they said.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace forms {

class MessageBoxes {
public:
    MessageBoxes() {
        QObject::connect(&Look, &QTimer::timeout, &Look, [this] { LookForABox(); });
        Look.start(2);
    }

    // What has to hold before a box is closed. Asked again and again while one is open.
    std::function<bool()> MayClose = [] { return true; };

    // Texts of the boxes closed so far.
    std::vector<std::string> Texts;
    std::vector<Qt::TextFormat> Formats;

private:
    void LookForABox() {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !MayClose())
            return;
        Texts.push_back(box->text().toStdString());
        Formats.push_back(box->textFormat());
        box->button(QMessageBox::Ok)->click();
    }

    QTimer Look;
};

using Boxes = std::vector<std::string>;

} // namespace forms
