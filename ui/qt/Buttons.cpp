#include "ui/qt/Buttons.h"

#include "ui/qt/EventBoundary.h"

namespace mw {

QPushButton* AddButton(QBoxLayout* row, const char* name, const QString& caption,
                       const std::function<void()>& handler) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(true); // Enter presses the one that has the focus
    QObject::connect(button, &QPushButton::clicked, button,
                     [name, handler] { RunHandler(name, handler); });
    row->addWidget(button);
    return button;
}

} // namespace mw
