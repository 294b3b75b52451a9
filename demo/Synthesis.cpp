#include "Synthesis.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

namespace world {
namespace {

using Samples = std::vector<double>;

constexpr double kFade = 0.01; // seconds, at either end

std::size_t CountOf(double seconds) { return static_cast<std::size_t>(seconds * WaveRate); }

double SecondsOf(std::size_t sample) { return static_cast<double>(sample) / WaveRate; }

// From -1 to 1, all equally likely. The standard fixes the engine's numbers, not a distribution's.
struct Noise {
    std::mt19937 engine;

    double Next() {
        constexpr double half = static_cast<double>(std::mt19937::max()) / 2;
        return static_cast<double>(engine()) / half - 1;
    }
};

// Follows its input the more slowly the smaller its share of each step.
struct LowPass {
    double share;
    double level = 0;

    double Next(double input) {
        level += share * (input - level);
        return level;
    }
};

// A sine that dies away: the height of a point that turns round the middle and draws nearer to it.
// A few products a sample are cheaper than a sine and a power.
class Swing {
public:
    Swing(double tone, double decay) {
        const double shrink = std::exp(-1 / (decay * WaveRate));
        const double angle = 2 * std::numbers::pi * tone / WaveRate;
        across = shrink * std::cos(angle);
        along = shrink * std::sin(angle);
    }

    double Next() {
        const double height = y;
        y = across * y + along * x;
        x = across * x - along * height;
        return height;
    }

private:
    double across = 0;
    double along = 0;
    double x = 1;
    double y = 0;
};

void FadeEnds(Samples& samples) {
    const std::size_t length = CountOf(kFade);
    for (std::size_t i = 0; i < length; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(length);
        samples[i] *= share;
        samples[samples.size() - 1 - i] *= share;
    }
}

void Normalise(Samples& samples) {
    double loudest = 0;
    for (const double sample : samples)
        loudest = std::max(loudest, std::abs(sample));
    for (double& sample : samples)
        sample *= WavePeak / loudest;
}

// A wave file has its low bytes first, a MIDI file its high ones.
void AppendLittle(std::string& file, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        file += static_cast<char>(value >> (8 * i) & 0xff);
}

void AppendBig(std::string& file, std::uint32_t value, int bytes) {
    for (int i = bytes - 1; i >= 0; --i)
        file += static_cast<char>(value >> (8 * i) & 0xff);
}

std::string WaveHead(std::uint32_t dataSize) {
    constexpr std::uint32_t sampleSize = 2;
    std::string head = "RIFF";
    AppendLittle(head, 36 + dataSize, 4); // all that follows this number
    head += "WAVEfmt ";
    AppendLittle(head, 16, 4); // bytes of the format
    AppendLittle(head, 1, 2);  // uncompressed
    AppendLittle(head, 1, 2);  // one channel
    AppendLittle(head, WaveRate, 4);
    AppendLittle(head, WaveRate * sampleSize, 4);
    AppendLittle(head, sampleSize, 2);
    AppendLittle(head, 8 * sampleSize, 2);
    head += "data";
    AppendLittle(head, dataSize, 4);
    return head;
}

std::string WaveFile(Samples samples) {
    FadeEnds(samples);
    Normalise(samples);
    std::string file = WaveHead(static_cast<std::uint32_t>(2 * samples.size()));
    for (const double sample : samples)
        AppendLittle(file, static_cast<std::uint32_t>(std::lround(sample)), 2);
    return file;
}

struct Clap {
    double begin; // seconds
    double strength;
    double decay; // seconds to a third of it
};

constexpr Clap kClaps[] = {{0.0, 1.0, 0.35}, {0.4, 0.7, 0.5}, {1.0, 0.5, 0.6}, {1.6, 0.3, 0.5}};

double ThunderAt(double seconds) {
    double strength = 0;
    for (const Clap& clap : kClaps) {
        const double since = seconds - clap.begin;
        if (since >= 0)
            strength +=
                clap.strength * (1 - std::exp(-since / 0.03)) * std::exp(-since / clap.decay);
    }
    return strength;
}

struct Partial {
    double ratio; // to the tone that the ear takes for the bell's
    double loudness;
    double decay; // seconds to a third of it
};

// A bell's are no whole multiples: a minor third stands among them.
constexpr Partial kPartials[] = {
    {0.5, 0.5, 1.3},  {1.0, 1.0, 0.9},  {1.2, 0.7, 0.7},  {1.5, 0.3, 0.5},
    {2.0, 0.8, 0.45}, {2.67, 0.3, 0.3}, {3.01, 0.2, 0.2}, {4.1, 0.2, 0.12},
};
constexpr double kBellTone = 622.0; // vibrations a second

constexpr std::uint32_t kTicksOfAnEighth = 48;
constexpr std::uint32_t kTicksOfABar = 6 * kTicksOfAnEighth;
constexpr std::uint32_t kGap = 4; // ticks between a note and the next

struct Note {
    std::uint32_t begin; // ticks
    std::uint32_t end;
    std::uint8_t key; // 60 is the C in the middle
    std::uint8_t velocity;
};

struct Tone {
    std::uint8_t key;
    std::uint32_t eighths;
};

// A bar a line.
constexpr Tone kMelody[] = {
    {69, 2}, {72, 2}, {71, 1}, {69, 1}, //
    {64, 4}, {67, 2},                   //
    {65, 2}, {69, 2}, {67, 1}, {65, 1}, //
    {64, 6},                            //
    {69, 2}, {72, 2}, {74, 1}, {72, 1}, //
    {71, 2}, {67, 2}, {64, 2},          //
    {65, 1}, {67, 1}, {71, 2}, {68, 2}, //
    {69, 6},
};

// The left hand: one key on each beat of a bar.
constexpr std::uint8_t kBass[][3] = {
    {45, 52, 57}, {48, 52, 55}, {50, 53, 57}, {40, 52, 56},
    {41, 53, 57}, {43, 55, 59}, {40, 52, 56}, {45, 52, 57},
};

std::vector<Note> Notes() {
    std::vector<Note> notes;
    std::uint32_t tick = 0;
    for (const Tone& tone : kMelody) {
        const std::uint32_t end = tick + tone.eighths * kTicksOfAnEighth;
        notes.push_back({tick, end - kGap, tone.key, 88});
        tick = end;
    }
    tick = 0;
    for (const auto& bar : kBass) {
        for (const std::uint8_t key : bar) {
            notes.push_back({tick, tick + 2 * kTicksOfAnEighth - kGap, key, 60});
            tick += 2 * kTicksOfAnEighth;
        }
    }
    return notes;
}

struct Event {
    std::uint32_t tick;
    std::uint8_t key;
    std::uint8_t velocity; // 0: the key is let go
};

std::vector<Event> Events() {
    std::vector<Event> events;
    for (const Note& note : Notes()) {
        events.push_back({note.begin, note.key, note.velocity});
        events.push_back({note.end, note.key, 0});
    }
    std::ranges::stable_sort(events, {}, &Event::tick);
    return events;
}

// Seven bits a byte, all bytes but the last with the high bit. Two are enough for 56 bars.
void AppendDelta(std::string& track, std::uint32_t ticks) {
    if (ticks >= 128)
        track += static_cast<char>(0x80 | ticks >> 7);
    track += static_cast<char>(ticks & 0x7f);
}

std::string Track() {
    using namespace std::string_view_literals;
    std::string track;
    track += "\0\xff\x58\4\3\2\x18\x08"sv; // three quarters in a bar
    track += "\0\xff\x51\3"sv;
    AppendBig(track, 600000, 3); // microseconds of a quarter
    track += "\0\xc0\0"sv;       // a grand piano
    std::uint32_t tick = 0;
    for (const Event& event : Events()) {
        AppendDelta(track, event.tick - tick);
        track += event.velocity > 0 ? '\x90' : '\x80';
        track += static_cast<char>(event.key);
        track += static_cast<char>(event.velocity);
        tick = event.tick;
    }
    AppendDelta(track, kTicksOfABar); // the last chord may ring
    track += "\xff\x2f\0"sv;
    return track;
}

} // namespace

std::string RainWave() {
    constexpr double dropsASecond = 90;
    Noise noise{std::mt19937(11)};
    LowPass low{0.12};
    LowPass high{0.45};
    double drop = 0;
    Samples samples(CountOf(3.0));
    for (double& sample : samples) {
        const double white = noise.Next();
        const double chance = noise.Next();
        if (chance > 1 - 2 * dropsASecond / WaveRate)
            drop = 1.5 * white;
        drop *= 0.8;
        sample = high.Next(white - low.Next(white) + drop);
    }
    return WaveFile(std::move(samples));
}

std::string ThunderWave() {
    constexpr double length = 3.0;
    Noise noise{std::mt19937(7)};
    LowPass first{0.05};
    LowPass second{0.02};
    Samples samples(CountOf(length));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double rumble = first.Next(noise.Next());
        const double seconds = SecondsOf(i);
        const double crack = 0.3 * std::exp(-seconds / 0.12);
        samples[i] =
            (second.Next(rumble) + crack * rumble) * ThunderAt(seconds) * (1 - seconds / length);
    }
    return WaveFile(std::move(samples));
}

std::string BellWave() {
    constexpr double length = 2.5;
    Samples samples(CountOf(length));
    for (const Partial& partial : kPartials) {
        Swing swing(kBellTone * partial.ratio, partial.decay);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] += partial.loudness * swing.Next() * (1 - SecondsOf(i) / length);
    }
    return WaveFile(std::move(samples));
}

std::string TuneMidi() {
    const std::string track = Track();
    std::string file = "MThd";
    AppendBig(file, 6, 4);                    // bytes of the head
    AppendBig(file, 0, 2);                    // one track that holds all
    AppendBig(file, 1, 2);                    // tracks
    AppendBig(file, 2 * kTicksOfAnEighth, 2); // ticks of a quarter
    file += "MTrk";
    AppendBig(file, static_cast<std::uint32_t>(track.size()), 4);
    return file + track;
}

} // namespace world
