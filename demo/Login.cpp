#include "Login.h"

#include "World.h"

#include <string>

namespace world {
namespace {

bool HasPlaceFor(const World& world, const std::string& name) {
    return world.book.contains(name) || world.book.size() < MaxNames;
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
    if (world.book.contains(name)) {
        Tell(player, NoticeColour, "The book knows you, " + name + ". So does the porter, nearly.");
        return;
    }
    Tell(player, NoticeColour, "A new name. Choose a password, and the book will know you.");
    Tell(player, NoticeColour, "Clients may show it as you type: take one you use nowhere else.");
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
    const auto account = world.book.find(player.name);
    if (account == world.book.end()) {
        world.book[player.name] = NewAccount(line, world.hashRounds);
        world.isBookChanged = true;
    } else if (!IsPassword(account->second, line)) {
        RefusePassword(player);
        return;
    }
    TakeOver(world, player.name);
    Tell(player, NoticeColour, "Welcome to Quillmere, " + player.name + '.');
    for (const std::string& words : LinesOf(*world.town, "welcome"))
        Tell(player, NoticeColour, words);
    Enter(world, player);
}

} // namespace

void Greet(const World& world, Player& player) {
    Tell(player, TitleColour, "Q U I L L M E R E");
    for (const std::string& line : LinesOf(*world.town, "greeting"))
        Tell(player, ProseColour, line);
}

bool IsPasswordTry(const Player& player, std::string_view line) {
    return player.stage == Stage::Password && !line.empty();
}

void HandleLogin(World& world, Player& player, std::string_view line) {
    if (player.stage == Stage::Name)
        TakeName(world, player, line);
    else if (player.stage == Stage::Password)
        TakePassword(world, player, line);
}

} // namespace world
