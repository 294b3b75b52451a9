// The registry of Windows, below HKEY_LOCAL_MACHINE.
#include "ui/RegistryStore.h"

#include <windows.h>

namespace mw {
namespace {

// A key is opened for each access, so that RegistryKey needs no handle of the platform's.
struct OpenedKey {
    HKEY Handle = nullptr;

    OpenedKey() = default;
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() {
        if (Handle != nullptr)
            RegCloseKey(Handle);
    }
};

std::int32_t Open(const std::string& path, REGSAM access, OpenedKey& opened) {
    return RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, access, &opened.Handle);
}

} // namespace

std::int32_t CreateKey(const std::string& path, RegistryKey& key) {
    OpenedKey opened;
    const std::int32_t code =
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &opened.Handle, nullptr);
    if (code == kSuccess)
        key.Path = path;
    return code;
}

std::int32_t OpenKey(const std::string& path, RegistryKey& key) {
    OpenedKey opened;
    const std::int32_t code = Open(path, KEY_READ, opened);
    if (code == kSuccess)
        key.Path = path;
    return code;
}

std::int32_t SetStringValue(const RegistryKey& key, const std::string& name,
                            const std::string& data) {
    OpenedKey opened;
    const std::int32_t code = Open(key.Path, KEY_ALL_ACCESS, opened);
    if (code != kSuccess)
        return code;
    return RegSetValueExA(opened.Handle, name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(data.c_str()),
                          static_cast<DWORD>(data.size()));
}

std::int32_t QueryValue(const RegistryKey& key, const std::string& name, RegistryValue& value) {
    OpenedKey opened;
    std::int32_t code = Open(key.Path, KEY_READ, opened);
    if (code != kSuccess)
        return code;
    DWORD type = 0;
    DWORD size = 0;
    code = RegQueryValueExA(opened.Handle, name.c_str(), nullptr, &type, nullptr, &size);
    if (code != kSuccess)
        return code;
    value.Type = type;
    value.Data.assign(size, '\0');
    code = RegQueryValueExA(opened.Handle, name.c_str(), nullptr, nullptr,
                            reinterpret_cast<BYTE*>(value.Data.data()), &size);
    // Stored without its terminating zero, a string comes without one: readers count on it.
    if (type == REG_SZ && size > 0 && value.Data.back() != '\0')
        value.Data += '\0';
    return code;
}

void CloseKey(RegistryKey& key) { key.Path.clear(); }

} // namespace mw
