// The place and who is in it: rooms, ways between them, creatures and players.
//
// No sockets here. What a player is to read collects in Player::lines until the server takes it
// away once a turn of its event loop. Rooms.cpp holds the tables; Login, Commands and Life change
// the state.
#pragma once

#include "Text.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace world {

enum class Direction : std::uint8_t {
    North,
    NorthEast,
    East,
    SouthEast,
    South,
    SouthWest,
    West,
    NorthWest,
    Up,
    Down,
};

struct DirectionRow {
    Direction direction;
    std::string_view word;
    std::string_view letters;
    Direction opposite;
    std::string_view whence; // "Ada arrives from ..." of one who comes from there
};

struct Features {
    bool sky = false; // it lies in the open, under the weather
    bool bread = false;
    bool bell = false;
    bool piano = false;
};

struct Room {
    std::string_view title;
    std::string_view prose;
    Features has = {};
};

// One way between two rooms. It is walked back by the opposite direction.
struct Passage {
    int from;
    Direction way;
    int to;
};

struct Kind {
    std::string_view name;  // "the brown rat"
    std::string_view sight; // the line seen in its room
    int room;
    int life;
    int aim;  // blows out of a hundred that land
    int bite; // the most that one takes
};

struct Creature {
    const Kind* kind;
    int life;          // 0 while it is away
    int beatsAway = 0; // until it is back
};

enum class Stage : std::uint8_t { Name, Password, Playing, Gone };

inline constexpr int StartRoom = 0;
inline constexpr int MaxLife = 20;

struct Player {
    int id = 0;
    Stage stage = Stage::Name;
    std::string name;
    int wrongTries = 0;
    int room = StartRoom;
    int life = MaxLife;
    int loaves = 0;
    int kills = 0;
    int beatsSinceMeal = 0;
    Creature* foe = nullptr; // one of World::creatures
    std::string terminal;    // as the client names it
    std::size_t width = ProseWidth;
    std::string lines;       // what to read, not yet sent
    bool wantsPrompt = true; // even when there is nothing to read
};

struct World {
    std::map<int, Player> players; // everyone connected, by id, also those still at the gate
    std::map<std::string, std::string> passwords; // by name, for this run only
    std::vector<Creature> creatures;              // never grows or shrinks: players point into it
    std::function<int(int)> roll;                 // a number from 0 up to below its argument
    std::string soundRoot; // the address of every sound up to its name; empty while none is served
    int beatsSinceWeather = 0;
};

// The tables.
std::span<const DirectionRow> Directions();
std::span<const Room> Rooms();
std::span<const Passage> Passages();
std::span<const Kind> Kinds();

// Fills a new world with its creatures. Players point into it, so it is filled where it stays.
void Populate(World& world);

// The room that the number stands for.
const Room& RoomAt(int room);

// The room one comes to, or nothing when there is no way.
std::optional<int> RoomTo(int room, Direction way);

// Someone in the world by that name, or null.
Player* FindPlaying(World& world, std::string_view name);

// Adds a line to what the player will read.
void Tell(Player& player, std::string_view colour, std::string_view text);

// Tells everyone who plays in the room but the one with the id.
void TellRoom(World& world, int room, int exceptId, std::string_view colour, std::string_view text);

// Tells the player what is to be seen in the room.
void LookAround(World& world, Player& player);

// Puts the player into the world at the start, and lets the others there know.
void Enter(World& world, Player& player);

// Takes the player out of the world; "Ada " and how is what the others in the room read.
void Leave(World& world, Player& player, std::string_view how);

// Walks one room on, out of a fight too. Says so when there is no way.
void Walk(World& world, Player& player, Direction way);

// The question or the state of health that stands before what is typed; empty for one who is gone.
std::string PromptOf(const Player& player);

} // namespace world
