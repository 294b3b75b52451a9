#include "automation/frmMacros.h"

#include "automation/Macros.h"
#include "ui/qt/ChoiceBox.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/OneLine.h"
#include "ui/qt/Text.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace mw {
namespace {

constexpr std::int16_t kFirstLetter = 65;
constexpr std::int16_t kFirstFunctionKey = 112;

template <std::size_t Count>
void Show(const std::array<QLineEdit*, Count>& boxes, const KeyTable& table, std::int16_t first) {
    for (QLineEdit* const box : boxes)
        box->setText(ToQString(KeyText(table, first++)));
}

void Store(const QLineEdit* box, KeyTable& table, std::size_t code) {
    SetKeyText(table, static_cast<std::int16_t>(code), FromQString(box->text()));
}

} // namespace

frmMacros::frmMacros(QWidget* frame)
    : LockedDialog("frmMacros", tr("Macros"), frame), cboMacro(new ChoiceBox),
      cmdNMacro(new QPushButton(tr("&New Macro Set"))), tsbMacros(new QTabWidget),
      cmdDone(new QPushButton(tr("&Done"))) {
    cboMacro->setObjectName("cboMacro");
    cmdNMacro->setObjectName("cmdNMacro");
    tsbMacros->setObjectName("tsbMacros");
    cmdDone->setObjectName("cmdDone");
    cmdDone->setDefault(true);
    auto* const setLabel = new QLabel(tr("Macro &set"));
    setLabel->setBuddy(cboMacro);

    tsbMacros->addTab(MakePanel(txtF.data(), 12, "txtF", "F", 0), tr("F Keys"));
    tsbMacros->addTab(MakePanel(TxtAlt.data(), 26, "TxtAlt", "Alt+", 'A'), tr("Alt Keys"));
    tsbMacros->addTab(MakePanel(txtCtrl.data(), 26, "txtCtrl", "Ctrl+", 'A'), tr("Ctrl Keys"));

    auto* const top = new QHBoxLayout;
    top->addWidget(setLabel);
    top->addWidget(cboMacro, 1);
    top->addWidget(cmdNMacro);
    auto* const hint = new QLabel(
        tr("A text that ends with the escape character is sent; any other waits in the command "
           "line."));
    hint->setWordWrap(true);
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(hint, 1);
    bottom->addWidget(cmdDone);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(tsbMacros, 1);
    column->addLayout(bottom);
    resize(640, 560);

    connect(cboMacro, &QComboBox::currentIndexChanged, this, [this](int index) {
        RunHandler("cboMacro_Click", [this, index] { cboMacro_Click(index); });
    });
    connect(cmdNMacro, &QPushButton::clicked, this,
            [this] { RunHandler("cmdNMacro_Click", [this] { cmdNMacro_Click(); }); });
    connect(cmdDone, &QPushButton::clicked, this,
            [this] { RunHandler("cmdDone_Click", [this] { cmdDone_Click(); }); });
    FillSets();
    ShowTexts();
    txtF[0]->setFocus();
}

// Boxes with their labels in two columns, filled downward.
QWidget* frmMacros::MakePanel(QLineEdit** boxes, int count, const char* name, const QString& prefix,
                              int firstKey) {
    auto* const panel = new QWidget;
    auto* const grid = new QGridLayout(panel);
    const int rows = (count + 1) / 2;
    for (int i = 0; i < count; ++i) {
        const QString key = firstKey == 0 ? QString::number(i + 1) : QString(QChar(firstKey + i));
        boxes[i] = new QLineEdit;
        boxes[i]->setValidator(new OneLine(boxes[i]));
        boxes[i]->setObjectName(QStringLiteral("%1%2").arg(QLatin1String(name)).arg(i));
        boxes[i]->setAccessibleName(prefix + key);
        auto* const label = new QLabel(prefix + key);
        label->setObjectName("lbl" + QString(prefix).remove('+') + key);
        label->setBuddy(boxes[i]);
        const int column = i < rows ? 0 : 2;
        grid->addWidget(label, i % rows, column, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(boxes[i], i % rows, column + 1);
    }
    grid->setRowStretch(rows, 1);
    grid->setHorizontalSpacing(8);
    return panel;
}

// While the program itself fills and selects, the chooser's handler is kept quiet.
void frmMacros::FillSets() {
    const QSignalBlocker quiet(cboMacro);
    cboMacro->clear();
    for (const MacroSet& set : MacroSets)
        cboMacro->addItem(ToQString(set.Name));
    cboMacro->setCurrentIndex(CurrentMacroSet);
}

void frmMacros::ShowTexts() {
    const MacroSet& set = CurrentSet();
    Show(txtF, set.NormKey, kFirstFunctionKey);
    Show(TxtAlt, set.AltKey, kFirstLetter);
    Show(txtCtrl, set.CtrlKey, kFirstLetter);
}

// What was typed for the set shown before and not stored by "Done" is dropped.
void frmMacros::cboMacro_Click(int index) {
    ChooseMacroSet(static_cast<std::int16_t>(index));
    ShowTexts();
}

void frmMacros::cmdNMacro_Click() {
    if (!MayAddMacroSet())
        return;
    const QString name = QInputDialog::getText(this, tr("New Macro Set"), tr("Macro set name?"));
    if (!AddMacroSet(FromQString(name)))
        return;
    FillSets();
    ShowTexts();
}

void frmMacros::cmdDone_Click() {
    MacroSet& set = CurrentSet();
    for (std::size_t i = 0; i < TxtAlt.size(); ++i) {
        Store(TxtAlt[i], set.AltKey, kFirstLetter + i);
        Store(txtCtrl[i], set.CtrlKey, kFirstLetter + i);
    }
    for (std::size_t i = 0; i < txtF.size(); ++i)
        Store(txtF[i], set.NormKey, kFirstFunctionKey + i);
    close();
}

} // namespace mw
