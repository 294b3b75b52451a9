// The files of a folder as they are on the disk, byte for byte.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <QString>

namespace journey {

using FileTexts = std::map<std::string, std::string>; // by name below the folder

// All files below the folder; empty when it is not there.
FileTexts FilesBelow(const QString& folder);

// The bytes of the file; empty when it is not there.
std::string FileText(const QString& path);

// Makes the file with its folders. Throws when it can't be written.
void PutFile(const QString& path, const std::string& text);
void PutFiles(const QString& folder, const FileTexts& texts);

// The file Data/muds.lst: games on 127.0.0.1, without sounds.
struct ListedGame {
    std::string Name;
    std::string Port;
};

std::string GameList(const std::vector<ListedGame>& games);

} // namespace journey
