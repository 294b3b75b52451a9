#include "config/FileHandler.h"

#include "base/CodePage.h"
#include "base/Error.h"

#include <algorithm>
#include <system_error>

namespace mw {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(std::string name) {
    std::replace(name.begin(), name.end(), '\\', static_cast<char>(fs::path::preferred_separator));
    return fs::path(ToUnicode(name)).relative_path();
}

} // namespace

bool Exists(const std::string& file, const std::string& folder) {
    std::error_code ignored;
    return fs::exists(ApplicationFolder / PathOf(folder) / PathOf(file), ignored);
}

void MakeFolder(const std::string& name) {
    std::error_code failure;
    if (!fs::create_directory(ApplicationFolder / PathOf(name), failure))
        Raise(PathFileAccess, "MakeFolder");
}

bool IsFolderName(std::string_view name) {
    const bool ownFolder = name == "Data" || name == "Macros";
    const bool dots = name.find_first_not_of(". ") == std::string_view::npos; // "", ".", ".."
    const bool reserved = name.find_first_of("/\\:") != std::string_view::npos;
    const bool control = std::any_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 32; });
    return !ownFolder && !dots && !reserved && !control && name.size() <= 200;
}

} // namespace mw
