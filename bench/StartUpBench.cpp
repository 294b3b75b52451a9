// The stages of the start, one by one, on real files in a temporary folder, and the version check
// against a server of its own on this machine.
#include "app/StartUp.h"
#include "automation/MacroFiles.h"
#include "automation/Macros.h"
#include "bench/Corpus.h"
#include "config/ClientConfig.h"
#include "config/FileHandler.h"
#include "config/MudList.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::size_t kGames = 100;
constexpr std::size_t kSets = 5;
constexpr std::size_t kEntries = 1000; // triggers and aliases of a set

std::vector<mw::MacroSet> BusyPlayersSets() {
    std::mt19937 random(5);
    std::vector<mw::MacroSet> sets = mw::OneMacroSet("Default");
    sets.resize(kSets, sets.front());
    for (std::size_t i = 0; i < kSets; ++i) {
        sets[i].Name = "Set" + std::to_string(i);
        auto& triggers = mw::Edit(sets[i].Triggers);
        triggers.resize(kEntries);
        sets[i].Aliases.resize(kEntries);
        for (std::size_t entry = 0; entry < kEntries; ++entry) {
            triggers[entry] = {bench::Word(random) + " hits you", "say ouch"};
            sets[i].Aliases[entry] = {bench::Word(random), "tell friend ", true};
        }
    }
    return sets;
}

// A player's folder, made once and removed at the end.
struct Folder {
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "benchXXXXXX").string();
        mw::ApplicationFolder = ::mkdtemp(name.data());
        mw::PrepareFolders();
        mw::MudList.resize(kGames, {"Northern Realms", "192.0.2.10", 4000});
        mw::MacroSets = BusyPlayersSets();
        mw::SaveMudList();
        mw::SaveClientConfig();
        mw::SaveAllMacroSets();
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(mw::ApplicationFolder, ignored);
    }
};

// Publishes version 0 to whoever asks.
struct VersionServer {
    VersionServer() : Listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        ::bind(Listener, reinterpret_cast<sockaddr*>(&address), length);
        ::listen(Listener, 8);
        ::getsockname(Listener, reinterpret_cast<sockaddr*>(&address), &length);
        const std::string root = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        ::setenv("QUILLMERE_WEB_ROOT", root.c_str(), 1);
        Thread = std::thread([this] { Serve(); });
    }
    ~VersionServer() {
        ::shutdown(Listener, SHUT_RDWR);
        Thread.join();
        ::close(Listener);
    }

    void Serve() const {
        constexpr std::string_view kAnswer = "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n"
                                             "Connection: close\r\n\r\n0";
        for (int client = 0; (client = ::accept(Listener, nullptr, nullptr)) >= 0;) {
            char request[4096];
            if (::recv(client, request, sizeof request, 0) > 0)
                ::send(client, kAnswer.data(), kAnswer.size(), MSG_NOSIGNAL);
            ::close(client);
        }
    }

    int Listener;
    std::thread Thread;
};

void RunStage(benchmark::State& state) {
    const Folder folder;
    const VersionServer server;
    for (auto _ : state) {
        mw::Splash.stage = static_cast<std::int16_t>(state.range(0));
        mw::timerLoad_Timer();
    }
}
// Mud list, configuration, macro sets, version check.
BENCHMARK(RunStage)->DenseRange(1, 4)->Unit(benchmark::kMillisecond);

void SaveStage(benchmark::State& state) {
    const Folder folder;
    mw::SavingMode = true;
    for (auto _ : state) {
        mw::Splash.stage = static_cast<std::int16_t>(state.range(0));
        mw::timerLoad_Timer();
    }
    mw::SavingMode = false;
}
BENCHMARK(SaveStage)->DenseRange(1, 3)->Unit(benchmark::kMillisecond);

} // namespace
