#include "ui/Clock.h"

#include "ui/qt/Text.h"

#include <QDateTime>
#include <QLocale>

namespace mw {

std::string GeneralDate() {
    return FromQString(
        QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
}

} // namespace mw
