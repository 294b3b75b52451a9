#include "bench/program/Client.h"

#include "bench/Corpus.h"

#include <cstdlib>
#include <fstream>

namespace bench {
namespace {

constexpr const char* kNowhere = "http://127.0.0.1:9"; // nothing answers there

std::vector<mw::MacroSet> SetOf(std::size_t otherTriggers) {
    std::vector<mw::MacroSet> sets = mw::OneMacroSet("Default");
    std::vector<mw::TriggerEntry> entries = Triggers(otherTriggers);
    // Reactions are not read back at a start, so the answer is the CR alone.
    entries.insert(entries.begin(), {std::string(kAsk), ""});
    sets.front().Triggers = mw::TriggerTable(entries);
    return sets;
}

// The settings that say that the window fills the screen.
void KeepPlace(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder / "quillmere");
    std::ofstream file(folder / "quillmere/registry.json");
    file << R"({"SOFTWARE\\MwClient\\Windows": {)";
    const char* separator = "";
    const auto put = [&](const char* name, int value) {
        file << separator << '"' << name << R"(": {"type": 1, "value": ")" << value << "\"}";
        separator = ", ";
    };
    put("gTop", 0);
    put("gLeft", 0);
    put("gWidth", Screen::kWidth);
    put("gHeight", Screen::kHeight);
    file << "}}";
}

// Nothing of the desktop that the bench is started on reaches the program.
std::vector<std::string> Environment(const std::filesystem::path& folder, const Screen* display,
                                     const std::string& webRoot) {
    const std::string home = folder.string();
    std::vector<std::string> variables = {
        "PATH=" + std::string(::getenv("PATH")),
        "DBUS_SESSION_BUS_ADDRESS=disabled:",
        "LANG=C.UTF-8",
        "HOME=" + home,
        "XDG_CONFIG_HOME=" + home + "/config",
        "XDG_DATA_HOME=" + home + "/data",
        "XDG_RUNTIME_DIR=" + home + "/runtime",
        "QUILLMERE_WEB_ROOT=" + webRoot,
        display != nullptr ? "QT_QPA_PLATFORM=xcb" : "QT_QPA_PLATFORM=offscreen",
    };
    if (display != nullptr)
        variables.push_back("DISPLAY=" + display->Name);
    return variables;
}

} // namespace

Client::Client(Platform platform, std::size_t otherTriggers, bool connects) {
    if (platform == Platform::X)
        Display = std::make_unique<Screen>();
    Keep(Home.Path / "home", mw::DefaultMudList(), SetOf(otherTriggers));
    Launch(connects, kNowhere);
}

Client::Client(const std::string& webRoot) : Display(std::make_unique<Screen>()) {
    Keep(Home.Path / "home", ManyGames(), ManySets());
    Display->WatchPaints();
    Launch(true, webRoot);
}

void Client::Launch(bool connects, const std::string& webRoot) {
    KeepPlace(Home.Path / "config");
    std::filesystem::create_directory(Home.Path / "runtime");
    std::filesystem::permissions(Home.Path / "runtime", std::filesystem::perms::owner_all);
    std::vector<std::string> command = {CLIENT_PROGRAM, "--home", Home.Path / "home"};
    if (connects)
        command.insert(command.end(), {"--connect", "127.0.0.1:" + std::to_string(Gate.Port)});
    const std::vector<std::string> environment = Environment(Home.Path, Display.get(), webRoot);
    Start = Now();
    Program = std::make_unique<Process>(command, environment);
}

void Client::AwaitConnection() { Game = std::make_unique<Wire>(Gate); }

} // namespace bench
