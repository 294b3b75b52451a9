#include "ui/qt/ShownText.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace mw {
namespace {

constexpr int kNarrowest = 320; // pixels, of the text in a box

// How many characters at the beginning of the text fit.
qsizetype FittingPart(const QString& text) {
    QTextDocument page;
    page.setDocumentMargin(0);
    page.setTextWidth(kNarrowest);
    page.setPlainText(text);
    page.size(); // lays it out
    const int highest = QGuiApplication::primaryScreen()->availableGeometry().height() / 2;
    double height = 0;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            height += line.height();
            if (height > highest)
                return block.position() + line.textStart();
        }
    }
    return text.size();
}

} // namespace

QString ShownText(const QString& text) {
    QString shown = text;
    shown.replace("\r\n", "\n"); // one break in a box
    const qsizetype fitting = FittingPart(shown);
    return fitting == shown.size() ? text : shown.left(fitting) + "...";
}

} // namespace mw
