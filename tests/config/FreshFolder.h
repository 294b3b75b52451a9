// A fresh temporary folder as the application folder, removed with all it holds at the end.
#pragma once

#include "config/FileHandler.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

class FreshFolder {
public:
    FreshFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "rulesXXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        Path = name;
        mw::ApplicationFolder = Path;
        mw::FolderIsTaken = false;
    }

    ~FreshFolder() {
        mw::ApplicationFolder.clear();
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }

    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;

    bool HasFolder(const std::filesystem::path& name) const {
        return std::filesystem::is_directory(Path / name);
    }

    bool IsEmpty() const { return std::filesystem::is_empty(Path); }

    void MakeFile(const std::filesystem::path& name) const { std::ofstream(Path / name) << "x"; }

    std::string ContentOf(const std::filesystem::path& name) const {
        std::ifstream file(Path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // All that lies below it: files with their contents, folders with none.
    std::map<std::string, std::string> Contents() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Path)) {
            const std::filesystem::path name = entry.path().lexically_relative(Path);
            all[name.generic_string()] = entry.is_directory() ? "" : ContentOf(name);
        }
        return all;
    }

    std::filesystem::path Path;
};
