// Shows: commands that let a client prove itself: colours, telnet options, its name, a flood.
//
// The sounds have a file of their own.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace world {

struct Player;
struct Town;
struct World;

inline constexpr int MaxFlood = 100000;              // kilobytes that one asks for at once
inline constexpr std::size_t FloodPiece = 16 * 1024; // that is ready to be sent at a time

// The line that a client answers to the colour probe, and the sequence that asks.
inline constexpr std::string_view ProbeAnswer = "SMWCLIENT";
inline constexpr std::string_view Probe = "\x1b[2K";

// What the commands of these names do.
void ShowColours(World& world, Player& player, std::string_view);
void ShowOptions(World& world, Player& player, std::string_view);
void AskForName(World& world, Player& player, std::string_view);
void BeginFlood(World& world, Player& player, std::string_view kilobytes);

// The answer of a client that was asked for its name. False when the line is not that.
bool TakeProbeAnswer(Player& player, std::string_view line);

// Whole lines of flood, about FloodPiece bytes of them or what is left, taken from Player::flood.
std::string TakeFlood(const Town& town, Player& player);

} // namespace world
