#include "ui/qt/OutputView.h"

#include <algorithm>

#include <QAccessible>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace mw {
namespace {

constexpr int kFrame = 16; // milliseconds

} // namespace

OutputView::OutputView(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    document()->setDocumentMargin(6);
    Frame.setSingleShot(true);
    Frame.setInterval(kFrame);
    connect(&Frame, &QTimer::timeout, this, &OutputView::Apply);
}

void OutputView::Append(const QString& text, const QTextCharFormat& format) {
    if (text.isEmpty())
        return;
    QueuedLength += static_cast<std::size_t>(text.size());
    if (!Queue.empty() && Queue.back().Format == format)
        Queue.back().Text += text;
    else
        Queue.push_back({text, format});
    if (QAccessible::isActive())
        Apply();
    else if (!Frame.isActive())
        Frame.start();
}

void OutputView::RemoveFirst(std::size_t count) {
    const std::size_t ofDocument = std::min(count, DocumentLength - Removed);
    Removed += ofDocument;
    count -= ofDocument;
    while (count > 0 && !Queue.empty()) {
        QString& text = Queue.front().Text;
        const std::size_t ofRun = std::min(count, static_cast<std::size_t>(text.size()));
        text.remove(0, static_cast<qsizetype>(ofRun));
        QueuedLength -= ofRun;
        count -= ofRun;
        if (text.isEmpty())
            Queue.pop_front();
    }
    if (!Frame.isActive())
        Frame.start();
}

void OutputView::ScrollToEnd() {
    AtEnd = true;
    if (!Frame.isActive())
        Frame.start();
}

void OutputView::Apply() {
    Frame.stop();
    if (Removed > 0 || !Queue.empty()) {
        QTextCursor cursor(document());
        cursor.beginEditBlock();
        ApplyRemoval(cursor);
        ApplyRuns(cursor);
        cursor.endEditBlock();
        emit applied();
    }
    if (AtEnd)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void OutputView::ApplyRemoval(QTextCursor& cursor) {
    cursor.setPosition(static_cast<int>(Removed), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    DocumentLength -= Removed;
    Removed = 0;
}

void OutputView::ApplyRuns(QTextCursor& cursor) {
    // A selection of the player's stays as it is, also one that reaches the end and would grow.
    QTextCursor selection = textCursor();
    const int anchor = selection.anchor();
    const int position = selection.position();
    for (const Run& run : Queue) {
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(run.Text, run.Format);
    }
    if (anchor != position && (selection.anchor() != anchor || selection.position() != position)) {
        selection.setPosition(anchor);
        selection.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(selection);
    }
    DocumentLength += QueuedLength;
    QueuedLength = 0;
    Queue.clear();
}

void OutputView::CopyFrom(OutputView& other) {
    other.Apply();
    setFont(other.font());
    const QPointer<QTextDocument> before(document());
    setDocument(other.document()->clone(this));
    delete before;
    DocumentLength = other.DocumentLength;
    AtEnd = false;
}

bool OutputView::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)
        Apply();
    return QTextEdit::event(event);
}

bool OutputView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::ContextMenu)
        Apply();
    return QTextEdit::viewportEvent(event);
}

QMimeData* OutputView::createMimeDataFromSelection() const {
    // Plain text: pasting a game's text elsewhere should not bring its black background along.
    // What stands in the place of a NUL is nothing to copy.
    auto* const copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText().remove(kNoWidth));
    return copied;
}

void OutputView::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    if (AtEnd)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

} // namespace mw
