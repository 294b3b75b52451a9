// Works the platform's colour and font choosers as a player does: they wait for an answer, so what
// is to be done with one is said before it opens.
#pragma once

#include <functional>
#include <vector>

#include <QApplication>
#include <QColorDialog>
#include <QFontDialog>
#include <QPointer>
#include <QTimer>

namespace forms {

class Choosers {
public:
    using WithColours = std::function<void(QColorDialog&)>;
    using WithFonts = std::function<void(QFontDialog&)>;

    Choosers() {
        QObject::connect(&Look, &QTimer::timeout, &Look, [this] { LookForAChooser(); });
        Look.start(2);
    }

    WithColours OnColours = [](QColorDialog& chooser) { chooser.reject(); };
    WithFonts OnFonts = [](QFontDialog& chooser) { chooser.reject(); };

    // What the choosers showed when they opened.
    std::vector<QColor> FirstColours;
    std::vector<QFont> FirstFonts;

private:
    void LookForAChooser() {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr || window == Met || !window->isVisible())
            return;
        if (auto* const colours = qobject_cast<QColorDialog*>(window)) {
            Met = window;
            FirstColours.push_back(colours->currentColor());
            OnColours(*colours);
        } else if (auto* const fonts = qobject_cast<QFontDialog*>(window)) {
            Met = window;
            FirstFonts.push_back(fonts->currentFont());
            OnFonts(*fonts);
        }
    }

    QTimer Look;
    QPointer<QWidget> Met; // it has its answer
};

// Answers.

inline Choosers::WithColours Takes(const QColor& colour) {
    return [colour](QColorDialog& chooser) {
        chooser.setCurrentColor(colour);
        chooser.accept();
    };
}

// Looks at a colour, and cancels.
inline Choosers::WithColours LooksAt(const QColor& colour) {
    return [colour](QColorDialog& chooser) {
        chooser.setCurrentColor(colour);
        chooser.reject();
    };
}

inline Choosers::WithFonts Takes(const QFont& font) {
    return [font](QFontDialog& chooser) {
        chooser.setCurrentFont(font);
        chooser.accept();
    };
}

inline Choosers::WithFonts LooksAt(const QFont& font) {
    return [font](QFontDialog& chooser) {
        chooser.setCurrentFont(font);
        chooser.reject();
    };
}

} // namespace forms
