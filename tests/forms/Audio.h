// Listening to what the client has played: the mixer's "disk" driver writes it to a file, in 16-bit
// stereo at 44,100 Hz.
#pragma once

#include "support/SoundFiles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace forms {

using sounds::kPi;
using sounds::kRate;

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
