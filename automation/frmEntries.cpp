#include "automation/frmEntries.h"

#include "ui/qt/Buttons.h"
#include "ui/qt/OneLine.h"
#include "ui/qt/Text.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace mw {
namespace {

// The table breaks lines with CR LF. The box's plain text would have a blank for each blank that
// does not break a line.
std::string ActionText(const QPlainTextEdit* box) {
    return FromQString(box->document()
                           ->toRawText()
                           .replace(QChar::ParagraphSeparator, QStringLiteral("\r\n"))
                           .replace(QChar::LineSeparator, QStringLiteral("\r\n")));
}

QString BoxText(const std::string& action) {
    return ToQString(action).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

frmEntries::frmEntries(const char* name, const QString& title, QWidget* frame)
    : LockedDialog(name, title, frame), List(new QListWidget), TextLabel(new QLabel),
      Text(new QLineEdit), ActionLabel(new QLabel), Action(new QPlainTextEdit),
      Fields(new QGridLayout) {
    TextLabel->setBuddy(Text);
    ActionLabel->setBuddy(Action);
    Text->setValidator(new OneLine(Text)); // a break would make the set's file unreadable
    Action->setTabChangesFocus(true);
    // Locked texts are there to be read.
    QPalette readable = palette();
    readable.setBrush(QPalette::Disabled, QPalette::Text, readable.windowText());
    Text->setPalette(readable);
    Action->setPalette(readable);
    Fields->addWidget(TextLabel, 0, 0);
    Fields->addWidget(Text, 1, 0);
    Fields->addWidget(ActionLabel, 2, 0);
    Fields->addWidget(Action, 3, 0);
    Fields->setRowStretch(3, 1);

    auto* const work = new QHBoxLayout;
    work->addWidget(List, 2);
    work->addLayout(Fields, 3);

    auto* const buttons = new QHBoxLayout;
    cmdNew = AddButton(buttons, "cmdNew", tr("&New"), [this] { New(); });
    cmdAdd = AddButton(buttons, "cmdAdd", tr("&Add"), [this] { Add(); });
    cmdEdit = AddButton(buttons, "cmdEdit", tr("&Edit"), [this] { EditSelected(); });
    cmdDelete = AddButton(buttons, "cmdDelete", tr("De&lete"), [this] { Delete(); });
    buttons->addStretch(1);
    cmdDone = AddButton(buttons, "cmdDone", tr("&Done"), [this] { close(); });
    cmdCancel = AddButton(buttons, "cmdCancel", tr("&Cancel"), [this] { close(); });

    auto* const column = new QVBoxLayout(this);
    column->addLayout(work, 1);
    column->addLayout(buttons);
    cmdNew->setFocus();
    resize(640, 380);
    connect(List, &QListWidget::itemSelectionChanged, this, &frmEntries::ShowSelected);
    connect(List, &QListWidget::itemClicked, this, &frmEntries::ShowSelected); // after an Add, too
}

// A list has a current row as soon as it has the focus; only a selected one counts.
int frmEntries::SelectedRow() const {
    const QList<QListWidgetItem*> selected = List->selectedItems();
    return selected.isEmpty() ? -1 : List->row(selected.first());
}

std::int16_t frmEntries::Selected() const {
    const int row = SelectedRow();
    return row < 0 ? std::int16_t{-1} : Shown[static_cast<std::size_t>(row)].Index;
}

void frmEntries::Refill() {
    Shown = Entries();
    const QSignalBlocker quiet(List);
    List->clear();
    for (const Entry& entry : Shown) {
        auto* const item = new QListWidgetItem(ToQString(entry.Text), List);
        if (entry.Dimmed)
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
    }
}

// The state in which entries are looked at: the boxes are locked.
void frmEntries::Browse() {
    Editing = false;
    const bool selected = Selected() >= 0;
    List->setEnabled(true);
    Text->setEnabled(false);
    Action->setEnabled(false);
    cmdNew->setEnabled(true);
    cmdAdd->setEnabled(false);
    cmdAdd->setText(tr("&Add"));
    cmdEdit->setEnabled(selected);
    cmdDelete->setEnabled(selected);
    cmdDone->setDefault(true);
    SelectionChanged();
}

void frmEntries::ShowSelected() {
    const int row = SelectedRow();
    const Entry entry = row < 0 ? Entry() : Shown[static_cast<std::size_t>(row)];
    Text->setText(ToQString(entry.Text));
    Action->setPlainText(BoxText(entry.Action));
    Browse();
}

// The state in which texts are entered: only they, "Add" and the ways out can be used.
void frmEntries::Open(bool editing) {
    Editing = editing;
    List->setEnabled(false);
    Text->setEnabled(true);
    Action->setEnabled(true);
    cmdNew->setEnabled(false);
    cmdAdd->setEnabled(true);
    cmdAdd->setText(editing ? tr("&Store") : tr("&Add"));
    cmdEdit->setEnabled(false);
    cmdDelete->setEnabled(false);
    cmdAdd->setDefault(true);
    SelectionChanged();
    Text->setFocus();
}

void frmEntries::New() {
    Text->clear();
    Action->clear();
    Open(false);
}

void frmEntries::EditSelected() {
    ShowSelected();
    Open(true);
    Text->selectAll();
}

void frmEntries::Add() {
    const std::string text = FromQString(Text->text());
    const std::string action = ActionText(Action);
    const int row = SelectedRow();
    const bool added = !Editing;
    if (added ? !Store(text, action) : !Change(Selected(), text, action))
        return;
    Refill();
    List->setCurrentRow(added ? List->count() - 1 : row);
    ShowSelected();
    if (added) {
        Text->clear();
        Action->clear();
    }
    cmdNew->setFocus();
}

void frmEntries::Delete() {
    const int row = SelectedRow();
    Remove(Selected());
    Refill();
    List->setCurrentRow(qMin(row, List->count() - 1));
    ShowSelected();
    List->setFocus();
}

} // namespace mw
