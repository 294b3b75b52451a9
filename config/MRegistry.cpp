#include "config/MRegistry.h"

#include "base/Error.h"
#include "base/Lines.h"
#include "base/Notice.h"
#include "ui/RegistryStore.h"

namespace mw {
namespace {

struct SettingName {
    std::string Path;
    std::string Key;
};

[[noreturn]] void RaiseNumber(std::int32_t number, const char* description) {
    throw Error{number, "MRegistry", description};
}

void Check(std::int32_t code, const char* description) {
    if (code != kSuccess)
        RaiseNumber(kSystemError + code, description);
}

SettingName NameOf(const std::string& application, const std::string& section,
                   const std::string& key) {
    const std::string trimmedApplication(TrimBlanks(application));
    const std::string trimmedSection(TrimBlanks(section));
    const std::string trimmedKey(TrimBlanks(key));
    if (trimmedApplication.empty())
        RaiseNumber(kNoAppName, "AppName may not be empty");
    if (trimmedSection.empty())
        RaiseNumber(kNoSection, "Section may not be empty");
    if (trimmedKey.empty())
        RaiseNumber(kNoKey, "Key may not be empty");
    return {"SOFTWARE\\" + trimmedApplication + "\\" + trimmedSection, trimmedKey};
}

// Closes the key on every way out, so that an error reaches the caller as it was raised.
struct OpenedKey {
    RegistryKey Key;

    OpenedKey() = default;
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() { CloseKey(Key); }
};

} // namespace

void WriteSetting(const std::string& application, const std::string& section,
                  const std::string& key, const std::string& value) {
    const SettingName name = NameOf(application, section, key);
    OpenedKey opened;
    Check(CreateKey(name.Path, opened.Key), "Could not open/create registry section");
    // Meant: the value goes without a terminating zero counted.
    Check(SetStringValue(opened.Key, name.Key, value), "Could not set key value");
}

std::string ReadSetting(const std::string& application, const std::string& section,
                        const std::string& key, const std::string& fallback) {
    const SettingName name = NameOf(application, section, key);
    OpenedKey opened;
    const std::int32_t code = OpenKey(name.Path, opened.Key);
    if (code == kNotFound)
        return fallback;
    Check(code, "Could not open registry section");
    RegistryValue value;
    if (QueryValue(opened.Key, name.Key, value) != kSuccess)
        return fallback;
    // Meant: the type is added, not a system code. In 32 bits, as a damaged store has any type.
    if (value.Type != kStringType)
        RaiseNumber(
            static_cast<std::int32_t>(static_cast<std::uint32_t>(kSystemError) + value.Type),
            "Registry data not a string");
    if (!value.Data.empty())
        value.Data.pop_back(); // the terminating zero
    return value.Data;
}

std::string SettingAtStart(const std::string& section, const std::string& key,
                           const std::string& fallback) {
    try {
        return ReadSetting(kApplicationName, section, key, fallback);
    } catch (const Error& error) {
        ShowNotice("Settings could not be read: " + error.Description);
        return fallback;
    }
}

void KeepSetting(const std::string& section, const std::string& key, const std::string& value) {
    try {
        WriteSetting(kApplicationName, section, key, value);
    } catch (const Error& error) {
        ShowNotice("Settings could not be kept: " + error.Description);
    }
}

} // namespace mw
