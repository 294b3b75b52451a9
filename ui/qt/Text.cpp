#include "ui/qt/Text.h"

#include "base/CodePage.h"

namespace mw {

QString ToQString(std::string_view bytes) { return QString::fromStdU16String(ToUnicode(bytes)); }

std::string FromQString(const QString& text) { return FromUnicode(text.toStdU16String()); }

} // namespace mw
