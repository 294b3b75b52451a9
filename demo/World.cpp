#include "World.h"

#include "Life.h"
#include "Sounds.h"
#include "Things.h"

#include <algorithm>

namespace world {
namespace {

constexpr int kNarrowest = 40; // a window smaller than that gets lines of this width

std::string ExitsOf(const World& world, int room) {
    std::string exits;
    for (const DirectionRow& row : Directions()) {
        if (RoomTo(world, room, row.direction))
            exits += (exits.empty() ? "Exits: " : ", ") + std::string(row.word);
    }
    return exits + '.';
}

void ArriveIn(World& world, Player& player) {
    LookAround(world, player);
    if (RoomAt(world, player.room).piano)
        TellWithSound(world, player, ProseColour, "The piano begins to play, rather slowly.",
                      {Sound::Tune, 70, 50});
    MeetCreatures(world, player);
}

// A name that the first day gave no life yet is that of a newcomer.
void Recall(const World& world, Player& player) {
    const auto account = world.book.find(player.name);
    if (account == world.book.end() || account->second.life == 0)
        return;
    player.life = std::min(account->second.life, MaxLife);
    player.kills = account->second.kills;
    player.beatsSinceMeal = account->second.beatsSinceMeal;
    player.carried = NumbersOf(*world.town, account->second.carried);
    player.worn = NumbersOf(*world.town, account->second.worn);
}

} // namespace

const Room& RoomAt(const World& world, int room) {
    return world.town->rooms[static_cast<std::size_t>(room)];
}

void Populate(World& world, const Town& town) {
    world.town = &town;
    for (const Kind& kind : town.kinds)
        world.creatures.push_back({&kind, kind.life});
    world.beatsAway.resize(town.things.size());
}

std::optional<int> RoomTo(const World& world, int room, Direction way) {
    const int to = RoomAt(world, room).ways[static_cast<std::size_t>(way)];
    return to == Nowhere ? std::nullopt : std::optional(to);
}

std::size_t WidthOf(const Player& player) {
    const int columns = player.telnet.columns;
    const int wished = columns > 0 ? std::max(columns, kNarrowest) : static_cast<int>(ProseWidth);
    return std::min(static_cast<std::size_t>(wished), ProseWidth);
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

void TellProse(Player& player, std::string_view colour, std::string_view text) {
    player.lines += Prose(colour, text, WidthOf(player));
}

void TellRoom(World& world, int room, int exceptId, std::string_view colour,
              std::string_view text) {
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing && player.room == room && id != exceptId)
            Tell(player, colour, text);
    }
}

void LookAround(World& world, Player& player) {
    const Room& room = RoomAt(world, player.room);
    Tell(player, TitleColour, room.title);
    TellProse(player, ProseColour, room.prose);
    ShowThingsIn(world, player);
    for (const Creature& creature : world.creatures) {
        if (creature.life > 0 && creature.kind->room == player.room)
            TellProse(player, CreatureColour, creature.kind->sight);
    }
    for (const auto& [id, other] : world.players) {
        if (other.stage == Stage::Playing && other.room == player.room && id != player.id)
            Tell(player, PeopleColour, other.name + " is here.");
    }
    TellProse(player, ExitColour, ExitsOf(world, player.room));
}

void Enter(World& world, Player& player) {
    player.stage = Stage::Playing;
    player.room = StartRoom;
    Recall(world, player);
    TellRoom(world, player.room, player.id, PeopleColour, player.name + " comes in off the road.");
    ArriveIn(world, player);
}

void Leave(World& world, Player& player, std::string_view how) {
    Remember(world, player);
    player.stage = Stage::Gone;
    player.foe = nullptr;
    player.flood = 0;
    TellRoom(world, player.room, player.id, PeopleColour, player.name + ' ' + std::string(how));
}

void Remember(World& world, const Player& player) {
    const auto entry = world.book.find(player.name);
    if (entry == world.book.end())
        return;
    Account& account = entry->second;
    account.life = player.life;
    account.kills = player.kills;
    account.beatsSinceMeal = player.beatsSinceMeal;
    account.carried = IdsOf(*world.town, player.carried);
    account.worn = IdsOf(*world.town, player.worn);
    world.isBookChanged = true;
}

void Walk(World& world, Player& player, Direction way) {
    const DirectionRow& row = RowOf(way);
    const std::optional<int> room = RoomTo(world, player.room, way);
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
    ArriveIn(world, player);
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
