// The town as its data file tells it: rooms and the ways between them, creatures, things, texts.
//
// Nothing in here changes while the world runs; who is where stands in World. The file is built
// into the program, and its form is told at its own head (town.txt).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
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

// In the order of Direction.
std::span<const DirectionRow> Directions();
const DirectionRow& RowOf(Direction direction);

inline constexpr std::size_t DirectionCount = 10;
inline constexpr int Nowhere = -1;

struct Room {
    std::string id;
    std::string title;
    std::string prose;
    bool sky = false; // it lies in the open, under the weather
    bool bell = false;
    bool piano = false;
    std::array<int, DirectionCount> ways; // the room in each direction, or Nowhere

    Room() { ways.fill(Nowhere); }
};

inline constexpr std::size_t BlowCount = 4;

// A kind of creature; there is one of each.
struct Kind {
    std::string id;
    std::string name;  // "the brown rat"
    std::string sight; // the line seen in its room
    int room = Nowhere;
    int life = 0;
    int aim = 0;                              // blows out of a hundred that land
    int bite = 0;                             // the most that one takes
    bool attacks = false;                     // whoever comes in
    std::array<std::string, BlowCount> blows; // its deeds, from the worst to the miss: "bites"
};

// A kind of thing. One lies at its home until it is taken, and is there again after a while.
struct Thing {
    std::string id;
    std::string name;  // "a straw hat"
    std::string sight; // the line seen where it lies at home
    std::string look;  // what is seen from near
    int home = Nowhere;
    bool endless = false; // taking one leaves another
    int food = 0;         // the life that eating it gives; 0 when it can't be eaten
    std::string eaten;    // what the one who eats it reads
    std::string worn;     // where it is worn: "on your head"; empty when it can't be
    int guard = 0;        // what each bite takes less while it is worn
};

struct Topic {
    std::string word; // of help
    std::string about;
    std::vector<std::string> paragraphs;
};

struct Town {
    std::vector<Room> rooms; // players come in at the first
    std::vector<Kind> kinds;
    std::vector<Thing> things;
    std::vector<Topic> topics;
    std::map<std::string, std::vector<std::string>, std::less<>> texts; // lines by their names
};

// Reads a data file. Throws std::runtime_error "line 7: ..." at the first line that can't be meant,
// and one without a line when something is missing in the whole.
Town ReadTown(std::string_view text);

// The town that is built in.
const Town& Quillmere();

// The lines of a text; throws std::out_of_range when the town has none by that name.
const std::vector<std::string>& LinesOf(const Town& town, std::string_view text);

} // namespace world
