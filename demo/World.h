// Who and what is in the town: players, creatures, and things that are not where they belong.
//
// No sockets here. What a player is to read collects in Player::lines until the server takes it
// away once a turn of its event loop. Town holds what never changes; Login, Commands, Talk, Things
// and Life change the state.
#pragma once

#include "Book.h"
#include "Telnet.h"
#include "Text.h"
#include "Town.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace world {

struct Creature {
    const Kind* kind;
    int life;          // 0 while it is away
    int beatsAway = 0; // until it is back
};

// How far the client is in being asked for its name.
enum class ProbeState : std::uint8_t { None, Wanted, Sent };

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
    int kills = 0;
    int beatsSinceMeal = 0;
    std::vector<int> carried; // numbers of Town::things, in the order they were taken
    std::vector<int> worn;
    Creature* foe = nullptr; // one of World::creatures
    Telnet telnet;
    std::string lines;       // what to read, not yet sent
    bool wantsPrompt = true; // even when there is nothing to read
    ProbeState probe = ProbeState::None;
    std::size_t flood = 0; // bytes of flood still to send
};

// A thing that somebody dropped.
struct Dropped {
    int thing;
    int room;
    int beats = 0; // it has been lying
};

struct World {
    const Town* town = nullptr;
    std::map<int, Player> players; // everyone connected, by id, also those still at the gate
    Book book;
    bool isBookChanged = false;      // since it was written last
    int hashRounds = HashRounds;     // for new names
    std::vector<Creature> creatures; // never grows or shrinks: players point into it
    std::vector<int> beatsAway;      // of each thing from its home; 0 for one that lies there
    std::deque<Dropped> dropped;     // the oldest first
    std::function<int(int)> roll;    // a number from 0 up to below its argument
    std::string soundRoot; // the address of every sound up to its name; empty while none is served
    int beatsSinceWeather = 0;
    int rings = 0; // of a bell, since the last beat
};

// Fills a new world with the creatures and things of a town, which must outlive it. Players point
// into it, so it is filled where it stays.
void Populate(World& world, const Town& town);

// The room that the number stands for.
const Room& RoomAt(const World& world, int room);

// The room one comes to, or nothing when there is no way.
std::optional<int> RoomTo(const World& world, int room, Direction way);

// How wide the player's window lets a line of prose be.
std::size_t WidthOf(const Player& player);

// Someone in the world by that name, or null.
Player* FindPlaying(World& world, std::string_view name);

// Adds a line to what the player will read.
void Tell(Player& player, std::string_view colour, std::string_view text);

// The same with as many lines as the player's window makes of the text.
void TellProse(Player& player, std::string_view colour, std::string_view text);

// Tells everyone who plays in the room but the one with the id.
void TellRoom(World& world, int room, int exceptId, std::string_view colour, std::string_view text);

// Tells the player what is to be seen in the room.
void LookAround(World& world, Player& player);

// Puts the player into the world at the start, as the book remembers them, and lets the others
// there know.
void Enter(World& world, Player& player);

// Takes the player out of the world, into the book; "Ada " and how is what the others in the room
// read.
void Leave(World& world, Player& player, std::string_view how);

// Writes into the book what is to be kept of one who plays.
void Remember(World& world, const Player& player);

// Walks one room on, out of a fight too. Says so when there is no way. A creature that attacks
// begins at once with one who comes in.
void Walk(World& world, Player& player, Direction way);

// The question or the state of health that stands before what is typed; empty for one who is gone.
std::string PromptOf(const Player& player);

} // namespace world
