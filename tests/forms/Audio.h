// Sounds that tests make, and listening to what the client has played: the mixer's "disk" driver
// writes it to a file, in 16-bit stereo at 44,100 Hz.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace forms {

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

// What was heard between two silences.
struct Sounding {
    double Seconds = 0;
    double Loudness = 0; // root of the mean square
    double Hertz = 0;    // by its crossings of zero
};

class Recording {
public:
    explicit Recording(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) {
            Left.push_back(Sample(bytes, at));
            Right.push_back(Sample(bytes, at + 2));
        }
    }

    bool IsSilent() const { return Soundings().empty(); }

    std::vector<Sounding> Soundings() const {
        constexpr std::size_t kGap = 220; // frames, five milliseconds
        std::vector<Sounding> found;
        std::size_t begin = 0;
        std::size_t end = 0; // behind the last frame that was heard
        for (std::size_t i = 0; i <= Left.size(); ++i) {
            const bool isHeard = i < Left.size() && IsHeard(Left[i]);
            if (end > begin && (i == Left.size() || (isHeard && i - end > kGap)))
                found.push_back(Describe(begin, end));
            if (isHeard && (end == 0 || i - end > kGap))
                begin = i;
            if (isHeard)
                end = i + 1;
        }
        return found;
    }

    // How loud that pitch is in all that was heard.
    double Strength(double hertz) const {
        double real = 0;
        double imaginary = 0;
        for (std::size_t i = 0; i < Left.size(); ++i) {
            const double angle = 2 * kPi * hertz * static_cast<double>(i) / kRate;
            real += Left[i] * std::cos(angle);
            imaginary += Left[i] * std::sin(angle);
        }
        return std::hypot(real, imaginary);
    }

    // Of a stretch that begins where the sound does.
    double LoudnessAtFirst(double seconds) const {
        const auto begin = static_cast<std::size_t>(
            std::find_if(Left.begin(), Left.end(), IsHeard) - Left.begin());
        const std::size_t end =
            std::min(Left.size(), begin + static_cast<std::size_t>(seconds * kRate));
        return begin < end ? Describe(begin, end).Loudness : 0;
    }

    // A stretch that ends where the sound does. What comes right before it is not in it: on a busy
    // machine the silence between two sounds may not have been written.
    Sounding AtLast(double seconds) const {
        const auto end = static_cast<std::size_t>(
            Left.rend() - std::find_if(Left.rbegin(), Left.rend(), IsHeard));
        const std::size_t length = std::min(end, static_cast<std::size_t>(seconds * kRate));
        return length > 0 ? Describe(end - length, end) : Sounding();
    }

    double Seconds() const { return static_cast<double>(Left.size()) / kRate; }

    std::vector<int> Left;
    std::vector<int> Right;

private:
    static bool IsHeard(int sample) {
        constexpr int kFaint = 40;
        return std::abs(sample) > kFaint;
    }

    static int Sample(const std::string& bytes, std::size_t at) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::int16_t>(high << 8 | low);
    }

    Sounding Describe(std::size_t begin, std::size_t end) const {
        double squares = 0;
        int crossings = 0;
        for (std::size_t i = begin; i < end; ++i) {
            squares += static_cast<double>(Left[i]) * Left[i];
            crossings += i > begin && (Left[i] > 0) != (Left[i - 1] > 0);
        }
        const auto frames = static_cast<double>(end - begin);
        return {frames / kRate, std::sqrt(squares / frames), crossings / 2.0 * kRate / frames};
    }
};

} // namespace forms
