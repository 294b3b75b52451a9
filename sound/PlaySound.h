// Playing what sound triggers ask for, and fetching what is missing.
//
// Sounds lie in the folder "sounds" of the current game. The switches of its entry in the mud list
// govern everything, in the way that each function tells.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>

namespace mw {

// The queues, as the lists of the hidden sound window: waiting waves and their volumes in the same
// order, waiting music, and a list that nothing uses.
inline std::deque<std::filesystem::path> cboWavPlayer;
inline std::deque<std::string> cboWavVolume;
inline std::deque<std::filesystem::path> cboMidiPlayer;
inline std::deque<std::string> cboMidiVolume;

inline constexpr std::size_t kMostWaitingWaves = 256;

// A game whose sounds folder holds as much gets no more: a server can name files without end.
inline constexpr std::size_t kMostSounds = 1000;
inline constexpr std::uintmax_t kLargestSounds = 512 * 1024 * 1024; // bytes of all together

inline std::int16_t PlayingPriority = 0; // meant: stays 0, whatever plays
inline std::string LastRequestedDownload;
inline std::filesystem::path FullFolder; // of sounds, found last; it is not looked into again

// Plays a wave sound of the current game, or queues it behind the one that plays. Does nothing when
// the game's waves are switched off. A file that is not there is fetched from address, when there
// is one and the game's downloads are on, and not played this time. fileName is a name below the
// game's sounds; one that leads elsewhere is neither played nor fetched. volume (percent) is 100
// when it is 0, priority 50. Raises Subscript out of range without a current game.
void PlayWave(const std::string& fileName, const std::string& address, std::int32_t volume,
              std::int16_t priority);

// The same for music, which is dropped instead of queued. Meant: the switch of the waves governs
// it.
void PlayMusic(const std::string& fileName, const std::string& address, std::int32_t volume,
               std::int16_t priority);

// Plays the first wave that waits, when none plays. Stops its own timer when none waits.
void wavTimer_Timer();

// Meant: takes from the queue of music and plays what stands in the queue of waves. Nothing ever
// fills the queue of music.
void midiTimer_Timer();

// Starts a download into the current game's sounds, under the name that follows the last "/"; the
// first deletes there what a client that was killed has left of its own. Not done when that name or
// the game's can't be one of ours, or another client has the application folder; nor, with a
// notice, when the game has too many sounds or too many downloads are under way. Raises Subscript
// out of range without a current game.
void FetchSound(const std::string& address);

// http or https, with a host and something behind it.
bool IsWebAddress(const std::string& address);

// The state at program start. Used by tests.
void ResetPlaySound();

} // namespace mw
