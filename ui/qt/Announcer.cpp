#include "ui/qt/Announcer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace mw {
namespace {

constexpr int kNotices = 16;
constexpr int kLongest = 2000; // characters; of a flood nobody listens to more

class Notice : public QWidget {
public:
    using QWidget::QWidget;
};

QAccessibleInterface* MakeNoticeInterface(const QString&, QObject* object) {
    auto* const notice = dynamic_cast<Notice*>(object);
    return notice ? new QAccessibleWidget(notice, QAccessible::Notification) : nullptr;
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
    QWidget* const notice = Notices.takeFirst();
    Notices.append(notice);
    notice->setAccessibleName(words);
    QAccessibleEvent comesUp(notice, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&comesUp);
}

} // namespace mw
