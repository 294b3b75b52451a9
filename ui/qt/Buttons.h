// Buttons of the forms, made alike.
#pragma once

#include <functional>

#include <QBoxLayout>
#include <QPushButton>

namespace mw {

// Adds a button to the row; a click runs handler (RunHandler), under the button's name. It is the
// default of a dialog, which Enter presses, when it is told to be and while it has the focus.
QPushButton* AddButton(QBoxLayout* row, const char* name, const QString& caption,
                       const std::function<void()>& handler);

} // namespace mw
