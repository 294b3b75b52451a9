#include "automation/frmInput.h"

#include "automation/CommandBox.h"
#include "automation/CommandLine.h"
#include "automation/MacroKeys.h"
#include "base/Error.h"
#include "base/Globals.h"
#include "ui/InputControls.h"
#include "ui/qt/BoxNames.h"
#include "ui/qt/ChoiceBox.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/KeyCodes.h"
#include "ui/qt/OneLine.h"
#include "ui/qt/Text.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>

namespace mw {
namespace {

constexpr int kLongestLine = 32767;

QPointer<QComboBox> Box; // the one command line

// What is wrong with the macro sets is told when the key goes down.
bool KeyHasMacro(const QKeyEvent& event) {
    try {
        return HasMacro(KeyCodeOf(event));
    } catch (const Error&) {
        return false;
    }
}

} // namespace

bool IsMenuKey(const QKeyEvent& event) {
    // Alt alone is no menu key: the menu bar would take the focus, and see it come up.
    return event.modifiers() == Qt::AltModifier && event.key() != Qt::Key_Alt &&
           !KeyHasMacro(event);
}

frmInput::frmInput(QWidget* parent) : QWidget(parent), cboInput(new ChoiceBox(this)) {
    cboInput->setObjectName("cboInput");
    cboInput->setEditable(true);
    cboInput->setInsertPolicy(QComboBox::NoInsert);
    cboInput->setCompleter(nullptr);
    // Leaving the box is no choice of an entry, though its text may be one.
    disconnect(cboInput->lineEdit(), &QLineEdit::editingFinished, cboInput, nullptr);
    cboInput->setMaxVisibleItems(static_cast<int>(kLongestHistory));
    NameBox(cboInput, tr("Command line"));
    cboInput->lineEdit()->setMaxLength(kLongestLine);
    cboInput->lineEdit()->setValidator(new OneLine(this));
    cboInput->lineEdit()->setPlaceholderText(tr("Type a command and press Enter"));
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(11);
    cboInput->setFont(font);
    cboInput->installEventFilter(this);
    cboInput->view()->installEventFilter(this);
    Box = cboInput;

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(cboInput);
    setFocusProxy(cboInput);

    connect(cboInput->lineEdit(), &QLineEdit::textEdited, this, [] { cboInput_Change(); });
    connect(cboInput, &QComboBox::activated, this,
            [](int index) { SelectHistory(static_cast<std::int16_t>(index)); });
}

// The box has the focus itself, so the keys come to it and not to its edit field. Taking the
// shortcut override brings every key here before a menu can have it. While the list is dropped down
// they come to that, which acts on them as lists do.
bool frmInput::eventFilter(QObject* watched, QEvent* event) {
    if (watched != cboInput && event->type() != QEvent::KeyRelease) {
        if (event->type() == QEvent::KeyPress)
            KeyInList(*static_cast<QKeyEvent*>(event));
        return false;
    }
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!IsMenuKey(*static_cast<QKeyEvent*>(event)))
            event->accept();
        return false;
    case QEvent::KeyPress:
        return KeyDown(static_cast<QKeyEvent*>(event)) || KeyPress(static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease: {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (!key->isAutoRepeat())
            RunHandler("cboInput_KeyUp", [key] { cboInput_KeyUp(KeyCodeOf(*key)); });
        return false;
    }
    case QEvent::InputMethod: { // types without a key
        const auto* const input = static_cast<QInputMethodEvent*>(event);
        if (!input->preeditString().isEmpty() || !input->commitString().isEmpty())
            LastKeyWasEnter = false;
        return false;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

// Macros and directions are sent, but Enter chooses a line.
void frmInput::KeyInList(const QKeyEvent& event) {
    const std::int16_t keyCode = KeyCodeOf(event);
    if (keyCode != kEnterKey)
        RunHandler("cboInput_KeyDown", [keyCode] { cboInput_KeyDown(keyCode); });
}

// Returns true when the box is not to see the key.
bool frmInput::KeyDown(QKeyEvent* event) {
    const std::int16_t keyCode = KeyCodeOf(*event);
    RunHandler("cboInput_KeyDown", [keyCode] { cboInput_KeyDown(keyCode); });
    switch (keyCode) {
    case kEnterKey:
        return true;
    case 33: // Page Up
    case 34: // Page Down
        emit pageKey(event);
        return true;
    case 38: // Up
        RecallOlder();
        return true;
    case 40: // Down
        if (event->modifiers().testFlag(Qt::AltModifier))
            return false; // drops the list down
        RecallNewer();
        return true;
    default:
        return false;
    }
}

bool frmInput::KeyPress(QKeyEvent* event) {
    std::int16_t character = CharacterOf(*event);
    if (character == 0)
        return false;
    RunHandler("cboInput_KeyPress", [&character] { cboInput_KeyPress(character); });
    // A letter with Alt is meant for a macro or a menu, and types nothing.
    const Qt::KeyboardModifiers held = event->modifiers() & (Qt::AltModifier | Qt::ControlModifier);
    return character == 0 || (held == Qt::AltModifier && event->text()[0].isPrint());
}

namespace cboInput {

std::string Text() { return FromQString(Box->currentText()); }

void SetText(std::string_view text) {
    Box->setCurrentIndex(HistoryIndex);
    Box->setEditText(ToQString(text));
}

std::size_t TextLength() { return static_cast<std::size_t>(Box->lineEdit()->text().size()); }

// Most appends find the caret where they want it; moving it there again would repaint the box.
void Select(std::size_t start, std::size_t length) {
    const QLineEdit& edit = *Box->lineEdit();
    if (edit.cursorPosition() == static_cast<int>(start + length) &&
        edit.selectionLength() == static_cast<int>(length))
        return;
    if (length == 0)
        Box->lineEdit()->setCursorPosition(static_cast<int>(start));
    else
        Box->lineEdit()->setSelection(static_cast<int>(start), static_cast<int>(length));
}

void SetFocus() { Box->setFocus(); }

void AddItem(std::string_view text) { Box->addItem(ToQString(text)); }

void RemoveFirstItem() { Box->removeItem(0); }

} // namespace cboInput
} // namespace mw
