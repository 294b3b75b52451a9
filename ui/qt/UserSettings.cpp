#include "ui/UserSettings.h"

#include "ui/qt/Text.h"

#include <QSettings>

namespace mw {
namespace {

QString Path(const std::string& section, const std::string& key) {
    return ToQString(section) + '/' + ToQString(key);
}

} // namespace

void SaveUserSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) {
    QSettings(QStringLiteral("Quillmere"), ToQString(application))
        .setValue(Path(section, key), ToQString(value));
}

std::string GetUserSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) {
    const QSettings settings(QStringLiteral("Quillmere"), ToQString(application));
    return FromQString(settings.value(Path(section, key), ToQString(fallback)).toString());
}

void DeleteUserSettings(const std::string& application) {
    QSettings(QStringLiteral("Quillmere"), ToQString(application)).clear();
}

} // namespace mw
