#include "ui/WebPages.h"

#include "ui/qt/Text.h"

#include <QDesktopServices>
#include <QUrl>

namespace mw {

void OpenWebPage(const std::string& address) {
    QDesktopServices::openUrl(QUrl(ToQString(address)));
}

} // namespace mw
