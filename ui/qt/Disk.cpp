#include "ui/Disk.h"

#include <limits>

namespace mw {

std::uint64_t FreeSpace(const std::filesystem::path& path) {
    std::filesystem::path folder = std::filesystem::absolute(path);
    std::error_code failure;
    while (!std::filesystem::exists(folder, failure) && folder.has_relative_path())
        folder = folder.parent_path();
    const std::filesystem::space_info space = std::filesystem::space(folder, failure);
    return failure ? std::numeric_limits<std::uint64_t>::max() : space.available;
}

} // namespace mw
