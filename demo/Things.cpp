#include "Things.h"

#include "Life.h"
#include "World.h"

#include <algorithm>

namespace world {
namespace {

const Thing& ThingAt(const World& world, int thing) {
    return world.town->things[static_cast<std::size_t>(thing)];
}

// A "warm loaf of bread" is called "bread", "loaf" or "some bread", not "a" or "of".
bool IsCalled(const World& world, int thing, std::string_view called) {
    constexpr std::size_t kShortestWord = 3;
    const std::string word = Lower(LastWord(called));
    const std::string words = ' ' + ThingAt(world, thing).name + ' ';
    return word.size() >= kShortestWord && words.find(' ' + word + ' ') != std::string::npos;
}

auto Find(const World& world, std::vector<int>& things, std::string_view called) {
    return std::ranges::find_if(things, [&](int thing) { return IsCalled(world, thing, called); });
}

auto FindDropped(World& world, int room, std::string_view called) {
    return std::ranges::find_if(world.dropped, [&](const Dropped& each) {
        return each.room == room && IsCalled(world, each.thing, called);
    });
}

bool IsAtHomeIn(const World& world, int thing, int room) {
    return ThingAt(world, thing).home == room &&
           world.beatsAway[static_cast<std::size_t>(thing)] == 0;
}

int FindAtHome(const World& world, int room, std::string_view called) {
    for (int thing = 0; thing < static_cast<int>(world.town->things.size()); ++thing) {
        if (IsAtHomeIn(world, thing, room) && IsCalled(world, thing, called))
            return thing;
    }
    return Nowhere;
}

// Takes the thing out of the room; Nowhere when there is none.
int TakeFromRoom(World& world, int room, std::string_view called) {
    const auto dropped = FindDropped(world, room, called);
    if (dropped != world.dropped.end()) {
        const int thing = dropped->thing;
        world.dropped.erase(dropped);
        return thing;
    }
    const int thing = FindAtHome(world, room, called);
    if (thing != Nowhere && !ThingAt(world, thing).endless)
        world.beatsAway[static_cast<std::size_t>(thing)] = BeatsUntilHome;
    return thing;
}

void TellOthers(World& world, const Player& player, const std::string& deed) {
    TellRoom(world, player.room, player.id, PeopleColour, player.name + ' ' + deed);
}

} // namespace

void Get(World& world, Player& player, std::string_view called) {
    if (player.carried.size() + player.worn.size() >= MaxCarried) {
        Tell(player, ProseColour, "Your arms are full. Drop something first, or eat it.");
        return;
    }
    const int thing = TakeFromRoom(world, player.room, called);
    if (thing == Nowhere) {
        Tell(player, ProseColour, "You see no such thing to take.");
        return;
    }
    player.carried.push_back(thing);
    Tell(player, HungerColour, "You take " + ThingAt(world, thing).name + '.');
    TellOthers(world, player, "takes " + ThingAt(world, thing).name + '.');
}

void Drop(World& world, Player& player, std::string_view called) {
    const auto found = Find(world, player.carried, called);
    if (found == player.carried.end()) {
        Tell(player, ProseColour, "You carry no such thing.");
        return;
    }
    if (world.dropped.size() == MaxDropped)
        world.dropped.pop_front();
    world.dropped.push_back({*found, player.room});
    const std::string name = ThingAt(world, *found).name;
    player.carried.erase(found);
    Tell(player, HungerColour, "You drop " + name + '.');
    TellOthers(world, player, "drops " + name + '.');
}

void Wear(World& world, Player& player, std::string_view called) {
    const auto found = Find(world, player.carried, called);
    if (found == player.carried.end()) {
        Tell(player, ProseColour, "You carry no such thing.");
        return;
    }
    const Thing& thing = ThingAt(world, *found);
    const bool isTaken = std::ranges::any_of(
        player.worn, [&](int each) { return ThingAt(world, each).worn == thing.worn; });
    if (thing.worn.empty()) {
        Tell(player, ProseColour, "You turn it this way and that. It is not for wearing.");
    } else if (isTaken) {
        Tell(player, ProseColour, "You wear something " + thing.worn + " already.");
    } else {
        player.worn.push_back(*found);
        player.carried.erase(found);
        Tell(player, HungerColour, "You wear " + thing.name + ' ' + thing.worn + '.');
        TellOthers(world, player, "puts on " + thing.name + '.');
    }
}

void TakeOff(World& world, Player& player, std::string_view called) {
    const auto found = Find(world, player.worn, called);
    if (found == player.worn.end()) {
        Tell(player, ProseColour, "You wear no such thing.");
        return;
    }
    const std::string name = ThingAt(world, *found).name;
    player.carried.push_back(*found);
    player.worn.erase(found);
    Tell(player, HungerColour, "You take off " + name + '.');
    TellOthers(world, player, "takes off " + name + '.');
}

void Eat(World& world, Player& player, std::string_view called) {
    const auto found = Find(world, player.carried, called);
    if (found == player.carried.end()) {
        Tell(player, ProseColour, "You have no such thing to eat. The bakehouse has bread.");
        return;
    }
    const Thing& thing = ThingAt(world, *found);
    if (thing.food == 0) {
        Tell(player, ProseColour, "You bite it. It does not taste of anything you would eat.");
        return;
    }
    player.carried.erase(found);
    player.beatsSinceMeal = 0;
    player.life = std::min(player.life + thing.food, MaxLife);
    Tell(player, HungerColour, thing.eaten);
    TellOthers(world, player, "eats " + thing.name + '.');
}

void ShowCarried(World& world, Player& player, std::string_view) {
    if (player.carried.empty() && player.worn.empty())
        Tell(player, ProseColour, "You carry nothing but your good name.");
    for (const int thing : player.carried)
        Tell(player, ProseColour, "  " + ThingAt(world, thing).name);
    for (const int thing : player.worn)
        Tell(player, ProseColour,
             "  " + ThingAt(world, thing).name + ", worn " + ThingAt(world, thing).worn);
}

bool LookAt(const World& world, Player& player, std::string_view called) {
    std::vector<int> near = player.carried;
    std::ranges::copy(player.worn, std::back_inserter(near));
    for (const Dropped& each : world.dropped) {
        if (each.room == player.room)
            near.push_back(each.thing);
    }
    near.push_back(FindAtHome(world, player.room, called));
    std::erase(near, Nowhere);
    const auto found = Find(world, near, called);
    if (found == near.end())
        return false;
    TellProse(player, ProseColour, ThingAt(world, *found).look);
    return true;
}

void ShowThingsIn(const World& world, Player& player) {
    for (int thing = 0; thing < static_cast<int>(world.town->things.size()); ++thing) {
        if (IsAtHomeIn(world, thing, player.room))
            TellProse(player, HungerColour, ThingAt(world, thing).sight);
    }
    for (const Dropped& each : world.dropped) {
        if (each.room == player.room)
            Tell(player, HungerColour,
                 "Somebody has left " + ThingAt(world, each.thing).name + " here.");
    }
}

int GuardOf(const World& world, const Player& player) {
    int guard = 0;
    for (const int thing : player.worn)
        guard += ThingAt(world, thing).guard;
    return guard;
}

void LetThingsMove(World& world) {
    for (int& beats : world.beatsAway)
        beats = std::max(beats - 1, 0);
    for (Dropped& each : world.dropped)
        ++each.beats;
    std::erase_if(world.dropped,
                  [](const Dropped& each) { return each.beats >= BeatsOnTheGround; });
}

std::vector<std::string> IdsOf(const Town& town, const std::vector<int>& things) {
    std::vector<std::string> ids;
    for (const int thing : things)
        ids.push_back(town.things[static_cast<std::size_t>(thing)].id);
    return ids;
}

std::vector<int> NumbersOf(const Town& town, const std::vector<std::string>& ids) {
    std::vector<int> numbers;
    for (const std::string& id : ids) {
        const auto thing = std::ranges::find(town.things, id, &Thing::id);
        if (thing != town.things.end() && numbers.size() < MaxCarried)
            numbers.push_back(static_cast<int>(thing - town.things.begin()));
    }
    return numbers;
}

} // namespace world
