// The machine-wide registry: typed values by key path and name.
//
// Return codes are the platform's own: 0 for success, 2 when a key or value is not there, 5 when
// access is denied, others as they come. On Windows this is the real registry; elsewhere a file in
// the per-user configuration folder serves (docs/formats.md), and behaves alike.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

inline constexpr std::int32_t kSuccess = 0;
inline constexpr std::int32_t kNotFound = 2;
inline constexpr std::int32_t kAccessDenied = 5;

inline constexpr std::uint32_t kStringType = 1; // REG_SZ

struct RegistryKey {
    std::string Path; // as it was opened; meaningful while open
};

struct RegistryValue {
    std::uint32_t Type = 0; // kStringType or another of the platform's
    std::string Data;       // a string's data ends with its terminating zero
};

// Opens a key, made anew if need be, for writing; or one that exists for reading.
std::int32_t CreateKey(const std::string& path, RegistryKey& key);
std::int32_t OpenKey(const std::string& path, RegistryKey& key);

// Sets a string value. The platform adds the terminating zero that data lacks.
std::int32_t SetStringValue(const RegistryKey& key, const std::string& name,
                            const std::string& data);

std::int32_t QueryValue(const RegistryKey& key, const std::string& name, RegistryValue& value);

void CloseKey(RegistryKey& key);

} // namespace mw
