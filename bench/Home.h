// A player's application folder on the disk, for as long as a bench needs it.
#pragma once

#include "automation/Macros.h"
#include "config/MudList.h"

#include <filesystem>
#include <vector>

namespace bench {

// An empty folder of its own, removed with all that is in it.
struct Folder {
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path Path;
};

// Makes the folder the application folder, the tables the client's own, and the files theirs.
void Keep(const std::filesystem::path& home, const std::vector<mw::MudEntry>& games,
          const std::vector<mw::MacroSet>& sets);

} // namespace bench
