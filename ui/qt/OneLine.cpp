#include "ui/qt/OneLine.h"

namespace mw {

QValidator::State OneLine::validate(QString& text, int& caret) const {
    const QString lineEnd = QStringLiteral("\r\n");
    caret -= static_cast<int>(text.left(caret).count(lineEnd));
    text.replace(lineEnd, QStringLiteral(" "));
    for (const QChar lineBreak : {QChar('\r'), QChar('\n'), QChar(0x2028), QChar(0x2029)})
        text.replace(lineBreak, QChar(' '));
    return Acceptable;
}

} // namespace mw
