// The client's own version. The build sets it (project(VERSION) in CMakeLists.txt).
#pragma once

#include <string>

namespace mw {

struct Version {
    int Major = 0;
    int Minor = 0;
    int Revision = 0;
};

inline constexpr Version kOwnVersion{QUILLMERE_VERSION_MAJOR, QUILLMERE_VERSION_MINOR,
                                     QUILLMERE_VERSION_PATCH};

// "1.2.5"
inline std::string DottedVersion(const Version& version) {
    return std::to_string(version.Major) + "." + std::to_string(version.Minor) + "." +
           std::to_string(version.Revision);
}

} // namespace mw
