// Talk: what one player lets others read.
#pragma once

#include <string_view>

namespace world {

struct Player;
struct World;

// What the commands of these names do. The words have no control characters (Text.h, Clean).
void Say(World& world, Player& player, std::string_view words);
void TellTo(World& world, Player& player, std::string_view nameAndWords);
void Emote(World& world, Player& player, std::string_view deed);
void Who(World& world, Player& player, std::string_view);

} // namespace world
