// Text, triggers and tables like a player's, made the same at every run.
#pragma once

#include "automation/Macros.h"
#include "config/MudList.h"

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

enum class Dress { Plain, Coloured }; // coloured: each line begins with a colour sequence

// size characters, or little more, of lines of about 90 characters.
std::string Text(std::size_t size, Dress dress);

// Text cut into arrivals of a usual size.
std::vector<std::string> Arrivals(std::size_t size, Dress dress);

// Lines of text, each with its LF.
std::vector<std::string> Lines(std::size_t count);

// Triggers whose texts begin as the lines do and are never in one.
std::vector<mw::TriggerEntry> Triggers(std::size_t count);

// What a player has gathered in years: games, and sets full of triggers and aliases.
std::vector<mw::MudEntry> ManyGames();
std::vector<mw::MacroSet> ManySets();

} // namespace bench
