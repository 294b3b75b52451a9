// The media players of the hidden sound window, and its timers. None of the calls waits for a sound
// to end, and none nests.
#pragma once

#include <cstdint>
#include <filesystem>

namespace mw {

enum class PlayState : std::int16_t { Stopped = 1, Playing = 3 };

namespace wavPlayer {
PlayState State();
void SetURL(const std::filesystem::path& file);
void SetVolume(std::int32_t percent); // 0 to 100
void Play();                          // a file that can't be played counts as stopped
void Stop();
} // namespace wavPlayer

namespace midiPlayer {
PlayState State();
void SetFileName(const std::filesystem::path& file);
void SetVolume(std::int32_t hundredths); // of a decibel: 0 is full, -10000 silent
void Play();
void Stop();
} // namespace midiPlayer

// A timer that is on calls its handler (wavTimer_Timer, midiTimer_Timer of sound/PlaySound.h) every
// 250 milliseconds.
enum class SoundTimer { wavTimer, midiTimer };
void SetEnabled(SoundTimer timer, bool enabled);

} // namespace mw
