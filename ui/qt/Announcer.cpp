#include "ui/qt/Announcer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace mw {
namespace {

constexpr int kAnnouncements = 16;
constexpr int kLongest = 2000; // characters; of a flood nobody listens to more

// Asked for any object, also for those of a page view that are no longer to be touched: the name of
// the class decides.
QAccessibleInterface* MakeAnnouncementInterface(const QString& className, QObject* object) {
    if (className != QLatin1String(Announcement::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<Announcement*>(object), QAccessible::Notification);
}

} // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent) {
    static const bool once = (QAccessible::installFactory(MakeAnnouncementInterface), true);
    Q_UNUSED(once);
    setFixedSize(0, 0);
    for (int i = 0; i < kAnnouncements; ++i)
        Announcements.append(new Announcement(this));
}

void Announcer::Announce(const QString& text) {
    const QString words = text.trimmed().right(kLongest);
    if (words.isEmpty())
        return;
    Announcement* const announcement = Announcements.takeFirst();
    Announcements.append(announcement);
    announcement->setAccessibleName(words);
    QAccessibleEvent comesUp(announcement, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&comesUp);
}

} // namespace mw
