#include "Talk.h"

#include "World.h"

#include <algorithm>
#include <string>

namespace world {

void Say(World& world, Player& player, std::string_view words) {
    if (words.empty()) {
        Tell(player, ProseColour, "You open your mouth and close it again.");
        return;
    }
    Tell(player, SpeechColour, "You say: " + std::string(words));
    TellRoom(world, player.room, player.id, SpeechColour,
             player.name + " says: " + std::string(words));
}

void TellTo(World& world, Player& player, std::string_view nameAndWords) {
    const std::size_t blank = std::min(nameAndWords.find(' '), nameAndWords.size());
    const std::string words = Clean(nameAndWords.substr(blank));
    Player* const other = FindPlaying(world, ProperName(nameAndWords.substr(0, blank)));
    if (words.empty()) {
        Tell(player, ProseColour, R"(Tell whom what? "tell ada good morning" would do.)");
    } else if (!other) {
        Tell(player, ProseColour, "Nobody of that name is in the town.");
    } else if (other == &player) {
        Tell(player, ProseColour, "You tell yourself. You knew already.");
    } else {
        Tell(player, SpeechColour, "You tell " + other->name + ": " + words);
        Tell(*other, SpeechColour, player.name + " tells you: " + words);
    }
}

void Emote(World& world, Player& player, std::string_view deed) {
    if (deed.empty()) {
        Tell(player, ProseColour, R"(Do what? "emote yawns" would do.)");
        return;
    }
    const std::string line = player.name + ' ' + std::string(deed);
    Tell(player, PeopleColour, line);
    TellRoom(world, player.room, player.id, PeopleColour, line);
}

void Who(World& world, Player& player, std::string_view) {
    Tell(player, NoticeColour, "In Quillmere at this hour:");
    for (const auto& [id, other] : world.players) {
        if (other.stage == Stage::Playing)
            Tell(player, PeopleColour, "  " + other.name + ", " + RoomAt(world, other.room).title);
    }
}

} // namespace world
