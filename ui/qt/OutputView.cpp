#include "ui/qt/OutputView.h"

#include "ui/qt/Text.h"

#include <algorithm>

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextLayout>

namespace mw {
namespace {

constexpr int kFrame = 16; // milliseconds
constexpr int kSlowFrame = 250;

// NUL, which telnet uses as padding, takes no room, TAB is a tab stop, and all other control bytes
// are a small dot.
QString Visible(std::string_view bytes) {
    QString text = ToQString(bytes);
    for (QChar& c : text) {
        const char16_t code = c.unicode();
        if (code == 0)
            c = kNoWidth;
        else if ((code < 32 && code != '\n' && code != '\t') || (code >= 127 && code <= 159))
            c = QChar(0x00B7);
    }
    return text;
}

} // namespace

OutputView::OutputView(QWidget* parent) : QTextEdit(parent), IsToBeTold(QAccessible::isActive()) {
    QAccessible::installActivationObserver(this);
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

OutputView::~OutputView() { QAccessible::removeActivationObserver(this); }

void OutputView::accessibilityActiveChanged(bool active) { IsToBeTold = active; }

void OutputView::Append(std::string_view bytes, const QTextCharFormat& format) {
    if (bytes.empty())
        return;
    mw::Append(Queue, bytes);
    if (!Runs.empty() && Formats[Runs.back().Format] == format)
        Runs.back().Length += bytes.size();
    else
        Runs.push_back({bytes.size(), PlaceOf(format)});
    if (!Frame.isActive())
        Frame.start();
}

// A game uses a handful of formats, however many runs are queued.
std::size_t OutputView::PlaceOf(const QTextCharFormat& format) {
    const auto place = std::find(Formats.begin(), Formats.end(), format);
    if (place != Formats.end())
        return static_cast<std::size_t>(place - Formats.begin());
    Formats.push_back(format);
    return Formats.size() - 1;
}

void OutputView::RemoveFirst(std::size_t count) {
    const std::size_t ofDocument = std::min(count, DocumentLength - Removed);
    Removed += ofDocument;
    RemoveQueued(std::min(count - ofDocument, View(Queue).size()));
    if (!Frame.isActive())
        Frame.start();
}

void OutputView::RemoveQueued(std::size_t count) {
    TakeFront(Queue, count);
    while (count > 0) {
        const std::size_t ofRun = std::min(count, Runs.front().Length);
        Runs.front().Length -= ofRun;
        count -= ofRun;
        if (Runs.front().Length == 0)
            Runs.pop_front();
    }
}

void OutputView::ScrollToEnd() {
    AtEnd = true;
    if (!Frame.isActive())
        Frame.start();
}

void OutputView::Apply() {
    QElapsedTimer taken;
    taken.start();
    Frame.stop();
    if (Removed > 0 || !Runs.empty()) {
        if (IsToBeTold)
            ApplyAndTell();
        else
            ApplyInOneEdit();
        emit applied();
    }
    if (AtEnd)
        ShowEnd();
    Frame.setInterval(std::clamp(static_cast<int>(taken.elapsed()), kFrame, kSlowFrame));
}

void OutputView::ApplyInOneEdit() {
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    ApplyRemoval(cursor);
    ApplyRuns(cursor);
    cursor.endEditBlock();
}

// In two edits: of one with both ends a screen reader is told that everything between is new.
void OutputView::ApplyAndTell() {
    QTextCursor cursor(document());
    ApplyRemoval(cursor);
    cursor.movePosition(QTextCursor::End);
    const int before = cursor.position();
    cursor.beginEditBlock();
    ApplyRuns(cursor);
    cursor.endEditBlock();
    cursor.setPosition(before);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    emit arrived(cursor.selection().toPlainText().remove(kNoWidth));
}

// In whole lines: what is left of the height stays free above them.
void OutputView::ShowEnd() {
    const auto margin = static_cast<int>(document()->documentMargin());
    const QTextBlock block = document()->lastBlock();
    const QRectF bounds = document()->documentLayout()->blockBoundingRect(block); // lays it out
    const int lines = std::max(block.layout()->lineCount(), 1);
    const int row = std::max(static_cast<int>(bounds.height()) / lines, 1);
    const int top = std::max(height() - margin, 0) % row;
    if (top != viewportMargins().top())
        setViewportMargins(0, top, 0, 0);
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
    for (const Run& run : Runs) {
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(Visible(View(Queue).substr(0, run.Length)), Formats[run.Format]);
        DocumentLength += run.Length;
        TakeFront(Queue, run.Length);
    }
    Runs.clear();
    Formats.clear();
    if (anchor != position && (selection.anchor() != anchor || selection.position() != position)) {
        selection.setPosition(anchor);
        selection.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(selection);
    }
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
        ShowEnd();
}

} // namespace mw
