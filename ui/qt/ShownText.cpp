#include "ui/qt/ShownText.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace mw {
namespace {

constexpr int kNarrowest = 320; // pixels, of the text in a box

// The lines that fit, and where the first begins that does not.
struct Beginning {
    QStringList Lines;
    qsizetype Length;
};

Beginning BeginningOf(const QString& text) {
    QTextDocument page;
    page.setDocumentMargin(0);
    page.setTextWidth(kNarrowest);
    page.setPlainText(text);
    page.size(); // lays it out
    const int highest = QGuiApplication::primaryScreen()->availableGeometry().height() / 2;
    QStringList lines;
    double height = 0;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            height += line.height();
            if (height > highest)
                return {lines, block.position() + line.textStart()};
            lines += block.text().mid(line.textStart(), line.textLength());
        }
    }
    return {lines, text.size()};
}

QString WithSingleBreaks(QString text) { return text.replace("\r\n", "\n"); } // as in a box

} // namespace

QString ShownText(const QString& text) {
    const QString single = WithSingleBreaks(text);
    const qsizetype fitting = BeginningOf(single).Length;
    return fitting == single.size() ? text : single.left(fitting) + "...";
}

QString ShownTextInLines(const QString& text) {
    // Of the two one is a break, whether the box takes the text for plain or for markup; the other
    // shows nothing.
    const QString lineBreak = QStringLiteral("\n\u2029");
    const QString single = WithSingleBreaks(text);
    const Beginning beginning = BeginningOf(single);
    const QString end = beginning.Length == single.size() ? "" : "...";
    return beginning.Lines.join(lineBreak) + end;
}

} // namespace mw
