// The pages of the world's web server: a home page that says how to come in, the version of the
// client that is published, which clients look up to learn of a newer one, the client's manual, and
// the sounds.
#pragma once

#include "Http.h"

#include <string>
#include <string_view>

namespace world {

inline constexpr std::string_view HomePath = "/";
inline constexpr std::string_view ManualPath = "/manual/"; // its pages lie below
inline constexpr std::string_view VersionPath = "/client/clientver.txt";

// The pages of a world whose game listens on this port. The version is published to the byte: a
// line end would be part of it. Makes the sounds, which takes some hundredths of a second.
Pages Site(int gamePort, const std::string& clientVersion);

} // namespace world
