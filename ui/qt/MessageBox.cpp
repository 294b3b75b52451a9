#include "ui/MessageBox.h"

#include "ui/qt/Text.h"

#include <QApplication>
#include <QMessageBox>

namespace mw {

void ShowMessage(std::string_view text) {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Quillmere Mud Client"),
                    ToQString(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace mw
