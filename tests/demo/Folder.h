// A folder of a test's own, gone with it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <QTemporaryDir>

namespace world {

class Folder {
public:
    std::string Path(const std::string& name) const {
        return folder.filePath(QString::fromStdString(name)).toStdString();
    }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Path(name), std::ios::binary) << text;
    }

    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // Of its files, in their order.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Path("")))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

    // Who may do what with a file, as three digits of eight; 0 when there is none.
    int Mode(const std::string& name) const {
        std::error_code error;
        const auto status = std::filesystem::status(Path(name), error);
        return std::filesystem::exists(status) ? static_cast<int>(status.permissions()) & 0777 : 0;
    }

private:
    QTemporaryDir folder;
};

} // namespace world
