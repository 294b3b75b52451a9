#include "bench/Corpus.h"
#include "bench/program/Client.h"
#include "bench/program/Program.h"

#include <iostream>
#include <thread>

namespace bench {
namespace {

constexpr std::size_t kMegabyte = 1000000;
constexpr int kParts = 5;
constexpr std::size_t kPart = 20 * kMegabyte;
constexpr double kWindowS = 20;
constexpr double kLookS = 0.02;
constexpr double kPoolS = 32; // idle helper threads of the toolkit end after 30 seconds

void Sleep(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

void AddMemory(Table& table, Client& client, const char* where, const std::optional<Bar>& bar) {
    const std::string text = Text(kMegabyte, Dress::Coloured);
    Sleep(1);
    const double before = ResidentMb(*client.Program);
    Sample rates;
    for (int part = 0; part < kParts; ++part)
        rates.push_back(StreamRate(*client.Game, text, kPart));
    Sleep(1);
    const double after = ResidentMb(*client.Program);
    const std::string name = std::string("resident memory, connected, ") + where;
    table.Add(name, before, "MB", bar);
    table.Add(name + ", growth over 100 MB of text", after - before, "MB", AtMost(2, "2 MB"));
    table.Add(std::string("coloured text, ") + where + ", the last 20 of 100 MB",
              Amount(rates.back() / rates.front(), "of the rate of the first"),
              rates.back() / rates.front(), AtLeast(0.8, "0.8, flat"));
}

struct Quiet {
    const char* Name;
    const Client* Who;
    double MostWakeUps; // a second
    const char* Words;
    Usage Before{};
    Usage Last{};
    int Stirs = 0; // looks that found it had run since the one before
};

// All at once, as nothing of it keeps a processor busy. To paint, the toolkit's two threads and the
// display wait for each other, all within a millisecond: that is one wake-up and several switches.
void AddIdle(Table& table, std::vector<Quiet> clients) {
    for (Quiet& client : clients)
        client.Before = client.Last = UsageOf(*client.Who->Program);
    const Moment start = Now();
    for (int look = 1; look * kLookS <= kWindowS; ++look) {
        std::this_thread::sleep_until(start + Milliseconds(1000 * kLookS * look));
        for (Quiet& client : clients) {
            const Usage now = UsageOf(*client.Who->Program);
            client.Stirs += Between(client.Last, now).Switches > 0 ? 1 : 0;
            client.Last = now;
        }
    }
    for (const Quiet& client : clients) {
        const Usage::Thread used = Between(client.Before, client.Last);
        const double wakeUps = client.Stirs / kWindowS;
        table.Add(std::string("wake-ups while idle, ") + client.Name,
                  Amount(wakeUps, "a second, ") + Amount(used.Switches / kWindowS, "switches"),
                  wakeUps, AtMost(client.MostWakeUps, client.Words));
        table.Add(std::string("CPU while idle, ") + client.Name, used.CpuMs / kWindowS,
                  "ms a second");
    }
}

} // namespace

void AddRest(Table& table) {
    std::cerr << "Memory and quiet\n";
    Client onX(Platform::X, 0);
    Client offscreen(Platform::Offscreen, 0);
    Client alone(Platform::X, 0, false);
    onX.AwaitConnection();
    offscreen.AwaitConnection();
    AddMemory(table, onX, "X", AtMost(60, "60 MB"));
    AddMemory(table, offscreen, "offscreen", std::nullopt);
    onX.Display->TakeKeysAway();
    alone.Display->TakeKeysAway();
    Sleep(kPoolS);
    // Room for where the window's ends fall, and for a wake-up that two looks saw.
    AddIdle(table, {{"disconnected, X", &alone, 0, "0"},
                    {"connected, X", &onX, 1 + 3 / kWindowS, "1 a second, the clock's"}});
}

} // namespace bench
