// A look at a wave file before a player decodes it whole into memory.
//
// The format is RIFF WAVE: "RIFF", size, "WAVE", then chunks of a four-letter name, a 32-bit size
// in little-endian order, and that many bytes, padded to an even number.
#pragma once

#include <cstdint>
#include <string_view>

namespace mw {

inline constexpr std::uint64_t kLargestDecoded = 64 * 1024 * 1024; // bytes; six minutes

// True when head, the beginning of a file of fileSize bytes, is that of a wave sound whose samples
// take no more than kLargestDecoded as 16-bit stereo at 44,100 Hz.
bool IsPlayableWave(std::string_view head, std::uint64_t fileSize);

} // namespace mw
