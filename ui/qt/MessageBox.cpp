#include "ui/MessageBox.h"

#include "ui/qt/ShownText.h"
#include "ui/qt/Text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

namespace mw {

// A window that goes by itself takes the box that stands over it along; that is shown again then,
// as the player has not closed it.
void ShowMessage(std::string_view text) {
    bool isClosed = false;
    QPointer<QMessageBox> box;
    while (!box && !isClosed) {
        box = new QMessageBox(QMessageBox::Information, QStringLiteral("Quillmere Mud Client"),
                              ShownText(ToQString(text)), QMessageBox::Ok,
                              QApplication::activeWindow());
        box->setTextFormat(Qt::PlainText);
        QObject::connect(box, &QDialog::finished, box, [&isClosed] { isClosed = true; });
        box->exec();
    }
    delete box;
}

} // namespace mw
