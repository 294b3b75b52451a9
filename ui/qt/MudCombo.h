// The mud chooser as a widget. All choosers that are open show one list and one selection; they
// implement cboMud of ui/FrameControls.h.
#pragma once

#include "ui/qt/ChoiceBox.h"

namespace mw {

class MudCombo : public ChoiceBox {
    Q_OBJECT

public:
    MudCombo();
    ~MudCombo() override;
};

} // namespace mw
