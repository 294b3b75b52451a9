// Every quantity is measured in turn, five rounds over, so that what else the machine does meets
// all of them alike.
#include "bench/Corpus.h"
#include "bench/program/Client.h"
#include "bench/program/Program.h"
#include "bench/program/Reference.h"

#include <iostream>
#include <map>

namespace bench {
namespace {

constexpr int kRounds = 5;
constexpr std::size_t kMegabyte = 1000000;
constexpr std::size_t kStreamed = 128 * kMegabyte;
constexpr int kPings = 2000;
constexpr int kKeys = 100; // a round

const std::string kPlain = Text(kMegabyte, Dress::Plain);
const std::string kColoured = Text(kMegabyte, Dress::Coloured);
const std::string kFlood = Text(kMegabyte / 100, Dress::Coloured);

struct Players {
    Client OnX{Platform::X, 0};
    Client Offscreen{Platform::Offscreen, 0};
    Client With1000{Platform::X, 1000};
    Client With10000{Platform::X, 10000};
    Reference Reader;

    Players() {
        for (Client* const client : {&OnX, &Offscreen, &With1000, &With10000})
            client->AwaitConnection();
    }
};

// What a round gives, by name.
using Results = std::map<std::string, Sample>;

void MeasureRates(Players& players, Results& results) {
    struct Stream {
        const char* Name;
        Wire& Way;
        const std::string& Text;
    };
    const Stream streams[] = {
        {"reader, coloured", players.Reader.Game, kColoured},
        {"reader, plain", players.Reader.Game, kPlain},
        {"X, coloured", *players.OnX.Game, kColoured},
        {"X, plain", *players.OnX.Game, kPlain},
        {"X, 1,000", *players.With1000.Game, kColoured},
        {"X, 10,000", *players.With10000.Game, kColoured},
        {"offscreen, coloured", *players.Offscreen.Game, kColoured},
        {"offscreen, plain", *players.Offscreen.Game, kPlain},
    };
    for (const Stream& stream : streams)
        results[stream.Name].push_back(StreamRate(stream.Way, stream.Text, kStreamed));
}

void MeasureRoundTrips(const std::string& name, Wire& wire, Results& results) {
    const Sample times = RoundTrips(wire, kPings);
    results[name + ", p50"].push_back(Percentile(times, 0.5));
    results[name + ", p99"].push_back(Percentile(times, 0.99));
}

// Milliseconds from the press of Return to the line's arrival at the server.
Sample KeyTimes(Client& client) {
    constexpr int kShortestMs = 20;
    constexpr int kSpreadMs = 23; // the presses fall on all parts of a frame
    Sample times;
    for (int i = 0; i < kKeys; ++i) {
        client.Display->Press("n");
        std::this_thread::sleep_for(Milliseconds(kShortestMs + 7 * i % kSpreadMs));
        const Moment start = Now();
        client.Display->Press("Return");
        client.Game->AwaitReply();
        times.push_back(MsSince(start));
    }
    return times;
}

struct State {
    const char* Name;
    std::optional<double> BytesASecond;
};

void MeasureKeys(Client& client, Results& results) {
    constexpr double kBrisk = 5e6;
    const State states[] = {
        {"idle", std::nullopt}, {"at 5 MB/s", kBrisk}, {"full flood", Flood::kUnbounded}};
    client.Display->GiveKeys();
    for (const State& state : states) {
        client.Game->Drain();
        std::optional<Flood> flood;
        if (state.BytesASecond)
            flood.emplace(*client.Game, kFlood, *state.BytesASecond);
        const Sample times = KeyTimes(client);
        flood.reset();
        Settle(*client.Game);
        results[std::string("keys ") + state.Name + ", p50"].push_back(Percentile(times, 0.5));
        results[std::string("keys ") + state.Name + ", p95"].push_back(Percentile(times, 0.95));
    }
}

std::string WithRatio(double rate, double reference) {
    return Amount(rate, "MB/s") + ", 1/" + Amount(reference / rate, "of the reader");
}

void AddRates(Table& table, const Results& results) {
    const auto median = [&results](const std::string& name) { return Median(results.at(name)); };
    const double reader = median("reader, coloured");
    const double plainReader = median("reader, plain");
    const double alone = median("X, coloured");
    table.Add("reference reader, coloured text", reader, "MB/s");
    table.Add("reference reader, plain text", plainReader, "MB/s");
    table.Add("coloured text, X", WithRatio(alone, reader), alone / reader,
              AtLeast(1.0 / 30, "1/30 of the reader"));
    table.Add("coloured text, offscreen", WithRatio(median("offscreen, coloured"), reader),
              median("offscreen, coloured") / reader, AtLeast(1.0 / 30, "1/30 of the reader"));
    table.Add("plain text, X", WithRatio(median("X, plain"), plainReader));
    table.Add("plain text, offscreen", WithRatio(median("offscreen, plain"), plainReader));
    for (const std::string count : {"1,000", "10,000"}) {
        const double rate = median("X, " + count);
        table.Add("coloured text, X, " + count + " triggers", Amount(rate, "MB/s"), rate / alone,
                  AtLeast(0.5, "1/2 of that without"));
    }
}

void AddTimes(Table& table, const Results& results) {
    const auto median = [&results](const std::string& name) { return Median(results.at(name)); };
    const double reader = median("ping reader, p50");
    table.Add("round trip of the reader, p50", 1000 * reader, "us");
    for (const std::string where : {"X", "offscreen"}) {
        const double p50 = median("ping " + where + ", p50");
        table.Add("trigger round trip, " + where + ", p50",
                  Amount(1000 * p50, "us") + ", " + Amount(p50 / reader, "x the reader's"),
                  p50 / reader, AtMost(4, "4x the reader's"));
        table.Add("trigger round trip, " + where + ", p99",
                  1000 * median("ping " + where + ", p99"), "us", AtMost(1000, "1 ms"));
    }
    const auto addKeys = [&](const std::string& state, const std::optional<Bar>& bar) {
        table.Add("Return to server, " + state + ", p50", median("keys " + state + ", p50"), "ms");
        table.Add("Return to server, " + state + ", p95", median("keys " + state + ", p95"), "ms",
                  bar);
    };
    addKeys("idle", AtMost(1, "1 ms"));
    addKeys("at 5 MB/s", std::nullopt);
    addKeys("full flood", AtMost(8, "8 ms"));
}

} // namespace

void AddTraffic(Table& table) {
    Players players;
    Results results;
    for (int round = 1; round <= kRounds; ++round) {
        std::cerr << "Round " << round << " of " << kRounds << "\n";
        MeasureRates(players, results);
        MeasureRoundTrips("ping reader", players.Reader.Game, results);
        MeasureRoundTrips("ping X", *players.OnX.Game, results);
        MeasureRoundTrips("ping offscreen", *players.Offscreen.Game, results);
        MeasureKeys(players.OnX, results);
    }
    AddRates(table, results);
    AddTimes(table, results);
}

} // namespace bench
