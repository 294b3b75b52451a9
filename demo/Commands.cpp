#include "Commands.h"

#include "Life.h"
#include "Login.h"
#include "Shows.h"
#include "Sounds.h"
#include "Talk.h"
#include "Things.h"
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

// With a name, at one thing or creature; else at the room.
void Look(World& world, Player& player, std::string_view called) {
    if (called.empty()) {
        LookAround(world, player);
        return;
    }
    if (LookAt(world, player, called))
        return;
    if (const Creature* creature = FindCreature(world, player.room, called))
        TellProse(player, CreatureColour, creature->kind->sight);
    else
        Tell(player, ProseColour, "You see no such thing here.");
}

void TellAll(Player& player, std::string_view colour, const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        Tell(player, colour, line);
}

void ShowMap(World& world, Player& player, std::string_view) {
    TellAll(player, ExitColour, LinesOf(*world.town, "map"));
    Tell(player, ProseColour, "You are here: " + RoomAt(world, player.room).title + '.');
}

void ShowTopic(Player& player, const Topic& topic) {
    Tell(player, TitleColour, Capital(topic.about) + ':');
    for (const std::string& paragraph : topic.paragraphs)
        TellProse(player, ProseColour, paragraph);
}

void ListWords(const World& world, Player& player) {
    std::string ways = "  To walk:";
    for (const DirectionRow& row : Directions())
        ways += ' ' + std::string(row.word) + " (" + std::string(row.letters) + ')';
    Tell(player, NoticeColour, "Words that work here:");
    TellProse(player, ExitColour, ways);
    for (const Command& command : Commands()) {
        const std::string also = command.also.empty() ? "" : " or " + std::string(command.also);
        Tell(player, ProseColour,
             "  " + std::string(command.word) + also + ": " + std::string(command.help));
    }
    Tell(player, NoticeColour, "There is more to read:");
    for (const Topic& topic : world.town->topics)
        Tell(player, ExitColour, "  help " + topic.word + ": " + topic.about);
}

void Help(World& world, Player& player, std::string_view word) {
    const auto topic = std::ranges::find(world.town->topics, Lower(word), &Topic::word);
    if (topic == world.town->topics.end())
        ListWords(world, player);
    else
        ShowTopic(player, *topic);
}

void Kill(World& world, Player& player, std::string_view target) {
    if (target.empty())
        Tell(player, ProseColour, "Whom would you fight? A rat, perhaps.");
    else
        Attack(world, player, target);
}

void RunAway(World& world, Player& player, std::string_view) { Flee(world, player); }

void Score(World&, Player& player, std::string_view) {
    Tell(player, NoticeColour,
         player.name + ": " + std::to_string(player.life) + " of " + std::to_string(MaxLife) +
             " life, fights won " + std::to_string(player.kills) + '.');
    Tell(player, HungerColour, IsHungry(player) ? "You are hungry." : "You are well fed.");
}

void Ring(World& world, Player& player, std::string_view thing) {
    const bool isBell = thing.empty() || Lower(LastWord(thing)) == "bell";
    if (!RoomAt(world, player.room).bell || !isBell)
        Tell(player, ProseColour, "There is no such thing to ring here.");
    else
        RingBell(world, player);
}

void Sounds(World& world, Player& player, std::string_view) { ShowSounds(world, player); }

void AskForSilence(World&, Player& player, std::string_view) { Hush(player); }

void Quit(World& world, Player& player, std::string_view) {
    Tell(player, NoticeColour, "Good-bye, " + player.name + ". The geese will remember you.");
    Leave(world, player, "takes the road out of town.");
}

constexpr Command kCommands[] = {
    {"look", "l", Look, R"(see the room again; "look hat" looks at one thing)"},
    {"map", "", ShowMap, "see how the town lies"},
    {"say", "", Say, "speak to everyone in the room"},
    {"tell", "", TellTo, R"("tell ada hello" reaches Ada wherever she is)"},
    {"emote", "", Emote, R"("emote yawns" lets the room see you do it)"},
    {"who", "", Who, "see who else is about, and where"},
    {"get", "take", Get, R"("get bread" where some lies ready)"},
    {"drop", "", Drop, "leave a thing behind"},
    {"wear", "", Wear, R"("wear hat": some things keep a bite off)"},
    {"remove", "", TakeOff, "take off what you wear"},
    {"eat", "", Eat, R"("eat bread" stills the hunger and heals a little)"},
    {"inventory", "i", ShowCarried, "see what you carry"},
    {"kill", "attack", Kill, R"("kill rat" begins a fight, walking away ends it)"},
    {"flee", "", RunAway, "run from a fight, wherever the feet go"},
    {"score", "sc", Score, "see how you are"},
    {"ring", "", Ring, R"("ring bell" where one hangs)"},
    {"colours", "colors", ShowColours, "see every colour that your client knows"},
    {"sounds", "", Sounds, "have your client play all that there is to hear"},
    {"hush", "", AskForSilence, "stop what your client plays"},
    {"options", "", ShowOptions, "see what your client and the world agreed on"},
    {"probe", "", AskForName, "have your client asked for its name, by a colour sequence"},
    {"flood", "", BeginFlood, R"("flood 100" sends a hundred kilobytes of text at once)"},
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
    if (!command.empty() && !TakeProbeAnswer(player, command))
        RunCommand(world, player, command);
}

} // namespace world
