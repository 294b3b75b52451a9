#include "World.h"

#include "Sounds.h"

namespace world {
namespace {

// The rows stand in the order of the directions.
const DirectionRow& RowOf(Direction direction) {
    return Directions()[static_cast<std::size_t>(direction)];
}

std::string ExitsOf(int room) {
    std::string exits;
    for (const DirectionRow& row : Directions()) {
        if (RoomTo(room, row.direction))
            exits += (exits.empty() ? "Exits: " : ", ") + std::string(row.word);
    }
    return exits + '.';
}

} // namespace

const Room& RoomAt(int room) { return Rooms()[static_cast<std::size_t>(room)]; }

void Populate(World& world) {
    for (const Kind& kind : Kinds())
        world.creatures.push_back({&kind, kind.life});
}

std::optional<int> RoomTo(int room, Direction way) {
    for (const Passage& passage : Passages()) {
        if (passage.from == room && passage.way == way)
            return passage.to;
        if (passage.to == room && passage.way == RowOf(way).opposite)
            return passage.from;
    }
    return std::nullopt;
}

Player* FindPlaying(World& world, std::string_view name) {
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing && player.name == name)
            return &player;
    }
    return nullptr;
}

void Tell(Player& player, std::string_view colour, std::string_view text) {
    player.lines += Line(colour, text);
}

void TellRoom(World& world, int room, int exceptId, std::string_view colour,
              std::string_view text) {
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing && player.room == room && id != exceptId)
            Tell(player, colour, text);
    }
}

void LookAround(World& world, Player& player) {
    const Room& room = RoomAt(player.room);
    Tell(player, TitleColour, room.title);
    player.lines += Prose(ProseColour, room.prose, player.width);
    for (const Creature& creature : world.creatures) {
        if (creature.life > 0 && creature.kind->room == player.room)
            Tell(player, CreatureColour, creature.kind->sight);
    }
    for (const auto& [id, other] : world.players) {
        if (other.stage == Stage::Playing && other.room == player.room && id != player.id)
            Tell(player, PeopleColour, other.name + " is here.");
    }
    Tell(player, ExitColour, ExitsOf(player.room));
}

void Enter(World& world, Player& player) {
    player.stage = Stage::Playing;
    player.room = StartRoom;
    TellRoom(world, player.room, player.id, PeopleColour, player.name + " comes in off the road.");
    LookAround(world, player);
}

void Leave(World& world, Player& player, std::string_view how) {
    player.stage = Stage::Gone;
    player.foe = nullptr;
    TellRoom(world, player.room, player.id, PeopleColour, player.name + ' ' + std::string(how));
}

void Walk(World& world, Player& player, Direction way) {
    const DirectionRow& row = RowOf(way);
    const std::optional<int> room = RoomTo(player.room, way);
    if (!room) {
        Tell(player, ProseColour, "There is no way " + std::string(row.word) + " from here.");
        return;
    }
    if (player.foe) {
        Tell(player, ProseColour, "You turn your back on the fight and run.");
        player.foe = nullptr;
    }
    TellRoom(world, player.room, player.id, PeopleColour,
             player.name + " leaves " + std::string(row.word) + '.');
    player.room = *room;
    TellRoom(world, player.room, player.id, PeopleColour,
             player.name + " arrives from " + std::string(RowOf(row.opposite).whence) + '.');
    LookAround(world, player);
    if (RoomAt(player.room).has.piano)
        TellWithSound(world, player, ProseColour, "The piano begins to play, rather slowly.",
                      {Sound::Tune, 70, 50});
}

std::string PromptOf(const Player& player) {
    switch (player.stage) {
    case Stage::Name:
        return "By what name are you known? ";
    case Stage::Password:
        return "Password: ";
    case Stage::Playing:
        return '[' + std::to_string(player.life) + '/' + std::to_string(MaxLife) + "] > ";
    case Stage::Gone:
        break;
    }
    return {};
}

} // namespace world
