// What happens to those who live in the world: rounds of fights, hunger, healing, creatures that
// return, weather, and the sound of a bell.
//
// The server calls Round while someone fights and Beat while someone plays; neither looks at a
// clock.
#pragma once

#include <string_view>

namespace world {

struct Creature;
struct Player;
struct World;

inline constexpr int BeatsUntilHungry = 4;
inline constexpr int BeatsBetweenPangs = 2;   // from one "You are hungry." to the next
inline constexpr int BeatsUntilBack = 2;      // that a beaten creature stays away
inline constexpr int BeatsOfFairWeather = 10; // at least, from one rain or thunder to the next
inline constexpr int WeatherSides = 4;        // of the dice that decides on each beat after these
inline constexpr int MaxRings = 8; // of the bell that are heard from one beat to the next
inline constexpr int WeakLife = 6; // at or below it a player feels weak

// The creature of the room whose name ends in the last word of what it is called, or null.
Creature* FindCreature(World& world, int room, std::string_view called);

// Sets the player on a creature of the room whose name ends in the last word of target.
void Attack(World& world, Player& player, std::string_view target);

// A creature of the room that attacks sets itself on the player, who is not fighting yet.
void MeetCreatures(World& world, Player& player);

// Runs from a fight by one of the ways out.
void Flee(World& world, Player& player);

// The player rings the bell of the room, for everyone there to hear. Past MaxRings it only hums on:
// a client plays all that it is asked for, one after another, and nobody there could stop that.
void RingBell(World& world, Player& player);

bool IsHungry(const Player& player);

bool AnyoneFights(const World& world);
bool AnyonePlays(const World& world);

// One exchange of blows for everyone who fights. Who runs out of life faints and wakes at the
// start.
void Round(World& world);

// One slow step: hunger grows, those who are fed and at peace heal, creatures and things come back,
// and now and then those under the sky have rain or thunder.
void Beat(World& world);

} // namespace world
