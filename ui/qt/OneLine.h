// Keeps a text box to one line, whatever is pasted.
#pragma once

#include <QValidator>

namespace mw {

// Line breaks become blanks, CR LF a single one. Accepts everything.
class OneLine : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& text, int& caret) const override;
};

} // namespace mw
