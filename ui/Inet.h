// The transfer control of the version check.
#pragma once

#include <optional>
#include <string>

namespace mw::inetVersion {

// The whole body that url (http or https) has, by GET. Nothing when the server can't be reached,
// answers with an error, takes longer than three seconds or sends more than 64 KiB. Waits; does not
// nest.
std::optional<std::string> OpenURL(const std::string& url);

} // namespace mw::inetVersion
