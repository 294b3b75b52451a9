#include "Life.h"

#include "Sounds.h"
#include "Things.h"
#include "World.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace world {
namespace {

constexpr int kPlayerAim = 65; // blows out of a hundred that land
constexpr int kPlayerBlow = 4; // the most that one takes

struct BlowWords {
    int atLeast; // taken by the blow
    std::string_view you;
    std::string_view they;
};

// The rows are those of Kind::blows.
constexpr BlowWords kBlows[BlowCount] = {
    {4, "You land a fearful blow on ", " lands a fearful blow on "},
    {2, "You hit ", " hits "},
    {1, "You graze ", " grazes "},
    {0, "You swing at thin air beside ", " misses "},
};

struct Weather {
    std::string_view text;
    Cue cue;
};

// The roll of a dice with a side for each.
constexpr Weather kWeathers[] = {
    {"Rain comes over the mere in long grey lines, and goes.", {Sound::Rain, 60, 40}},
    {"Far out above the mere the thunder turns over in its bed.", {Sound::Thunder, 80, 60}},
};

std::size_t RowFor(int taken) {
    const auto* const row = std::ranges::find_if(
        kBlows, [taken](const BlowWords& each) { return taken >= each.atLeast; });
    return static_cast<std::size_t>(row - std::begin(kBlows));
}

int Blow(World& world, int aim, int most) {
    return world.roll(100) < aim ? 1 + world.roll(most) : 0;
}

void Defeat(World& world, Player& winner, Creature& creature) {
    const std::string name(creature.kind->name);
    creature.beatsAway = BeatsUntilBack;
    ++winner.kills;
    Tell(winner, NoticeColour, "You have beaten " + name + "! It takes itself off.");
    TellRoom(world, winner.room, winner.id, PeopleColour,
             winner.name + " has beaten " + name + '!');
    for (auto& [id, player] : world.players) {
        if (player.foe == &creature)
            player.foe = nullptr;
    }
}

void Strike(World& world, Player& player, Creature& creature) {
    const int taken = std::min(Blow(world, kPlayerAim, kPlayerBlow), creature.life);
    const std::string name(creature.kind->name);
    const BlowWords& words = kBlows[RowFor(taken)];
    creature.life -= taken;
    Tell(player, NoticeColour, std::string(words.you) + name + '.');
    TellRoom(world, player.room, player.id, PeopleColour,
             player.name + std::string(words.they) + name + '.');
    if (creature.life == 0)
        Defeat(world, player, creature);
}

void Faint(World& world, Player& player) {
    player.foe = nullptr;
    Tell(player, HungerColour, "Your knees fold, and the world goes out like a candle.");
    TellRoom(world, player.room, player.id, PeopleColour, player.name + " faints!");
    player.room = StartRoom;
    player.life = MaxLife / 2;
    TellRoom(world, player.room, player.id, PeopleColour,
             player.name + " is carried in and laid on the grass.");
    Tell(player, ProseColour, "You wake on grass. A goose is standing on you.");
    LookAround(world, player);
}

void Suffer(World& world, Player& player, const Creature& creature) {
    const int bite = Blow(world, creature.kind->aim, creature.kind->bite);
    const int taken = std::clamp(bite - GuardOf(world, player), 0, player.life);
    const std::string deed =
        Capital(creature.kind->name) + ' ' + creature.kind->blows[RowFor(taken)] + ' ';
    player.life -= taken;
    Tell(player, CreatureColour, deed + "you.");
    TellRoom(world, player.room, player.id, CreatureColour, deed + player.name + '.');
    if (player.life == 0)
        Faint(world, player);
    else if (taken > 0 && player.life <= WeakLife)
        Tell(player, HungerColour, "You feel weak.");
}

bool IsFoughtBySomeone(const World& world, const Creature& creature) {
    return std::ranges::any_of(world.players,
                               [&](const auto& entry) { return entry.second.foe == &creature; });
}

void LetHunger(Player& player) {
    ++player.beatsSinceMeal;
    if (!IsHungry(player)) {
        if (!player.foe)
            player.life = std::min(player.life + 1, MaxLife);
    } else if ((player.beatsSinceMeal - BeatsUntilHungry) % BeatsBetweenPangs == 0) {
        Tell(player, HungerColour, "You are hungry.");
    }
}

void LetReturn(World& world, Creature& creature) {
    if (creature.life > 0) {
        if (!IsFoughtBySomeone(world, creature))
            creature.life = creature.kind->life;
        return;
    }
    if (--creature.beatsAway > 0)
        return;
    creature.life = creature.kind->life;
    TellRoom(world, creature.kind->room, 0, CreatureColour,
             Capital(creature.kind->name) + " is back, and bears a grudge.");
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing && player.room == creature.kind->room)
            MeetCreatures(world, player);
    }
}

void LetWeather(World& world) {
    if (++world.beatsSinceWeather < BeatsOfFairWeather || world.roll(WeatherSides) != 0)
        return;
    world.beatsSinceWeather = 0;
    const Weather& weather =
        kWeathers[static_cast<std::size_t>(world.roll(static_cast<int>(std::size(kWeathers))))];
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing && RoomAt(world, player.room).sky)
            TellWithSound(world, player, ProseColour, weather.text, weather.cue);
    }
}

} // namespace

Creature* FindCreature(World& world, int room, std::string_view called) {
    for (Creature& creature : world.creatures) {
        const bool isHere = creature.life > 0 && creature.kind->room == room;
        if (isHere && LastWord(creature.kind->name) == Lower(LastWord(called)))
            return &creature;
    }
    return nullptr;
}

void Attack(World& world, Player& player, std::string_view target) {
    if (player.foe) {
        Tell(player, ProseColour, "You are fighting as hard as you can.");
        return;
    }
    player.foe = FindCreature(world, player.room, target);
    if (!player.foe) {
        Tell(player, ProseColour, "There is nothing like that to fight here.");
        return;
    }
    const std::string name(player.foe->kind->name);
    Tell(player, NoticeColour, "You go for " + name + '!');
    TellRoom(world, player.room, player.id, PeopleColour, player.name + " goes for " + name + '!');
}

void MeetCreatures(World& world, Player& player) {
    if (player.foe)
        return;
    for (Creature& creature : world.creatures) {
        if (creature.life == 0 || !creature.kind->attacks || creature.kind->room != player.room)
            continue;
        player.foe = &creature;
        Tell(player, CreatureColour, Capital(creature.kind->name) + " attacks you!");
        TellRoom(world, player.room, player.id, CreatureColour,
                 Capital(creature.kind->name) + " attacks " + player.name + '!');
        return;
    }
}

void Flee(World& world, Player& player) {
    if (!player.foe) {
        Tell(player, ProseColour, "From what? Nothing here is after you.");
        return;
    }
    std::vector<Direction> ways;
    for (const DirectionRow& row : Directions()) {
        if (RoomTo(world, player.room, row.direction))
            ways.push_back(row.direction);
    }
    Walk(world, player, ways[static_cast<std::size_t>(world.roll(static_cast<int>(ways.size())))]);
}

void RingBell(World& world, Player& player) {
    constexpr Cue cue{Sound::Bell, 90, 60};
    if (world.rings >= MaxRings) {
        Tell(player, NoticeColour, "You ring the bell. It is still humming.");
        TellRoom(world, player.room, player.id, NoticeColour,
                 player.name + " rings the bell. It is still humming.");
        return;
    }
    ++world.rings;
    for (auto& [id, each] : world.players) {
        if (each.stage != Stage::Playing || each.room != player.room)
            continue;
        const std::string who = id == player.id ? "You ring" : player.name + " rings";
        TellWithSound(world, each, NoticeColour, who + " the bell. It hums on for a while.", cue);
    }
}

bool IsHungry(const Player& player) { return player.beatsSinceMeal >= BeatsUntilHungry; }

bool AnyoneFights(const World& world) {
    return std::ranges::any_of(world.players, [](const auto& entry) { return entry.second.foe; });
}

bool AnyonePlays(const World& world) {
    return std::ranges::any_of(
        world.players, [](const auto& entry) { return entry.second.stage == Stage::Playing; });
}

void Round(World& world) {
    for (auto& [id, player] : world.players) {
        Creature* creature = player.foe;
        if (!creature)
            continue;
        Strike(world, player, *creature);
        if (player.foe)
            Suffer(world, player, *creature);
    }
}

void Beat(World& world) {
    for (auto& [id, player] : world.players) {
        if (player.stage == Stage::Playing)
            LetHunger(player);
    }
    for (Creature& creature : world.creatures)
        LetReturn(world, creature);
    LetThingsMove(world);
    LetWeather(world);
    world.rings = 0;
}

} // namespace world
