// What a message box shows of a text that others wrote.
#pragma once

#include <QString>

namespace mw {

// The text, or its beginning and "..." when a box of it would not fit well on the screen: its lines
// take half of the screen's height, as wide as in the smallest box.
QString ShownText(const QString& text);

// The same with a break behind each of these lines, for a box that makes none itself.
QString ShownTextInLines(const QString& text);

} // namespace mw
