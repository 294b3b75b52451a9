// What a hostile server sends: text, telnet commands and sound triggers of the kinds that make a
// client hang, grow or trip.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace journey {

struct Attack {
    std::string Name;
    std::string First;           // once
    std::string Block;           // then again and again
    std::size_t Least = 1000000; // bytes
    std::size_t Packet = 0;      // bytes a send; 0 for as many as are taken
    int PauseMs = 0;             // from one send to the next
};

std::vector<Attack> TextAttacks();
std::vector<Attack> TelnetAttacks();

// Of the files "drop.wav", "long.wav" and "tune.mid", which may be there, and others, which are
// not.
std::vector<Attack> SoundAttacks();

// Sequences, commands, triggers and text, whole and broken, in any order.
std::string Mixture(std::mt19937& random, std::size_t size);

} // namespace journey
