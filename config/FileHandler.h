// Files and folders below the application folder.
//
// Everything the client keeps lies there. "\" in a name given here means the platform's separator.
// Names are 8-bit characters of the client's code page.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace mw {

// The largest file that is read or written, in bytes: room for a macro set of 32,768 triggers and
// as many aliases of 150 characters each.
inline constexpr std::size_t kLargestFile = 16 * 1024 * 1024;

// The folder that all names below are relative to. Set once, when the program starts.
inline std::filesystem::path ApplicationFolder;

// Another client keeps its files in the application folder: this one reads them and changes
// nothing there. MakeFolder, DeleteFile and WriteFile do nothing then.
inline bool FolderIsTaken = false;

// Application folder + name.
std::filesystem::path PathBelow(const std::string& name);

// path as the player reads it. A name that is no text of the system's shows its bytes.
std::string PathText(const std::filesystem::path& path);

// True when application folder + folder + file is a file or a folder; either name may be empty.
// Raises nothing.
bool Exists(const std::string& file, const std::string& folder);

// True when application folder + name is a folder. Raises nothing.
bool IsFolder(const std::string& name);

// True when nothing at all bears application folder + name, not even a link that leads nowhere.
// False when that can't be told. Raises nothing.
bool IsAbsent(const std::string& name);

// Makes a folder below the application folder. Raises Path/File access error when it can't, also
// when the folder exists already.
void MakeFolder(const std::string& name);

// Deletes file, read-only or not. The name is taken as it is given, against the current working
// directory; folder makes no difference, on purpose. Callers that mean a certain file give its
// whole path. Every failure is ignored.
void DeleteFile(const std::filesystem::path& file, const std::string& folder);

// The bytes of application folder + name. Raises File not found when it is not there, Path/File
// access error when it can't be read, is no file (a folder, a pipe, a device) or larger than
// kLargestFile. Waits for no writer of a pipe.
std::string ReadFile(const std::string& name);

// Makes contents the whole file at application folder + name: written beside it, synced and moved
// over the old one, read-only or not. What lies where it is written first goes, whatever it is, but
// for a folder. A failure is silent and leaves the old contents; contents that could not be read
// back are one.
void WriteFile(const std::string& name, std::string_view contents);

// A line of a file or of an answer, or an address, as a message box shows it: whole, or its
// beginning when it would fill the screen.
std::string ShownLine(std::string_view line);

// True when name, alone or before an extension, can be the name of a file or folder of ours: one
// path component, with no separator, drive or control character, that leads nowhere else. An empty
// one can, before an extension.
bool IsFileName(std::string_view name);

// True when name leads to a place below the folder it stands in: one file name, or several joined
// by separators.
bool IsRelativeName(std::string_view name);

// True when the name of a game can be the name of its folder: a file name that is not one of the
// client's own folders.
bool IsFolderName(std::string_view name);

} // namespace mw
