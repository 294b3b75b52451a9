#include "sound/WaveFile.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace mw {
namespace {

constexpr std::uint64_t kRate = 44100;
constexpr std::uint64_t kFrameBytes = 4;
constexpr std::uint64_t kLowestRate = 1000;
constexpr std::uint64_t kMostChannels = 8;
constexpr std::uint64_t kFewestBits = 4; // of compressed samples
constexpr std::uint64_t kMostBits = 64;

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint64_t number = 0;
    for (std::size_t i = width; i > 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
    return number;
}

struct Format {
    std::uint64_t Channels = 0;
    std::uint64_t Rate = 0;
    std::uint64_t Bits = 0; // of a sample
};

Format ReadFormat(std::string_view chunk) {
    if (chunk.size() < 16)
        return {};
    return {Number(chunk, 2, 2), Number(chunk, 4, 4), Number(chunk, 14, 2)};
}

bool Fits(const Format& format, std::uint64_t dataSize) {
    if (format.Channels == 0 || format.Channels > kMostChannels || format.Rate < kLowestRate ||
        format.Bits < kFewestBits || format.Bits > kMostBits)
        return false;
    const std::uint64_t frames = dataSize * 8 / (format.Bits * format.Channels);
    return frames * kFrameBytes * kRate / format.Rate <= kLargestDecoded;
}

} // namespace

bool IsPlayableWave(std::string_view head, std::uint64_t fileSize) {
    constexpr std::size_t kChunkHeader = 8;
    if (head.size() < 12 || head.substr(0, 4) != "RIFF" || head.substr(8, 4) != "WAVE")
        return false;
    std::optional<Format> format;
    for (std::size_t at = 12; at + kChunkHeader <= head.size();) {
        const std::string_view name = head.substr(at, 4);
        const std::uint64_t size = Number(head, at + 4, 4);
        at += kChunkHeader;
        if (name == "fmt " && format)
            return false; // which of two a player takes is its own affair
        if (name == "fmt ")
            format = ReadFormat(head.substr(at, size));
        else if (name == "data")
            return format && Fits(*format, std::min(size, fileSize));
        at += size + size % 2;
    }
    return false;
}

} // namespace mw
