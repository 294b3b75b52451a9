// Files and folders below the application folder.
//
// Everything the client keeps lies there. "\" in a name given here means the platform's separator.
// Names are 8-bit characters of the client's code page.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mw {

// The folder that all names below are relative to. Set once, when the program starts.
inline std::filesystem::path ApplicationFolder;

// True when application folder + folder + file is a file or a folder; either name may be empty.
// Raises nothing.
bool Exists(const std::string& file, const std::string& folder);

// Makes a folder below the application folder. Raises Path/File access error when it can't, also
// when the folder exists already.
void MakeFolder(const std::string& name);

// True when the name of a game can be the name of its folder: one path component that stays below
// the application folder and is not one of the client's own folders.
bool IsFolderName(std::string_view name);

} // namespace mw
