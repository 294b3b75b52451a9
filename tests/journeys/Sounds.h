// The sounds of the game that a client is connected to at 127.0.0.1: their options by the keys, the
// files that were fetched, and what is heard.
#pragma once

#include "Client.h"
#include "Files.h"

#include <string>
#include <vector>

namespace journey {

inline constexpr const char* kDownload = "^Download$"; // the title of its window
inline constexpr Colour kBarColour{48, 140, 198};      // of how far it is

// The boxes of the options from the top down.
enum SoundOption { EnableMsp, AllowWaves, AllowMusic, AllowDownload };

// Configuration, Sound.
void OpenSoundOptions(const Client& player);
void CloseSoundOptions(const Client& player);

// Sets or clears the boxes, from the top down, in the options just opened.
void Toggle(const Client& player, const std::vector<SoundOption>& options);

// The options are opened, these are set or cleared, and they are closed.
void ChangeSoundOptions(const Client& player, const std::vector<SoundOption>& options);

// The files in the game's sound folder, half ones included.
FileTexts SoundsOf(const Client& player);

// Waits until the file is there whole and no download goes on.
void WaitForSound(const Client& player, const std::string& name);

void WaitToHear(const Client& player);

// True when nothing has been played at all.
bool IsSilent(const Client& player);

} // namespace journey
