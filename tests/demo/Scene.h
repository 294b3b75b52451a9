// A world without sockets for the tests: players join, type and read; chance is chosen by the test.
#pragma once

#include "Commands.h"
#include "Life.h"
#include "World.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace world {

inline constexpr std::uint8_t SoundOption = 90;

// The place of a record in its list; throws when there is none by that name.
template <class Record> int NumberOf(const std::vector<Record>& records, std::string_view id) {
    const auto found = std::ranges::find(records, id, &Record::id);
    if (found == records.end())
        throw std::out_of_range("nothing is named " + std::string(id));
    return static_cast<int>(found - records.begin());
}

struct Scene {
    World world;

    explicit Scene(const Town& town = Quillmere()) {
        Populate(world, town);
        world.hashRounds = 1;
        Luck(true);
    }

    // With luck every blow lands and takes the least; without it every blow misses.
    void Luck(bool lands) {
        world.roll = [lands](int sides) { return lands ? 0 : sides - 1; };
    }

    // Every blow lands and takes the most: the roll to hit is out of a hundred.
    void HardBlows() {
        world.roll = [](int sides) { return sides == 100 ? 0 : sides - 1; };
    }

    int RoomNamed(std::string_view id) const { return NumberOf(world.town->rooms, id); }
    int ThingNamed(std::string_view id) const { return NumberOf(world.town->things, id); }
    Creature& CreatureNamed(std::string_view id) {
        return world.creatures[static_cast<std::size_t>(NumberOf(world.town->kinds, id))];
    }

    Player& Connect() {
        const int id = static_cast<int>(world.players.size()) + 1;
        Player& player = world.players[id];
        player.id = id;
        return player;
    }

    // One who plays, with a client that takes sounds.
    Player& Join(std::string_view name) {
        Player& player = Connect();
        player.name = name;
        player.stage = Stage::Playing;
        player.telnet.ours[SoundOption] = OptionState::On;
        return player;
    }

    // What the player reads from now on, taken away.
    static std::string Read(Player& player) { return std::exchange(player.lines, {}); }

    std::string Type(Player& player, std::string_view line) {
        player.lines.clear();
        HandleLine(world, player, line);
        return Read(player);
    }
};

inline bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

inline bool IsTrigger(std::string_view line) {
    return line.starts_with("!!SOUND(") || line.starts_with("!!MUSIC(");
}

// Every line of what a player reads ends in CR LF and begins with a whole colour sequence. Only a
// line that asks for a sound has no colour, and such a line follows one that has.
inline bool EveryLineHasItsColour(std::string_view lines) {
    bool mayBeTrigger = false;
    while (!lines.empty()) {
        const std::size_t end = lines.find("\r\n");
        const bool hasColour = lines.starts_with("\x1b[0;") &&
                               lines.find('m') <= std::string_view("\x1b[0;1;3").size() + 1;
        if (end == std::string_view::npos || !(hasColour || (mayBeTrigger && IsTrigger(lines))))
            return false;
        mayBeTrigger = hasColour;
        lines.remove_prefix(end + 2);
    }
    return true;
}

// What stands between the marks of an address in each line that asks for a sound.
inline std::vector<std::string> AddressesIn(std::string_view text) {
    std::vector<std::string> addresses;
    for (std::size_t at = 0; (at = text.find(" U=", at)) != std::string_view::npos;) {
        at += 3;
        addresses.emplace_back(text.substr(at, text.find(' ', at) - at));
    }
    return addresses;
}

} // namespace world
