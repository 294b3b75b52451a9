// Pictures of windows for whoever wants to look at them: the variable QUILLMERE_PICTURES names the
// folder, without it none is taken.
#pragma once

#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace forms {

inline void KeepPicture(const QPixmap& picture, const QString& name) {
    const QString folder = qEnvironmentVariable("QUILLMERE_PICTURES");
    if (!folder.isEmpty())
        picture.save(folder + "/" + name + ".png");
}

// The windows where they stand on the screen, the later ones on top.
inline QPixmap PictureOf(const QList<QWidget*>& windows) {
    QPixmap picture(windows.value(0)->screen()->size());
    picture.fill(Qt::darkCyan);
    QPainter painter(&picture);
    for (QWidget* const window : windows) {
        painter.drawPixmap(window->pos(), window->grab());
        painter.drawRect(QRect(window->pos(), window->size()));
    }
    return picture;
}

} // namespace forms
