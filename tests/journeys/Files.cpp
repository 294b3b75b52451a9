#include "Files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace journey {
namespace {

namespace fs = std::filesystem;

std::string TextOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

FileTexts FilesBelow(const QString& folder) {
    FileTexts texts;
    const fs::path top = folder.toStdString();
    std::error_code missing;
    for (const auto& entry : fs::recursive_directory_iterator(top, missing)) {
        if (entry.is_regular_file())
            texts[fs::relative(entry.path(), top).generic_string()] = TextOf(entry.path());
    }
    return texts;
}

std::string FileText(const QString& path) { return TextOf(path.toStdString()); }

void PutFile(const QString& path, const std::string& text) {
    const fs::path file = path.toStdString();
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    if (!(out << text).flush())
        throw std::runtime_error("Can't write " + file.string());
}

void PutFiles(const QString& folder, const FileTexts& texts) {
    for (const auto& [name, text] : texts)
        PutFile(folder + '/' + QString::fromStdString(name), text);
}

std::string GameList(const std::vector<ListedGame>& games) {
    std::string list;
    for (const auto& [name, port] : games)
        list += "[Mud]\r\nMud=" + name + "\r\nAddy=127.0.0.1\r\nPort=" + port +
                "\r\nSndD=False\r\nSndM=False\r\nMsp=False\r\nSndW=False\r\n";
    return list + "[End]\r\n";
}

} // namespace journey
