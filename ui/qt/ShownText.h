// What a message box shows of a text that others wrote.
#pragma once

#include <QString>

namespace mw {

// The text, or its beginning and "..." when a box of it would not fit well on the screen: its lines
// take more than half of the screen's height, as wide as in the smallest box.
QString ShownText(const QString& text);

} // namespace mw
