#include "bench/program/Client.h"
#include "bench/program/Program.h"

#include <iostream>
#include <stdexcept>
#include <thread>

namespace bench {
namespace {

constexpr int kPaints = 200;
constexpr int kFullScreen = 50; // lines, so that each one more moves all others up
constexpr Area kLastLine{6, 622, 64, 16};

// Two that take turns, so that a line is not taken for the one before.
struct Line {
    const char* Text;
    Colour Looks;
};

constexpr Line kLines[] = {
    {"\r\n\x1b[0;1;31m########. ", {255, 0, 0}},
    {"\r\n\x1b[0;1;32m########. ", {0, 255, 0}},
};

void Await(const Screen& display, const Colour& colour) {
    constexpr double kLimitMs = 2000;
    const Moment start = Now();
    while (!display.Shows(kLastLine, colour)) {
        display.NextPaint(static_cast<int>(kLimitMs));
        if (MsSince(start) > kLimitMs)
            throw std::runtime_error("A line was not painted");
    }
}

void ForgetPaints(const Screen& display) {
    while (display.NextPaint(0)) {
    }
}

} // namespace

void AddPaint(Table& table) {
    std::cerr << "Paint\n";
    Client client(Platform::X, 0);
    client.AwaitConnection();
    client.Display->WatchPaints();
    Sample times;
    for (int i = 0; i < kFullScreen + kPaints; ++i) {
        constexpr int kShortestMs = 40;
        constexpr int kSpreadMs = 17; // the lines fall on all parts of a frame
        std::this_thread::sleep_for(Milliseconds(kShortestMs + 7 * i % kSpreadMs));
        ForgetPaints(*client.Display);
        const Moment start = Now();
        client.Game->Send(kLines[i % 2].Text);
        if (i < kFullScreen)
            continue;
        Await(*client.Display, kLines[i % 2].Looks);
        times.push_back(MsSince(start));
    }
    table.Add("last byte to painted frame, p50", Percentile(times, 0.5), "ms");
    table.Add("last byte to painted frame, p95", Percentile(times, 0.95), "ms");
}

} // namespace bench
