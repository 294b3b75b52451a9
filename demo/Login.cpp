#include "Login.h"

#include "World.h"

#include <algorithm>
#include <string>

namespace world {
namespace {

// "ada" and "ADA" are Ada. Empty when it is no name.
std::string ProperName(std::string_view line) {
    std::string name = Lower(Clean(line));
    const bool letters = std::ranges::all_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
    if (!letters || name.size() < 2 || name.size() > 16)
        return {};
    name[0] = static_cast<char>(name[0] - 'a' + 'A');
    return name;
}

bool HasPlaceFor(const World& world, const std::string& name) {
    return world.passwords.contains(name) || world.passwords.size() < MaxNames;
}

void RefuseName(Player& player) {
    Tell(player, NoticeColour, "The book at the gate is full. Only names already in it may pass.");
    player.stage = Stage::Name;
}

void TakeName(World& world, Player& player, std::string_view line) {
    if (Clean(line).empty())
        return;
    const std::string name = ProperName(line);
    if (name.empty()) {
        Tell(player, NoticeColour, "A name here is two to sixteen letters and nothing else.");
        return;
    }
    if (!HasPlaceFor(world, name)) {
        RefuseName(player);
        return;
    }
    player.name = name;
    player.stage = Stage::Password;
    if (world.passwords.contains(name))
        Tell(player, NoticeColour, "The book knows you, " + name + ". So does the porter, nearly.");
    else
        Tell(player, NoticeColour,
             "A new name. Choose a password; it is good until the world stops.");
}

void RefusePassword(Player& player) {
    if (++player.wrongTries < MaxWrongTries) {
        Tell(player, NoticeColour, "That is not the word.");
        return;
    }
    Tell(player, NoticeColour, "Three wrong words. The gate stays shut.");
    player.stage = Stage::Gone;
}

// The older connection of the same player gives way, so that a lost one never locks its owner out.
void TakeOver(World& world, const std::string& name) {
    Player* older = FindPlaying(world, name);
    if (!older)
        return;
    Tell(*older, NoticeColour, "You have come in by another door. This one closes.");
    Leave(world, *older, "flickers and is gone.");
}

void TakePassword(World& world, Player& player, std::string_view line) {
    if (line.empty()) {
        Tell(player, NoticeColour, "An empty word opens nothing.");
        return;
    }
    if (!HasPlaceFor(world, player.name)) {
        RefuseName(player);
        return;
    }
    const auto [entry, isNew] = world.passwords.try_emplace(player.name, line);
    if (entry->second != line) {
        RefusePassword(player);
        return;
    }
    TakeOver(world, player.name);
    Tell(player, NoticeColour,
         "Welcome to Quillmere, " + player.name + R"(. The word "help" lists the others.)");
    Enter(world, player);
}

} // namespace

void Greet(Player& player) {
    Tell(player, TitleColour, "Q U I L L M E R E");
    Tell(player, ProseColour, "A town of scribes beside a large and patient water.");
}

void HandleLogin(World& world, Player& player, std::string_view line) {
    if (player.stage == Stage::Name)
        TakeName(world, player, line);
    else if (player.stage == Stage::Password)
        TakePassword(world, player, line);
}

} // namespace world
