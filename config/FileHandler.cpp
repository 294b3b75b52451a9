#include "config/FileHandler.h"

#include "base/CodePage.h"
#include "base/Error.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace mw {
namespace {

namespace fs = std::filesystem;

// In the file system's own units, of which it takes 255: room for an extension is left.
constexpr std::size_t kLongestFileName = 240;

constexpr std::size_t kLongestShown = 4096; // characters; a box shows what of them fits its screen

fs::path RelativePath(std::string name) {
    std::replace(name.begin(), name.end(), '\\', static_cast<char>(fs::path::preferred_separator));
    return fs::path(ToUnicode(name)).relative_path();
}

void MakeWritable(const fs::path& path) {
    std::error_code ignored;
    fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, ignored);
}

std::FILE* OpenForWriting(const fs::path& path) {
#ifdef _WIN32
    return ::_wfopen(path.c_str(), L"wb");
#else
    return std::fopen(path.c_str(), "wb");
#endif
}

bool Sync(std::FILE* file) {
#ifdef _WIN32
    return ::_commit(::_fileno(file)) == 0;
#else
    return ::fsync(::fileno(file)) == 0;
#endif
}

// A name is on the disk when its folder is.
void SyncFolder([[maybe_unused]] const fs::path& folder) {
#ifndef _WIN32
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
#endif
}

// What a lost write has left, or a link or a pipe that would lead the new contents elsewhere.
void ClearTheWay(const fs::path& neighbour) {
    std::error_code ignored;
    if (!fs::is_directory(fs::symlink_status(neighbour, ignored)))
        fs::remove(neighbour, ignored);
}

// Returns false when not every byte has reached the disk. Who may read the file that it is to
// replace, if there is one, is the player's choice.
bool WriteSynced(const fs::path& path, std::string_view contents, const fs::path& replaced) {
    std::FILE* const file = OpenForWriting(path);
    if (file == nullptr)
        return false;
    std::error_code ignored;
    const fs::file_status old = fs::status(replaced, ignored);
    if (fs::is_regular_file(old))
        fs::permissions(path, old.permissions() | fs::perms::owner_write, ignored);
    bool whole = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
    whole = std::fflush(file) == 0 && whole;
    whole = Sync(file) && whole;
    return std::fclose(file) == 0 && whole;
}

} // namespace

fs::path PathBelow(const std::string& name) { return ApplicationFolder / RelativePath(name); }

std::string PathText(const fs::path& path) {
    try {
        return FromUnicode(path.u16string());
    } catch (const std::system_error&) {
        return path.string();
    }
}

bool Exists(const std::string& file, const std::string& folder) {
    std::error_code ignored;
    const fs::path below = PathBelow(folder);
    return fs::exists(file.empty() ? below : below / RelativePath(file), ignored);
}

bool IsFolder(const std::string& name) {
    std::error_code ignored;
    return fs::is_directory(PathBelow(name), ignored);
}

bool IsAbsent(const std::string& name) {
    std::error_code ignored;
    return fs::symlink_status(PathBelow(name), ignored).type() == fs::file_type::not_found;
}

void MakeFolder(const std::string& name) {
    if (FolderIsTaken)
        return;
    std::error_code failure;
    if (!fs::create_directory(PathBelow(name), failure))
        Raise(PathFileAccess, "MakeFolder");
}

void DeleteFile(const fs::path& file, const std::string&) {
    std::error_code ignored;
    if (FolderIsTaken || !fs::is_regular_file(file, ignored))
        return;
    MakeWritable(file);
    fs::remove(file, ignored);
}

std::string ReadFile(const std::string& name) {
    const fs::path path = PathBelow(name);
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (status.type() == fs::file_type::not_found)
        Raise(FileNotFound, "ReadFile");
    if (!fs::is_regular_file(status)) // first: to open a pipe is to wait for who writes into it
        Raise(PathFileAccess, "ReadFile");
    std::ifstream file(path, std::ios::binary);
    std::string contents;
    char block[64 * 1024];
    while (file.read(block, sizeof block) || file.gcount() > 0) {
        contents.append(block, static_cast<std::size_t>(file.gcount()));
        if (contents.size() > kLargestFile)
            break;
    }
    if (!file.eof() || contents.size() > kLargestFile)
        Raise(PathFileAccess, "ReadFile");
    return contents;
}

void WriteFile(const std::string& name, std::string_view contents) {
    if (FolderIsTaken || contents.size() > kLargestFile)
        return;
    const fs::path path = PathBelow(name);
    const fs::path neighbour = fs::path(path) += ".new";
    ClearTheWay(neighbour);
    std::error_code failure;
    if (WriteSynced(neighbour, contents, path)) {
#ifdef _WIN32
        MakeWritable(path); // here a rename does not replace a read-only file
#endif
        fs::rename(neighbour, path, failure);
        if (!failure)
            return SyncFolder(path.parent_path());
    }
    ClearTheWay(neighbour);
}

std::string ShownLine(std::string_view line) {
    return line.size() <= kLongestShown ? std::string(line)
                                        : std::string(line.substr(0, kLongestShown)) + "...";
}

bool IsFileName(std::string_view name) {
    const bool separator = name.find_first_of("/\\:") != std::string_view::npos;
    const bool control = std::any_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 32; });
    return !separator && !control && name != "." && name != ".." &&
           fs::path(ToUnicode(name)).native().size() <= kLongestFileName;
}

bool IsRelativeName(std::string_view name) {
    while (true) {
        const std::size_t separator = name.find_first_of("/\\");
        const std::string_view part = name.substr(0, separator);
        if (part.empty() || !IsFileName(part))
            return false;
        if (separator == std::string_view::npos)
            return true;
        name.remove_prefix(separator + 1);
    }
}

bool IsFolderName(std::string_view name) {
    const bool dotsOnly = name.find_first_not_of(". ") == std::string_view::npos;
    return IsFileName(name) && !dotsOnly && name != "Data" && name != "Macros";
}

} // namespace mw
