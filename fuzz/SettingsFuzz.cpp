// Any text as the file of the settings store: settings are read and kept, or the error is one of
// those stated and the file stays as it was.
//
// The first byte tells what the text is: the whole file, the value of a section, or one setting.
#include "base/Error.h"
#include "config/FreshFolder.h"
#include "config/MRegistry.h"
#include "fuzz/Input.h"
#include "ui/Events.h"
#include "ui/FrameControls.h"

#include <fstream>

// The place of the notice, which no error here comes to, and of events, which readers of lines let
// run.
void mw::stsBar::SetPanel(Panel, std::string_view) { __builtin_trap(); }
void mw::DoEvents() { __builtin_trap(); }

namespace mw {
namespace {

const std::filesystem::path& StoreFile() {
    static const FreshFolder folder;
    static const std::filesystem::path file = folder.Path / "quillmere" / "registry.json";
    static const bool made = std::filesystem::create_directory(file.parent_path()) &&
                             ::setenv("XDG_CONFIG_HOME", folder.Path.c_str(), 1) == 0;
    Must(made);
    return file;
}

std::string Kept() {
    std::ifstream file(StoreFile(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Keep(const std::string& text) { std::ofstream(StoreFile(), std::ios::binary) << text; }

std::string FileOf(std::uint8_t kind, const std::string& text) {
    const std::string section = R"({"SOFTWARE\\MwClient\\Windows": )";
    if (kind % 3 == 0)
        return text;
    return kind % 3 == 1 ? section + text + '}' : section + R"({"gTop": )" + text + "}}";
}

// The value, or the error's description.
std::string Read(const std::string& section, const std::string& key) {
    try {
        return "value " + ReadSetting("MwClient", section, key, "none");
    } catch (const Error& error) {
        Must(error.Source == "MRegistry" && !error.Description.empty());
        return error.Description;
    }
}

// False, with the file as it was, when it can't be kept.
bool Write(const std::string& value) {
    const std::string before = Kept();
    try {
        WriteSetting("MwClient", "Windows", "gTop", value);
    } catch (const Error& error) {
        Must(error.Number == kSystemError + 1009 && Kept() == before);
        return false;
    }
    return true;
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count == 0)
        return 0;
    const std::string text = Text(bytes + 1, count - 1);
    mw::Keep(mw::FileOf(bytes[0], text));
    mw::Read("Windows", "gTop");
    const std::string left = mw::Read("Windows", "gLeft");
    const std::string echo = mw::Read("Menu", "Echo");
    if (mw::Write(text)) {
        Must(mw::Read("Windows", "gTop") == "value " + text);
        Must(mw::Read("Windows", "gLeft") == left && mw::Read("Menu", "Echo") == echo);
    }
    return 0;
}
