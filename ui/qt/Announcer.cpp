#include "ui/qt/Announcer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace mw {
namespace {

constexpr int kNotices = 16;
constexpr int kLongest = 2000; // characters; of a flood nobody listens to more

// Asked for any object, also for those of a page view that are no longer to be touched: the name of
// the class decides.
QAccessibleInterface* MakeNoticeInterface(const QString& className, QObject* object) {
    if (className != QLatin1String(Notice::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<Notice*>(object), QAccessible::Notification);
}

} // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent) {
    static const bool once = (QAccessible::installFactory(MakeNoticeInterface), true);
    Q_UNUSED(once);
    setFixedSize(0, 0);
    for (int i = 0; i < kNotices; ++i)
        Notices.append(new Notice(this));
}

void Announcer::Announce(const QString& text) {
    const QString words = text.trimmed().right(kLongest);
    if (words.isEmpty())
        return;
    Notice* const notice = Notices.takeFirst();
    Notices.append(notice);
    notice->setAccessibleName(words);
    QAccessibleEvent comesUp(notice, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&comesUp);
}

} // namespace mw
