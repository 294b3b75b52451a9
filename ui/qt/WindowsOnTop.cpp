#include "ui/qt/WindowsOnTop.h"

#include "ui/UserSettings.h"

#include <QEvent>
#include <QScreen>
#include <QStringList>

namespace mw {
namespace {

constexpr const char* kApplication = "MwClient";
constexpr const char* kSection = "Dialogs";

// The size in text ("WIDTHxHEIGHT"), or an invalid one.
QSize SizeIn(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split('x');
    return parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
}

} // namespace

LockedDialog::LockedDialog(const char* name, const QString& title, QWidget* frame)
    : QDialog(frame) {
    setObjectName(name);
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(true);
    frame->window()->installEventFilter(this);
}

// A frame that is locked has no use for the keys that a click on it brings.
bool LockedDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate && isVisible())
        activateWindow();
    return QDialog::eventFilter(watched, event);
}

void LockedDialog::showEvent(QShowEvent* event) {
    const std::string name = objectName().toStdString();
    const QSize kept = SizeIn(GetUserSetting(kApplication, kSection, name, ""));
    if (kept.isValid())
        resize(kept.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
    raise();
    QDialog::showEvent(event);
}

void LockedDialog::hideEvent(QHideEvent* event) {
    SaveUserSetting(kApplication, kSection, objectName().toStdString(),
                    std::to_string(width()) + "x" + std::to_string(height()));
    raise();
    QDialog::hideEvent(event);
}

} // namespace mw
