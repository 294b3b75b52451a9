// Sounds that tests make: wave and MIDI files.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace sounds {

constexpr double kPi = 3.14159265358979323846;
constexpr int kRate = 44100;
constexpr int kLoud = 16000; // amplitude of a tone at full volume

inline std::string LittleEndian(std::uint32_t number, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, number >>= 8)
        text += static_cast<char>(number & 0xff);
    return text;
}

inline std::string BigEndian(std::uint32_t number, int bytes) {
    const std::string text = LittleEndian(number, bytes);
    return {text.rbegin(), text.rend()};
}

struct WaveFormat {
    std::uint32_t Tag = 1; // plain samples
    std::uint32_t Channels = 1;
    std::uint32_t Rate = kRate;
    std::uint32_t Bits = 16;
};

inline std::string RiffChunk(const std::string& name, const std::string& content) {
    return name + LittleEndian(static_cast<std::uint32_t>(content.size()), 4) + content;
}

// A wave file of these bytes of samples.
inline std::string Wave(const std::string& samples, const WaveFormat& format = {}) {
    const std::uint32_t frame = format.Channels * format.Bits / 8;
    const std::string chunks =
        "WAVE" +
        RiffChunk("fmt ", LittleEndian(format.Tag, 2) + LittleEndian(format.Channels, 2) +
                              LittleEndian(format.Rate, 4) + LittleEndian(format.Rate * frame, 4) +
                              LittleEndian(frame, 2) + LittleEndian(format.Bits, 2)) +
        RiffChunk("data", samples);
    return RiffChunk("RIFF", chunks);
}

// A wave file of a plain tone.
inline std::string Tone(double hertz, double seconds, const WaveFormat& format = {}) {
    std::string samples;
    const auto frames = static_cast<int>(seconds * format.Rate);
    for (int i = 0; i < frames; ++i) {
        const double value = kLoud * std::sin(2 * kPi * hertz * i / format.Rate);
        const std::string sample =
            format.Bits == 8
                ? LittleEndian(static_cast<std::uint32_t>(128 + std::lround(value / 256)), 1)
                : LittleEndian(static_cast<std::uint32_t>(std::lround(value)), 2);
        for (std::uint32_t channel = 0; channel < format.Channels; ++channel)
            samples += sample;
    }
    return Wave(samples, format);
}

// A MIDI file of one held note of a flute.
inline std::string Tune(int key, double seconds) {
    constexpr std::uint32_t kTicks = 480; // a quarter, half a second
    constexpr char kFlute = 73;
    const auto ticks = static_cast<std::uint32_t>(seconds * 2 * kTicks);
    const std::string delta{static_cast<char>(0x80 | ticks >> 7), static_cast<char>(ticks & 0x7f)};
    const char note = static_cast<char>(key);
    const std::string events = std::string("\0\xC0", 2) + kFlute + std::string("\0\x90", 2) + note +
                               '\x7F' + delta + '\x80' + note + '\x40' +
                               std::string("\0\xFF\x2F\0", 4);
    return "MThd" + BigEndian(6, 4) + BigEndian(0, 2) + BigEndian(1, 2) + BigEndian(kTicks, 2) +
           "MTrk" + BigEndian(static_cast<std::uint32_t>(events.size()), 4) + events;
}

} // namespace sounds
