#include "bench/Corpus.h"

#include <iterator>
#include <random>

namespace bench {
namespace {

constexpr std::size_t kLineLength = 85; // a line ends with the word that reaches it
constexpr std::size_t kArrival = std::size_t{16} * 1024;
constexpr std::size_t kGames = 100;
constexpr std::size_t kSets = 5;
constexpr std::size_t kEntries = 1000; // triggers and aliases of a set

std::string Word(std::mt19937& random) {
    static const char* const kWords[] = {
        "the",   "guard",  "north", "leaves", "arrives", "hungry", "silver", "you",  "hit",
        "with",  "sword",  "small", "rat",    "bites",   "stone",  "gate",   "and",  "says",
        "hello", "market", "water", "old",    "woman",   "looks",  "dark",   "road", "is",
    };
    return kWords[random() % std::size(kWords)];
}

std::string Line(std::mt19937& random) {
    std::string line = Word(random);
    while (line.size() < kLineLength)
        line += ' ' + Word(random);
    return line;
}

} // namespace

std::string Text(std::size_t size, Dress dress) {
    std::mt19937 random(2);
    std::string text;
    while (text.size() < size) {
        if (dress == Dress::Coloured)
            text += "\x1b[0;3" + std::to_string(1 + random() % 7) + "m";
        text += Line(random) + "\r\n";
    }
    return text;
}

std::vector<std::string> Arrivals(std::size_t size, Dress dress) {
    const std::string text = Text(size, dress);
    std::vector<std::string> arrivals;
    for (std::size_t at = 0; at < text.size(); at += kArrival)
        arrivals.push_back(text.substr(at, kArrival));
    return arrivals;
}

std::vector<std::string> Lines(std::size_t count) {
    std::mt19937 random(1);
    std::vector<std::string> lines(count);
    for (std::string& line : lines)
        line = Line(random) + '\n';
    return lines;
}

std::vector<mw::TriggerEntry> Triggers(std::size_t count) {
    std::mt19937 random(3);
    std::vector<mw::TriggerEntry> entries(count);
    for (mw::TriggerEntry& entry : entries)
        entry = {Word(random) + ' ' + Word(random) + ' ' + Word(random) + " #" +
                     std::to_string(random() % 100000),
                 "say I saw it"};
    return entries;
}

std::vector<mw::MudEntry> ManyGames() {
    std::vector<mw::MudEntry> games = mw::DefaultMudList();
    games.resize(kGames, {"Northern Realms", "192.0.2.10", 4000});
    return games;
}

std::vector<mw::MacroSet> ManySets() {
    std::mt19937 random(5);
    std::vector<mw::MacroSet> sets = mw::OneMacroSet("Default");
    sets.resize(kSets, sets.front());
    for (std::size_t i = 0; i < kSets; ++i) {
        sets[i].Name = "Set" + std::to_string(i);
        auto& triggers = mw::Edit(sets[i].Triggers);
        triggers.resize(kEntries);
        sets[i].Aliases.resize(kEntries);
        for (std::size_t entry = 0; entry < kEntries; ++entry) {
            triggers[entry] = {Word(random) + " hits you", "say ouch"};
            sets[i].Aliases[entry] = {Word(random), "tell friend ", true};
        }
    }
    return sets;
}

} // namespace bench
