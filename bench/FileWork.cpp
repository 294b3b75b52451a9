#include "automation/MacroFiles.h"
#include "bench/Corpus.h"
#include "bench/Home.h"
#include "bench/Work.h"
#include "config/ClientConfig.h"
#include "config/MRegistry.h"
#include "config/MudList.h"
#include "net/http/VersionCheck.h"

#include <cstdlib>
#include <memory>

namespace bench {
namespace {

constexpr std::size_t kSettings = 8; // as many as the client keeps of its window and its font
constexpr std::size_t kVersions = 1000;

// A reader and a writer of one kind of text.
template <typename Made>
void Add(std::vector<Work>& all, const char* name, const Made& made,
         std::string (*format)(const Made&), Made (*parse)(std::string_view, Made)) {
    const std::string text = format(made);
    all.push_back({std::string(name) + ", read", text.size(), Unit::Bytes,
                   [=] { return [=] { parse(text, Made()); }; }});
    all.push_back({std::string(name) + ", written", text.size(), Unit::Bytes,
                   [=] { return [=] { format(made); }; }});
}

mw::ClientConfig Configuration() { return {mw::kDefaultPalette, ";", ManySets()}; }

// The store on the disk, in a folder of its own.
std::function<void()> PrepareSettings(void (*access)(const std::string& key)) {
    const auto folder = std::make_shared<Folder>();
    const auto accessAll = [folder, access] {
        ::setenv("XDG_CONFIG_HOME", folder->Path.c_str(), 1);
        for (std::size_t i = 0; i < kSettings; ++i)
            access("Key" + std::to_string(i));
    };
    accessAll();
    return accessAll;
}

void ReadOne(const std::string& key) { mw::SettingAtStart("Windows", key, "0"); }
void WriteOne(const std::string& key) { mw::KeepSetting("Windows", key, "1024"); }

std::function<void()> PrepareVersion() {
    return [] {
        for (std::size_t i = 0; i < kVersions; ++i)
            mw::DecimalForm(*mw::ParsePublishedVersion("1.25\r\n"));
    };
}

} // namespace

std::vector<Work> FileWork() {
    std::vector<Work> all;
    Add(all, "client.cfg", Configuration(), mw::FormatClientConfig, mw::ParseClientConfig);
    Add(all, "muds.lst", ManyGames(), mw::FormatMudList, mw::ParseMudList);
    Add(all, "macro set", ManySets().front(), mw::FormatMacroSet, mw::ParseMacroSet);
    all.push_back({"settings store, read", kSettings, Unit::Entries,
                   [] { return PrepareSettings(ReadOne); }});
    all.push_back({"settings store, written", kSettings, Unit::Entries,
                   [] { return PrepareSettings(WriteOne); }});
    all.push_back({"version text", kVersions, Unit::Entries, PrepareVersion});
    return all;
}

} // namespace bench
