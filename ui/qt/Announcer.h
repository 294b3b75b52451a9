// Tells a screen reader what has just come, while the focus stays where it is.
//
// A reader speaks a text box's new text only while that box has the focus. What it speaks wherever
// the focus is are notifications that come up, so that is what new text is given as. Nothing of it
// is to be seen.
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

namespace mw {

// A widget of no size with the words for its name.
class Announcement : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
};

class Announcer : public QWidget {
    Q_OBJECT

public:
    explicit Announcer(QWidget* parent);

    // Raises nothing. Nobody hears a text of blanks.
    void Announce(const QString& text);

private:
    // In turn: a reader asks for the words of one when others have come up already.
    QList<Announcement*> Announcements;
};

} // namespace mw
