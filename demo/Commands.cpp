#include "Commands.h"

#include "Life.h"
#include "Login.h"
#include "Sounds.h"
#include "World.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>

namespace world {
namespace {

struct Command {
    std::string_view word;
    std::string_view also; // a second way to say it
    void (*run)(World& world, Player& player, std::string_view rest);
    std::string_view help;
};

std::span<const Command> Commands();

void Look(World& world, Player& player, std::string_view) { LookAround(world, player); }

void Say(World& world, Player& player, std::string_view words) {
    if (words.empty()) {
        Tell(player, ProseColour, "You open your mouth and close it again.");
        return;
    }
    Tell(player, SpeechColour, "You say: " + std::string(words));
    TellRoom(world, player.room, player.id, SpeechColour,
             player.name + " says: " + std::string(words));
}

void Who(World& world, Player& player, std::string_view) {
    Tell(player, NoticeColour, "In Quillmere at this hour:");
    for (const auto& [id, other] : world.players) {
        if (other.stage == Stage::Playing)
            Tell(player, PeopleColour,
                 "  " + other.name + ", " + std::string(RoomAt(other.room).title));
    }
}

void Help(World&, Player& player, std::string_view) {
    std::string ways = "  To walk:";
    for (const DirectionRow& row : Directions())
        ways += ' ' + std::string(row.word) + " (" + std::string(row.letters) + ')';
    Tell(player, NoticeColour, "Words that work here:");
    player.lines += Prose(ExitColour, ways, player.width);
    for (const Command& command : Commands()) {
        const std::string also = command.also.empty() ? "" : " or " + std::string(command.also);
        Tell(player, ProseColour,
             "  " + std::string(command.word) + also + ": " + std::string(command.help));
    }
}

void Kill(World& world, Player& player, std::string_view target) {
    if (target.empty())
        Tell(player, ProseColour, "Whom would you fight? A rat, perhaps.");
    else
        Attack(world, player, target);
}

void Score(World&, Player& player, std::string_view) {
    Tell(player, NoticeColour,
         player.name + ": " + std::to_string(player.life) + " of " + std::to_string(MaxLife) +
             " life, loaves " + std::to_string(player.loaves) + ", rats beaten " +
             std::to_string(player.kills) + '.');
    Tell(player, HungerColour, IsHungry(player) ? "You are hungry." : "You are well fed.");
    if (!player.terminal.empty())
        Tell(player, ProseColour, "You look in through a window of type " + player.terminal + '.');
}

std::string LastWord(std::string_view thing) { return Lower(thing.substr(thing.rfind(' ') + 1)); }

bool IsBread(std::string_view thing) {
    const std::string last = LastWord(thing);
    return last == "bread" || last == "loaf";
}

void Get(World&, Player& player, std::string_view thing) {
    if (!RoomAt(player.room).has.bread || !IsBread(thing)) {
        Tell(player, ProseColour, "You see no such thing to take.");
    } else if (player.loaves == MaxLoaves) {
        Tell(player, ProseColour, "The baker looks at your full pockets until you put it back.");
    } else {
        ++player.loaves;
        Tell(player, HungerColour, "You take a warm loaf of bread.");
    }
}

void Eat(World& world, Player& player, std::string_view thing) {
    if (IsBread(thing))
        EatBread(world, player);
    else
        Tell(player, ProseColour, "You can eat bread, and only bread. It is a plain town.");
}

void Ring(World& world, Player& player, std::string_view thing) {
    const bool isBell = thing.empty() || LastWord(thing) == "bell";
    if (!RoomAt(player.room).has.bell || !isBell)
        Tell(player, ProseColour, "There is no such thing to ring here.");
    else
        RingBell(world, player);
}

void Sounds(World& world, Player& player, std::string_view) { ShowSounds(world, player); }

void Quit(World& world, Player& player, std::string_view) {
    Tell(player, NoticeColour, "Good-bye, " + player.name + ". The geese will remember you.");
    Leave(world, player, "takes the road out of town.");
}

constexpr Command kCommands[] = {
    {"look", "l", Look, "see the room again"},
    {"say", "", Say, "speak to everyone in the room"},
    {"who", "", Who, "see who else is about, and where"},
    {"kill", "attack", Kill, R"("kill rat" begins a fight, walking away ends it)"},
    {"score", "sc", Score, "see how you are"},
    {"get", "take", Get, R"("get bread" where some lies ready)"},
    {"eat", "", Eat, R"("eat bread" stills the hunger and heals a little)"},
    {"ring", "", Ring, R"("ring bell" where one hangs)"},
    {"sounds", "", Sounds, "have your client play all that there is to hear"},
    {"help", "?", Help, "read this"},
    {"quit", "", Quit, "leave the world"},
};

std::span<const Command> Commands() { return kCommands; }

// True when the word was a direction, whether or not there is a way.
bool WalkIfDirection(World& world, Player& player, std::string_view word) {
    const auto row = std::ranges::find_if(Directions(), [word](const DirectionRow& each) {
        return word == each.word || word == each.letters;
    });
    if (row == Directions().end())
        return false;
    Walk(world, player, row->direction);
    return true;
}

void RunCommand(World& world, Player& player, std::string_view line) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string word = Lower(line.substr(0, blank));
    const std::string rest = Clean(line.substr(blank));
    if (WalkIfDirection(world, player, word))
        return;
    const auto command = std::ranges::find_if(
        kCommands, [&word](const Command& each) { return word == each.word || word == each.also; });
    if (command != std::end(kCommands))
        command->run(world, player, rest);
    else
        Tell(player, ProseColour, R"(The geese look blank. Try "help" for words they know.)");
}

} // namespace

void HandleLine(World& world, Player& player, std::string_view line) {
    player.wantsPrompt = true;
    if (player.stage != Stage::Playing) {
        HandleLogin(world, player, line);
        return;
    }
    const std::string command = Clean(line);
    if (!command.empty())
        RunCommand(world, player, command);
}

} // namespace world
