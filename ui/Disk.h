// Disks.
#pragma once

#include <cstdint>
#include <filesystem>

namespace mw {

// Bytes that this user can still write to the file system of path (or of the nearest folder above
// it that exists). The greatest number when the system can't tell.
std::uint64_t FreeSpace(const std::filesystem::path& path);

} // namespace mw
