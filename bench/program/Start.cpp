// The start, of a player of many years. What the splash has to wait is left aside: its timer runs
// one stage a tick, so the processor time between two ticks is that of one stage.
#include "bench/VersionServer.h"
#include "bench/program/Client.h"
#include "bench/program/Program.h"
#include "bench/program/Sample.h"

#include <iostream>
#include <thread>

namespace bench {
namespace {

constexpr int kRounds = 5;
constexpr double kTickMs = 250;
constexpr double kEndOfTickMs = 100; // its work is done then
constexpr double kWaitsMs = 5 * kTickMs + 3 * 500;
constexpr const char* kStages[] = {"mud list", "configuration", "macro sets", "version check",
                                   "completed"};

// Milliseconds from the start to the splash with its dark blue title on the screen.
double AwaitSplash(const Client& client) {
    constexpr Area kTitle{310, 235, 380, 110};
    constexpr Colour kDarkBlue{0, 0, 160};
    constexpr int kLimitMs = 10000;
    while (client.Display->NextPaint(kLimitMs)) {
        if (client.Display->Shows(kTitle, kDarkBlue))
            break;
    }
    return MsSince(client.Start);
}

struct Starts {
    Sample Splash;
    Sample Stages[std::size(kStages)]; // processor time
    Sample AllStages;
    Sample Frame; // processor time from the last stage to the connection
    Sample Whole;
};

void MeasureStart(const std::string& webRoot, Starts& starts) {
    Client client(webRoot);
    starts.Splash.push_back(AwaitSplash(client));
    const Moment splash = Now();
    double all = 0;
    const auto usageAfter = [&](double ms) {
        std::this_thread::sleep_until(splash + Milliseconds(ms));
        return UsageOf(*client.Program);
    };
    Usage before = usageAfter(kEndOfTickMs);
    for (std::size_t i = 0; i < std::size(kStages); ++i) {
        const Usage after = usageAfter(kEndOfTickMs + kTickMs * static_cast<double>(i + 1));
        const double stage = Between(before, after).CpuMs;
        starts.Stages[i].push_back(stage);
        all += stage;
        before = after;
    }
    starts.AllStages.push_back(all);
    client.AwaitConnection();
    starts.Whole.push_back(MsSince(client.Start) - kWaitsMs);
    starts.Frame.push_back(Between(before, UsageOf(*client.Program)).CpuMs);
}

} // namespace

void AddStart(Table& table) {
    std::cerr << "Start\n";
    const VersionServer server;
    Starts starts;
    for (int round = 0; round < kRounds; ++round)
        MeasureStart(server.Root, starts);
    table.Add("start, splash painted", Median(starts.Splash), "ms", AtMost(150, "150 ms"));
    for (std::size_t i = 0; i < std::size(kStages); ++i)
        table.Add(std::string("start, stage ") + kStages[i], Median(starts.Stages[i]), "ms");
    table.Add("start, own work of all stages", Median(starts.AllStages), "ms",
              AtMost(100, "100 ms"));
    table.Add("start, main window's own work", Median(starts.Frame), "ms");
    table.Add("start, to the connection, mandated waits aside", Median(starts.Whole), "ms");
}

} // namespace bench
