// The text box of the output: coloured runs at its end, removals at its beginning.
//
// Both are queued and applied once a frame in one edit; a run that a removal takes away again
// before that is never inserted, nor even turned into characters. A frame lasts as long as the last
// one took to apply, so that half of the time is left to take in what arrives. Whoever reads the
// box with keys or mouse sees the queue applied first; a screen reader is told of each frame.
// 40-character runs one by one cost 5 times as much.
#pragma once

#include "base/TextQueue.h"

#include <deque>
#include <string_view>
#include <vector>

#include <QAccessible>
#include <QTextEdit>
#include <QTimer>

namespace mw {

// A character that takes no room. It keeps the place of a byte that has no look and is not copied.
inline constexpr QChar kNoWidth{0x200B};

class OutputView : public QTextEdit, private QAccessible::ActivationObserver {
    Q_OBJECT

public:
    explicit OutputView(QWidget* parent = nullptr);
    ~OutputView() override;

    // Characters, those in the queue included.
    std::size_t Length() const { return DocumentLength - Removed + View(Queue).size(); }

    // One byte is one character; control bytes but LF and TAB have a look of their own.
    void Append(std::string_view bytes, const QTextCharFormat& format);
    void RemoveFirst(std::size_t count);
    void ScrollToEnd();

    // Brings the box up to date now.
    void Apply();

    // The same text and colours as another box, in that box's font. It is no longer kept at its
    // end.
    void CopyFrom(OutputView& other);

signals:
    // The queue was applied.
    void applied();

    // With it this text, as it is copied. Told while somebody listens by accessibility.
    void arrived(const QString& text);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void resizeEvent(QResizeEvent* event) override;
    void accessibilityActiveChanged(bool active) override;

private:
    struct Run {
        std::size_t Length; // in the queue, where the runs follow each other
        std::size_t Format; // its place in Formats
    };

    std::size_t PlaceOf(const QTextCharFormat& format);
    void RemoveQueued(std::size_t count);
    void ShowEnd();
    void ApplyInOneEdit();
    void ApplyAndTell();
    void ApplyRemoval(QTextCursor& cursor);
    void ApplyRuns(QTextCursor& cursor);

    TextQueue Queue;
    std::deque<Run> Runs;
    std::vector<QTextCharFormat> Formats; // of the runs
    std::size_t DocumentLength = 0;
    std::size_t Removed = 0; // of the document's characters, not applied yet
    bool IsToBeTold;         // somebody listens by accessibility
    bool AtEnd = true;       // the last line is to stay in sight
    QTimer Frame{this};
};

} // namespace mw
