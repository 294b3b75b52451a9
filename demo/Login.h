// The gate: a name, then its password.
//
// The first use of a name sets its password, in the book. Whoever gives the right one for a name
// already in the world takes that player's place.
#pragma once

#include <string_view>

namespace world {

struct Player;
struct World;

inline constexpr int MaxWrongTries = 3;

// The first words to a new connection.
void Greet(const World& world, Player& player);

// Whether the line is a password, which takes the time of a hash (Book.h).
bool IsPasswordTry(const Player& player, std::string_view line);

// One line of a player who is not in the world yet: the name or the password, by Player::stage.
// Three wrong passwords make the player Gone.
void HandleLogin(World& world, Player& player, std::string_view line);

} // namespace world
