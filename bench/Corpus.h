// Text like a game's, made the same at every run.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace bench {

inline std::string Word(std::mt19937& random) {
    static const char* const kWords[] = {
        "the",   "guard",  "north", "leaves", "arrives", "hungry", "silver", "you",  "hit",
        "with",  "sword",  "small", "rat",    "bites",   "stone",  "gate",   "and",  "says",
        "hello", "market", "water", "old",    "woman",   "looks",  "dark",   "road", "is",
    };
    return kWords[random() % std::size(kWords)];
}

// A line of about 90 characters without its line end.
inline std::string Line(std::mt19937& random) {
    std::string line = Word(random);
    while (line.size() < 85)
        line += ' ' + Word(random);
    return line;
}

inline std::vector<std::string> Lines(std::size_t count) {
    std::mt19937 random(1);
    std::vector<std::string> lines(count);
    for (std::string& line : lines)
        line = Line(random) + '\n';
    return lines;
}

// size characters of lines that begin with a colour, cut into arrivals of a usual size.
inline std::vector<std::string> Arrivals(std::size_t size) {
    std::mt19937 random(2);
    std::string text;
    while (text.size() < size)
        text += "\x1b[0;3" + std::to_string(1 + random() % 7) + "m" + Line(random) + "\r\n";
    std::vector<std::string> arrivals;
    constexpr std::size_t kArrival = 16 * 1024;
    for (std::size_t at = 0; at < text.size(); at += kArrival)
        arrivals.push_back(text.substr(at, kArrival));
    return arrivals;
}

} // namespace bench
