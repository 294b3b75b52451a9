#include "config/frmSetup.h"

#include "config/Setup.h"
#include "ui/SetupControls.h"
#include "ui/qt/Buttons.h"
#include "ui/qt/EventBoundary.h"
#include "ui/qt/OneLine.h"
#include "ui/qt/OutputFont.h"
#include "ui/qt/Text.h"

#include <QColorDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

namespace mw {
namespace {

constexpr int kColumns = 3;
constexpr QSize kSwatchSize(36, 20);
constexpr std::int32_t kUnpainted = 0xC0C0C0;

QPointer<frmSetup> Form; // the one setup dialog

QColor FromClient(std::int32_t colour) {
    return {colour & 255, (colour >> 8) & 255, (colour >> 16) & 255};
}

std::int32_t ToClient(const QColor& colour) {
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

// A family that is not installed is replaced by one whose letters have one width, as in the output.
// Without its style's name the chooser would mark another one.
QFont FontOf(const FontChoice& choice) {
    QFont font = OutputFont(choice.Name, choice.Size);
    const QFontInfo found(font);
    font.setFamily(found.family());
    font.setStyleName(found.styleName());
    return font;
}

} // namespace

frmSetup::frmSetup(QWidget* frame) : LockedDialog("frmSetup", tr("Fonts Setup"), frame) {
    Form = this;
    auto* const column = new QVBoxLayout(this);
    column->addWidget(MakeColours());
    column->addWidget(MakeFonts());
    column->addStretch(1);
    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    cmdDefault = AddButton(buttons, "cmdDefault", tr("&Default"), cmdDefault_Click);
    buttons->addStretch(1);
    cmdClose = AddButton(buttons, "cmdClose", tr("&Close"), [this] { close(); });
    cmdCancel = AddButton(buttons, "cmdCancel", tr("Ca&ncel"), [this] { close(); });
    cmdClose->setDefault(true);
    RunHandler("frmSetup_Load", frmSetup_Load);
}

QWidget* frmSetup::MakeColours() {
    auto* const group = new QGroupBox(tr("Colours"));
    auto* const grid = new QGridLayout(group);
    grid->setHorizontalSpacing(10);
    for (std::size_t i = 0; i < std::size(kSwatches); ++i)
        AddSwatch(grid, i);
    return group;
}

void frmSetup::AddSwatch(QGridLayout* grid, std::size_t index) {
    const Swatch& row = kSwatches[index];
    auto* const swatch = new QToolButton;
    swatch->setObjectName(row.Control);
    swatch->setToolTip(tr(row.Colour));
    swatch->setAccessibleName(tr(row.Colour));
    swatch->setFocusPolicy(Qt::StrongFocus);
    swatch->setIconSize(kSwatchSize);
    Swatches.push_back(swatch);
    PaintSwatch(index, kUnpainted);
    connect(swatch, &QToolButton::clicked, this,
            [row, index] { RunHandler(row.Control, [index] { Swatch_Click(index); }); });
    constexpr int kRows = static_cast<int>(std::size(kSwatches)) / kColumns;
    const int place = static_cast<int>(index);
    grid->addWidget(swatch, place % kRows, place / kRows * 2);
    grid->addWidget(new QLabel(tr(row.Colour)), place % kRows, place / kRows * 2 + 1);
    grid->setColumnStretch(place / kRows * 2 + 1, 1);
}

QWidget* frmSetup::MakeFonts() {
    auto* const group = new QGroupBox(tr("Font and commands"));
    auto* const fields = new QFormLayout(group);
    auto* const row = new QHBoxLayout;
    lblFontName = new QLabel;
    lblFontName->setObjectName("lblFontName");
    lblFontName->setTextFormat(Qt::PlainText);
    lblFontName->setMaximumWidth(400); // a longer name is cut
    lblFontSize = new QLabel;
    lblFontSize->setObjectName("lblFontSize");
    lblFontSize->setTextFormat(Qt::PlainText);
    row->addWidget(lblFontName);
    row->addWidget(lblFontSize);
    row->addStretch(1);
    cmdFont = AddButton(row, "cmdFont", tr("&Font..."), cmdFont_Click);
    fields->addRow(tr("Output font"), row);
    txtEscChar = new QLineEdit;
    txtEscChar->setObjectName("txtEscChar");
    txtEscChar->setMaximumWidth(80);
    txtEscChar->setValidator(new OneLine(txtEscChar)); // a break would make the file unreadable
    txtEscChar->setToolTip(tr("Between several commands in one line"));
    fields->addRow(tr("&Escape character"), txtEscChar);
    connect(txtEscChar, &QLineEdit::textChanged, this, [](const QString& text) {
        RunHandler("txtEscChar_Change", [&text] { txtEscChar_Change(FromQString(text)); });
    });
    return group;
}

void PaintSwatch(std::size_t swatch, std::int32_t colour) {
    if (!Form)
        return;
    QPixmap pixmap(kSwatchSize);
    pixmap.fill(FromClient(colour));
    Form->Swatches[swatch]->setIcon(pixmap);
    Form->Swatches[swatch]->setAccessibleDescription(FromClient(colour).name());
}

// The setup dialog, and a chooser with it, may go while the player chooses: the program stops.

std::optional<std::int32_t> ShowColourChooser(std::int32_t preset) {
    const QPointer<QColorDialog> chooser = new QColorDialog(FromClient(preset), Form);
    const bool isChosen = chooser->exec() == QDialog::Accepted && chooser;
    const QColor colour = isChosen ? chooser->selectedColor() : QColor();
    delete chooser;
    return isChosen ? std::optional(ToClient(colour)) : std::nullopt;
}

FontChoice ShowFontChooser(const FontChoice& preset) {
    const QPointer<QFontDialog> chooser = new QFontDialog(FontOf(preset), Form);
    const bool isChosen = chooser->exec() == QDialog::Accepted && chooser;
    const QFont font = isChosen ? chooser->selectedFont() : QFont();
    delete chooser;
    if (!isChosen)
        return preset;
    return {FromQString(font.family()), std::to_string(font.pointSize())};
}

void ShowFont(const FontChoice& font, bool inItself) {
    if (!Form)
        return;
    Form->lblFontName->setText(ToQString(font.Name));
    Form->lblFontSize->setText(ToQString(font.Size));
    if (inItself)
        Form->lblFontName->setFont(FontOf(font));
}

void SetEscapeText(const std::string& text) {
    if (Form)
        Form->txtEscChar->setText(ToQString(text));
}

} // namespace mw
