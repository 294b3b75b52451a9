#include "bench/Home.h"

#include "app/StartUp.h"
#include "automation/MacroFiles.h"
#include "config/ClientConfig.h"
#include "config/FileHandler.h"
#include "config/Palette.h"

#include <cstdlib>
#include <stdexcept>

namespace bench {

Folder::Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "benchXXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("No folder could be made: " + name);
    Path = name;
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

void Keep(const std::filesystem::path& home, const std::vector<mw::MudEntry>& games,
          const std::vector<mw::MacroSet>& sets) {
    mw::ApplicationFolder = home;
    std::filesystem::create_directories(home);
    mw::PrepareFolders();
    mw::MudList = games;
    mw::MacroSets = sets;
    mw::Palette = mw::kDefaultPalette;
    mw::SaveMudList();
    mw::SaveClientConfig();
    mw::SaveAllMacroSets();
}

} // namespace bench
