// The mud chooser as a widget. All choosers that are open show one list and one selection; they
// implement cboMud of ui/FrameControls.h.
#pragma once

#include <QComboBox>

namespace mw {

class MudCombo : public QComboBox {
    Q_OBJECT

public:
    MudCombo();
    ~MudCombo() override;
};

} // namespace mw
