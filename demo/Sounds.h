// The sounds that the world has to offer, and the lines that ask a client to play them.
//
// Such a line, a trigger, is of the MUD Sound Protocol. It stands alone on its line and begins it,
// without a colour before it: elsewhere a client takes it for text. A line of text always comes
// before it, because the client swallows the line break behind a trigger and would show a second
// one that follows at once.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace world {

struct Player;
struct World;

inline constexpr std::string_view SoundPath = "/sounds/"; // of the web pages; the files lie below

enum class Sound : std::uint8_t { Rain, Thunder, Bell, Tune };

// The client takes the capitals V, L, P, T and U for the beginning of a parameter wherever they
// stand, so a file's name has none.
struct SoundFile {
    Sound sound;
    std::string_view name;
    std::string_view type; // as the web names it
    std::string_view word; // that begins its trigger
    std::string (*make)();
};

std::span<const SoundFile> SoundFiles();

// How a sound is asked for. What is 0 is left out.
struct Cue {
    Sound sound;
    int volume = 0;   // percent
    int priority = 0; // of 100
    bool hasAddress = true;
};

// The line that asks for a sound, with its end. Without a root, which is the address of all sounds
// up to their names, no trigger has an address.
std::string Trigger(const Cue& cue, std::string_view root);

// Adds a line to what the player will read, and what the player will hear with it when the client
// takes sounds.
void TellWithSound(const World& world, Player& player, std::string_view colour,
                   std::string_view text, const Cue& cue);

// What it is about, and every form of a trigger.
void ShowSounds(const World& world, Player& player);

// Stops what the client plays, by the words that do so wherever they stand in the text.
void Hush(Player& player);

// The lines of one message without the waves that a client would take for music: it does so when
// ".mid" stands anywhere behind their trigger, be it in the trigger of a tune or in speech.
std::string WithoutMistakableWaves(std::string lines);

} // namespace world
