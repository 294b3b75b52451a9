// Things: what lies in a room, what a player carries, wears and eats.
//
// Each kind of thing lies at its home. One that is taken is there again after a while, and one that
// is dropped goes after a while, so that the town neither runs out of things nor fills with them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace world {

struct Player;
struct Town;
struct World;

inline constexpr std::size_t MaxCarried = 8; // of one player, worn things included
inline constexpr std::size_t MaxDropped = 100;
inline constexpr int BeatsUntilHome = 3;   // that a thing is away from its home
inline constexpr int BeatsOnTheGround = 6; // that a dropped one lies

// What the commands of these names do with a thing that is called by any word of its name.
void Get(World& world, Player& player, std::string_view called);
void Drop(World& world, Player& player, std::string_view called);
void Wear(World& world, Player& player, std::string_view called);
void TakeOff(World& world, Player& player, std::string_view called);
void Eat(World& world, Player& player, std::string_view called);
void ShowCarried(World& world, Player& player, std::string_view);

// Looks at a thing that is carried or lies in the room. False when there is none called so.
bool LookAt(const World& world, Player& player, std::string_view called);

// Tells the player what lies in the room.
void ShowThingsIn(const World& world, Player& player);

// What every bite takes less, by all that the player wears.
int GuardOf(const World& world, const Player& player);

// One slow step: things come home, and dropped ones go.
void LetThingsMove(World& world);

// Things by their names in the data file, and back; what the town does not know is left out.
std::vector<std::string> IdsOf(const Town& town, const std::vector<int>& things);
std::vector<int> NumbersOf(const Town& town, const std::vector<std::string>& ids);

} // namespace world
