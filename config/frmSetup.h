// The setup dialog's window; what its controls do is config/Setup.h's.
#pragma once

#include "ui/qt/WindowsOnTop.h"

#include <vector>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace mw {

class frmSetup : public LockedDialog {
    Q_OBJECT

public:
    explicit frmSetup(QWidget* frame);

    std::vector<QToolButton*> Swatches; // in the order of kSwatches
    QLabel* lblFontName;
    QLabel* lblFontSize;
    QLineEdit* txtEscChar;
    QPushButton* cmdFont;
    QPushButton* cmdDefault;
    QPushButton* cmdClose;
    QPushButton* cmdCancel;

private:
    QWidget* MakeColours();
    QWidget* MakeFonts();
    void AddSwatch(QGridLayout* grid, std::size_t index);
};

} // namespace mw
