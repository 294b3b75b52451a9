// The platform's per-user settings store: texts by application, section and key.
#pragma once

#include <string>

namespace mw {

// Keep, read back (fallback when it was never kept) and forget. None of them reports a failure.
void SaveUserSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value);
std::string GetUserSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback);
void DeleteUserSettings(const std::string& application);

} // namespace mw
