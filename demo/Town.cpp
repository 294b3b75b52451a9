#include "Town.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <stdexcept>

#include <QFile>

namespace world {
namespace {

using enum Direction;

constexpr DirectionRow kDirections[DirectionCount] = {
    {North, "north", "n", South, "the north"},
    {NorthEast, "northeast", "ne", SouthWest, "the northeast"},
    {East, "east", "e", West, "the east"},
    {SouthEast, "southeast", "se", NorthWest, "the southeast"},
    {South, "south", "s", North, "the south"},
    {SouthWest, "southwest", "sw", NorthEast, "the southwest"},
    {West, "west", "w", East, "the west"},
    {NorthWest, "northwest", "nw", SouthEast, "the northwest"},
    {Up, "up", "u", Down, "above"},
    {Down, "down", "d", Up, "below"},
};

// "key: value", or a key alone. A line of a text has no key.
struct Field {
    int line;
    std::string key;
    std::string value;
};

// "[kind id]" and what stands below it.
struct Block {
    int line;
    std::string kind;
    std::string id;
    std::vector<Field> fields;
};

[[noreturn]] void Refuse(int line, const std::string& why) {
    throw std::runtime_error("line " + std::to_string(line) + ": " + why);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

Block ParseHead(std::string_view line, int number) {
    const std::size_t blank = line.find(' ');
    if (!line.ends_with(']') || blank == std::string_view::npos)
        Refuse(number, "a head is [kind name]");
    return {number,
            std::string(line.substr(1, blank - 1)),
            std::string(Trimmed(line.substr(blank + 1, line.size() - blank - 2))),
            {}};
}

Field ParseField(std::string_view line, int number) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::size_t value = std::min(colon + 1, line.size());
    return {number, std::string(line.substr(0, colon)), std::string(Trimmed(line.substr(value)))};
}

// One line of the file: a remark, a head, a line of a text, the rest of the value before, a field.
void ParseLine(std::vector<Block>& blocks, std::string_view line, int number) {
    if (line.empty() || line.front() == '#')
        return;
    if (line.front() == '[') {
        blocks.push_back(ParseHead(line, number));
        return;
    }
    if (blocks.empty())
        Refuse(number, "stands before the first head");
    std::vector<Field>& fields = blocks.back().fields;
    if (line.front() == '|') {
        fields.push_back({number, "", std::string(line.substr(1))});
    } else if (line.front() != ' ') {
        fields.push_back(ParseField(line, number));
    } else {
        if (fields.empty())
            Refuse(number, "goes on with nothing");
        fields.back().value += ' ' + std::string(Trimmed(line));
    }
}

std::vector<Block> ParseBlocks(std::string_view text) {
    std::vector<Block> blocks;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ParseLine(blocks, text.substr(0, end), number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return blocks;
}

int NumberIn(const Field& field) {
    int number = 0;
    const char* const end = field.value.data() + field.value.size();
    const auto [at, error] = std::from_chars(field.value.data(), end, number);
    if (error != std::errc{} || at != end || number < 0)
        Refuse(field.line, field.key + " takes a number");
    return number;
}

int RoomIn(const Town& town, const Field& field) {
    const auto room = std::ranges::find(town.rooms, field.value, &Room::id);
    if (room == town.rooms.end())
        Refuse(field.line, "there is no room " + field.value);
    return static_cast<int>(room - town.rooms.begin());
}

// Every key that a record of some kind can have, and what it does.
template <class Record> struct Key {
    std::string_view name;
    void (*set)(const Town& town, Record& record, const Field& field);
};

template <class Record, std::size_t Count>
void Fill(const Town& town, Record& record, const Block& block, const Key<Record> (&keys)[Count]) {
    for (const Field& field : block.fields) {
        const auto key = std::ranges::find(keys, field.key, &Key<Record>::name);
        if (key == std::end(keys))
            Refuse(field.line, "a " + block.kind + " has no " + field.key);
        key->set(town, record, field);
    }
}

// The ways are read when all rooms are known.
constexpr Key<Room> kRoomKeys[] = {
    {"title", [](const Town&, Room& room, const Field& field) { room.title = field.value; }},
    {"prose", [](const Town&, Room& room, const Field& field) { room.prose = field.value; }},
    {"sky", [](const Town&, Room& room, const Field&) { room.sky = true; }},
    {"bell", [](const Town&, Room& room, const Field&) { room.bell = true; }},
    {"piano", [](const Town&, Room& room, const Field&) { room.piano = true; }},
};

template <std::size_t Blow> void SetBlow(const Town&, Kind& kind, const Field& field) {
    kind.blows[Blow] = field.value;
}

constexpr Key<Kind> kKindKeys[] = {
    {"name", [](const Town&, Kind& kind, const Field& field) { kind.name = field.value; }},
    {"sight", [](const Town&, Kind& kind, const Field& field) { kind.sight = field.value; }},
    {"room",
     [](const Town& town, Kind& kind, const Field& field) { kind.room = RoomIn(town, field); }},
    {"life", [](const Town&, Kind& kind, const Field& field) { kind.life = NumberIn(field); }},
    {"aim", [](const Town&, Kind& kind, const Field& field) { kind.aim = NumberIn(field); }},
    {"bite", [](const Town&, Kind& kind, const Field& field) { kind.bite = NumberIn(field); }},
    {"attacks", [](const Town&, Kind& kind, const Field&) { kind.attacks = true; }},
    {"worst", SetBlow<0>},
    {"blow", SetBlow<1>},
    {"graze", SetBlow<2>},
    {"miss", SetBlow<3>},
};

constexpr Key<Thing> kThingKeys[] = {
    {"name", [](const Town&, Thing& thing, const Field& field) { thing.name = field.value; }},
    {"sight", [](const Town&, Thing& thing, const Field& field) { thing.sight = field.value; }},
    {"look", [](const Town&, Thing& thing, const Field& field) { thing.look = field.value; }},
    {"home",
     [](const Town& town, Thing& thing, const Field& field) { thing.home = RoomIn(town, field); }},
    {"endless", [](const Town&, Thing& thing, const Field&) { thing.endless = true; }},
    {"food", [](const Town&, Thing& thing, const Field& field) { thing.food = NumberIn(field); }},
    {"eaten", [](const Town&, Thing& thing, const Field& field) { thing.eaten = field.value; }},
    {"worn", [](const Town&, Thing& thing, const Field& field) { thing.worn = field.value; }},
    {"guard", [](const Town&, Thing& thing, const Field& field) { thing.guard = NumberIn(field); }},
};

constexpr Key<Topic> kTopicKeys[] = {
    {"about", [](const Town&, Topic& topic, const Field& field) { topic.about = field.value; }},
    {"says", [](const Town&, Topic& topic,
                const Field& field) { topic.paragraphs.push_back(field.value); }},
};

const DirectionRow* FindDirection(std::string_view word) {
    const auto* const row = std::ranges::find(kDirections, word, &DirectionRow::word);
    return row == std::end(kDirections) ? nullptr : row;
}

// Takes the ways out of the rooms' blocks, so that only the keys of the table are left in them.
std::vector<Field> TakeWays(Block& block) {
    std::vector<Field> ways;
    std::ranges::copy_if(block.fields, std::back_inserter(ways),
                         [](const Field& field) { return FindDirection(field.key); });
    std::erase_if(block.fields, [](const Field& field) { return FindDirection(field.key); });
    return ways;
}

// A way is told once and walked back by the opposite direction.
void Join(Town& town, int from, const Field& way) {
    const DirectionRow& row = *FindDirection(way.key);
    const int to = RoomIn(town, way);
    int& there =
        town.rooms[static_cast<std::size_t>(from)].ways[static_cast<std::size_t>(row.direction)];
    int& back =
        town.rooms[static_cast<std::size_t>(to)].ways[static_cast<std::size_t>(row.opposite)];
    if (there != Nowhere || back != Nowhere)
        Refuse(way.line, "there is a way already");
    there = to;
    back = from;
}

template <class Record>
std::vector<Block*> BlocksOf(std::vector<Block>& blocks, std::string_view kind,
                             std::vector<Record>& records) {
    std::vector<Block*> found;
    for (Block& block : blocks) {
        if (block.kind == kind)
            found.push_back(&block);
    }
    records.resize(found.size());
    return found;
}

void ReadRooms(Town& town, std::vector<Block>& blocks) {
    const std::vector<Block*> rooms = BlocksOf(blocks, "room", town.rooms);
    for (std::size_t each = 0; each < rooms.size(); ++each)
        town.rooms[each].id = rooms[each]->id;
    for (std::size_t each = 0; each < rooms.size(); ++each) {
        for (const Field& way : TakeWays(*rooms[each]))
            Join(town, static_cast<int>(each), way);
        Fill(town, town.rooms[each], *rooms[each], kRoomKeys);
    }
    if (town.rooms.empty())
        throw std::runtime_error("there is no room");
}

void ReadTexts(Town& town, const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
        if (block.kind != "text")
            continue;
        for (const Field& field : block.fields) {
            if (!field.key.empty())
                Refuse(field.line, "each line of a text begins with |");
            town.texts[block.id].push_back(field.value);
        }
    }
}

template <class Record, std::size_t Count>
void ReadAll(const Town& town, std::vector<Block>& blocks, std::string_view kind,
             std::vector<Record>& records, std::string Record::*id,
             const Key<Record> (&keys)[Count]) {
    const std::vector<Block*> found = BlocksOf(blocks, kind, records);
    for (std::size_t each = 0; each < found.size(); ++each) {
        records[each].*id = found[each]->id;
        Fill(town, records[each], *found[each], keys);
    }
}

void RefuseStrangers(const std::vector<Block>& blocks) {
    constexpr std::string_view kinds[] = {"room", "creature", "thing", "help", "text"};
    for (const Block& block : blocks) {
        if (std::ranges::find(kinds, block.kind) == std::end(kinds))
            Refuse(block.line, "there is no kind " + block.kind);
    }
}

} // namespace

std::span<const DirectionRow> Directions() { return kDirections; }

const DirectionRow& RowOf(Direction direction) {
    return kDirections[static_cast<std::size_t>(direction)];
}

Town ReadTown(std::string_view text) {
    std::vector<Block> blocks = ParseBlocks(text);
    RefuseStrangers(blocks);
    Town town;
    ReadRooms(town, blocks);
    ReadAll(town, blocks, "creature", town.kinds, &Kind::id, kKindKeys);
    ReadAll(town, blocks, "thing", town.things, &Thing::id, kThingKeys);
    ReadAll(town, blocks, "help", town.topics, &Topic::word, kTopicKeys);
    ReadTexts(town, blocks);
    return town;
}

const Town& Quillmere() {
    static const Town town = [] {
        QFile file(":/demo/town.txt");
        if (!file.open(QFile::ReadOnly))
            throw std::runtime_error("the town is not built in");
        return ReadTown(file.readAll().toStdString());
    }();
    return town;
}

const std::vector<std::string>& LinesOf(const Town& town, std::string_view text) {
    const auto lines = town.texts.find(text);
    if (lines == town.texts.end())
        throw std::out_of_range("no text " + std::string(text));
    return lines->second;
}

} // namespace world
