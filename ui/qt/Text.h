// Text at the Qt edge: 8-bit characters inside, QString outside.
#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace mw {

QString ToQString(std::string_view bytes);

// What the code page lacks becomes "?".
std::string FromQString(const QString& text);

} // namespace mw
