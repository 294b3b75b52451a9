// What the program is: name, version, licence, and the libraries it stands on.
#pragma once

#include "ui/qt/WindowsOnTop.h"

namespace mw {

class frmAbout : public LockedDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* frame);
};

} // namespace mw
