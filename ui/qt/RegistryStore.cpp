// The registry where the system has none: a JSON file, registry.json in the per-user configuration
// folder. It is read for each access and written whole.
#include "ui/RegistryStore.h"

#include "ui/qt/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

namespace mw {
namespace {

constexpr std::int32_t kBadStore = 1009; // the platform's code for a damaged registry
constexpr qint64 kLargestStore = qint64{4} * 1024 * 1024; // bytes that are read and written

QString StorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/quillmere/registry.json";
}

// The whole store. A file that is not there is an empty one; a link that leads nowhere is there,
// and a pipe is not waited for.
std::int32_t ReadStore(QJsonObject& store) {
    const QFileInfo info(StorePath());
    if (!info.exists() && !info.isSymLink())
        return kSuccess;
    QFile file(StorePath());
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return kAccessDenied;
    const QByteArray text = file.read(kLargestStore + 1);
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (text.size() > kLargestStore || !document.isObject())
        return kBadStore;
    store = document.object();
    return kSuccess;
}

std::int32_t WriteStore(const QJsonObject& store) {
    const QByteArray text = QJsonDocument(store).toJson();
    if (text.size() > kLargestStore || !QDir().mkpath(QFileInfo(StorePath()).path()))
        return kAccessDenied;
    QSaveFile file(StorePath());
    if (!file.open(QIODevice::WriteOnly))
        return kAccessDenied;
    // A full disk cuts a write short, which is no error to the file that is committed.
    const bool isWhole = file.write(text) == text.size() && file.flush();
    return isWhole && file.commit() ? kSuccess : kAccessDenied;
}

std::string NumberData(std::uint32_t number) {
    std::string data;
    for (int shift = 0; shift < 32; shift += 8)
        data += static_cast<char>(number >> shift);
    return data;
}

} // namespace

std::int32_t CreateKey(const std::string& path, RegistryKey& key) {
    QJsonObject store;
    const std::int32_t code = ReadStore(store);
    if (code != kSuccess)
        return code;
    key.Path = path;
    if (store.contains(ToQString(path)))
        return kSuccess;
    store[ToQString(path)] = QJsonObject();
    return WriteStore(store);
}

std::int32_t OpenKey(const std::string& path, RegistryKey& key) {
    QJsonObject store;
    const std::int32_t code = ReadStore(store);
    if (code != kSuccess)
        return code;
    if (!store.value(ToQString(path)).isObject())
        return kNotFound;
    key.Path = path;
    return kSuccess;
}

std::int32_t SetStringValue(const RegistryKey& key, const std::string& name,
                            const std::string& data) {
    QJsonObject store;
    const std::int32_t code = ReadStore(store);
    if (code != kSuccess)
        return code;
    QJsonObject section = store.value(ToQString(key.Path)).toObject();
    section[ToQString(name)] =
        QJsonObject{{"type", static_cast<int>(kStringType)}, {"value", ToQString(data)}};
    store[ToQString(key.Path)] = section;
    return WriteStore(store);
}

std::int32_t QueryValue(const RegistryKey& key, const std::string& name, RegistryValue& value) {
    QJsonObject store;
    const std::int32_t code = ReadStore(store);
    if (code != kSuccess)
        return code;
    const QJsonObject section = store.value(ToQString(key.Path)).toObject();
    if (!section.value(ToQString(name)).isObject())
        return kNotFound;
    const QJsonObject stored = section.value(ToQString(name)).toObject();
    value.Type = static_cast<std::uint32_t>(stored.value("type").toInt());
    value.Data = value.Type == kStringType
                     ? FromQString(stored.value("value").toString()) + '\0'
                     : NumberData(static_cast<std::uint32_t>(stored.value("value").toInteger()));
    return kSuccess;
}

void CloseKey(RegistryKey& key) { key.Path.clear(); }

} // namespace mw
