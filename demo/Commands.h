// What a line that a player types does.
//
// The server hands over each line as it came. One table holds the words; help reads the same rows.
#pragma once

#include <string_view>

namespace world {

struct Player;
struct World;

// Carries out one line: at the gate a name or password, in the world a command. An empty command
// only brings the prompt again; a player who is gone is not heard.
void HandleLine(World& world, Player& player, std::string_view line);

} // namespace world
