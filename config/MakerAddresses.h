// Where the maker's services are found: the built-in game and the web site.
//
// Both are set when the build is configured (QUILLMERE_GAME_HOST, QUILLMERE_WEB_ROOT). Environment
// variables of the same names take precedence, for tests and private deployments.
#pragma once

#include <cstdlib>
#include <string>

namespace mw {

inline std::string EnvironmentOr(const char* variable, const char* fallback) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0' ? value : fallback;
}

// Host name of the built-in game.
inline std::string GameHost() { return EnvironmentOr("QUILLMERE_GAME_HOST", QUILLMERE_GAME_HOST); }

// Root of the web site, without a slash at its end.
inline std::string WebRoot() { return EnvironmentOr("QUILLMERE_WEB_ROOT", QUILLMERE_WEB_ROOT); }

} // namespace mw
