#include "automation/frmAlias.h"

#include "automation/Aliases.h"
#include "automation/CommandLine.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/KeyCodes.h"

namespace mw {

frmAlias::frmAlias(QWidget* frame)
    : frmEntries("frmAlias", tr("Aliases"), frame),
      chkDisable(new QCheckBox(tr("Disa&ble this alias"))) {
    List->setObjectName("lstAlias");
    List->setAccessibleName(tr("Aliases"));
    Text->setObjectName("txtAlias");
    Action->setObjectName("txtAction");
    TextLabel->setText(tr("W&hen a line begins with"));
    ActionLabel->setText(tr("&put this in its place"));
    connect(Action, &QPlainTextEdit::textChanged, this, &frmAlias::KeepOnOneLine);
    Action->installEventFilter(this);
    chkDisable->setObjectName("chkDisable");
    Fields->addWidget(chkDisable, 4, 0);
    setTabOrder(Action, chkDisable);
    setTabOrder(chkDisable, cmdNew);
    connect(chkDisable, &QCheckBox::toggled, this, [this](bool checked) {
        RunHandler("chkDisable_Click", [this, checked] { chkDisable_Click(checked); });
    });
    Refill();
    Browse();
}

std::vector<frmEntries::Entry> frmAlias::Entries() const {
    std::vector<Entry> entries;
    for (const std::int16_t index : ListedAliases()) {
        const AliasEntry& alias = CurrentSet().Aliases[static_cast<std::size_t>(index)];
        entries.push_back({index, alias.Alias, alias.Replace, !alias.IsEnabled});
    }
    return entries;
}

bool frmAlias::Store(const std::string& text, const std::string& action) {
    return AddAlias(text, action) >= 0;
}

bool frmAlias::Change(std::int16_t index, const std::string& text, const std::string& action) {
    return ChangeAlias(index, text, action);
}

void frmAlias::Remove(std::int16_t index) { DeleteAlias(index); }

// Enter in the box of one line is for the button with the thick edge.
bool frmAlias::eventFilter(QObject* watched, QEvent* event) {
    if (watched != Action || event->type() != QEvent::KeyPress ||
        KeyCodeOf(*static_cast<QKeyEvent*>(event)) != kEnterKey)
        return frmEntries::eventFilter(watched, event);
    event->ignore();
    return true;
}

// A line break would make the set's file unreadable.
void frmAlias::KeepOnOneLine() {
    const QString text = Action->document()->toRawText();
    QString line = text;
    line.replace(QChar::ParagraphSeparator, ' ').replace(QChar::LineSeparator, ' ');
    if (line == text)
        return;
    const int caret = Action->textCursor().position();
    Action->setPlainText(line);
    QTextCursor cursor = Action->textCursor();
    cursor.setPosition(caret);
    Action->setTextCursor(cursor);
}

// Meant: the box does not follow the selection, it only acts on it.
void frmAlias::SelectionChanged() { chkDisable->setEnabled(List->isEnabled() && Selected() >= 0); }

void frmAlias::chkDisable_Click(bool checked) {
    const int row = SelectedRow();
    EnableAlias(Selected(), !checked);
    Refill();
    const QSignalBlocker quiet(List);
    List->setCurrentRow(row);
}

} // namespace mw
