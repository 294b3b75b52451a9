// The sounds of the world, made of numbers: three wave files and a tune, each a whole file in
// memory.
//
// Pure functions without input: the noise comes from a generator with a fixed seed, so each call
// gives the same bytes. A wave is RIFF WAVE with 16-bit mono samples; its loudest sample is
// WavePeak and both its ends are faded to silence, so that nothing clicks.
#pragma once

#include <cstddef>
#include <string>

namespace world {

inline constexpr int WaveRate = 22050;                 // samples a second
inline constexpr int WavePeak = 26214;                 // four fifths of full scale
inline constexpr std::size_t LargestWave = 150 * 1024; // bytes, so that a fetch is soon over

std::string RainWave();    // steady, with single drops in front
std::string ThunderWave(); // a clap and its echoes, dying away
std::string BellWave();    // one stroke

// Eight bars of a slow waltz for piano, as a Standard MIDI File of format 0.
std::string TuneMidi();

} // namespace world
