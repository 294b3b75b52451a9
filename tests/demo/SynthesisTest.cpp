#include "Synthesis.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace world {
namespace {

std::uint32_t Little(std::string_view file, std::size_t at, int bytes) {
    std::uint32_t value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = value << 8 | static_cast<std::uint8_t>(file[at + static_cast<std::size_t>(i)]);
    return value;
}

std::uint32_t Big(std::string_view file, std::size_t at, int bytes) {
    std::uint32_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value = value << 8 | static_cast<std::uint8_t>(file[at + static_cast<std::size_t>(i)]);
    return value;
}

std::vector<int> SamplesOf(std::string_view wave) {
    constexpr std::size_t kHead = 44; // bytes
    std::vector<int> samples;
    for (std::size_t at = kHead; at + 1 < wave.size(); at += 2)
        samples.push_back(static_cast<std::int16_t>(Little(wave, at, 2)));
    return samples;
}

struct WaveCase {
    const char* name;
    std::string (*make)();
    double leastSeconds;
    double mostSeconds;
};

void PrintTo(const WaveCase& row, std::ostream* out) { *out << row.name; }

class Waves : public ::testing::TestWithParam<WaveCase> {
protected:
    const std::string file = GetParam().make();
    const std::vector<int> samples = SamplesOf(file);
};

int Loudest(std::span<const int> samples) {
    int loudest = 0;
    for (const int sample : samples)
        loudest = std::max(loudest, std::abs(sample));
    return loudest;
}

double MeanSquare(std::span<const int> samples) {
    double sum = 0;
    for (const int sample : samples)
        sum += static_cast<double>(sample) * sample;
    return sum / static_cast<double>(samples.size());
}

INSTANTIATE_TEST_SUITE_P(All, Waves,
                         ::testing::Values(WaveCase{"Rain", RainWave, 2, 3},
                                           WaveCase{"Thunder", ThunderWave, 2, 3},
                                           WaveCase{"Bell", BellWave, 1, 3}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(Waves, BeginWithAHeadThatIsRightFieldByField) {
    ASSERT_GT(file.size(), 44U);
    const auto size = static_cast<std::uint32_t>(file.size());
    EXPECT_EQ(file.substr(0, 4), "RIFF");
    EXPECT_EQ(Little(file, 4, 4), size - 8);
    EXPECT_EQ(file.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(Little(file, 16, 4), 16U) << "bytes of the format";
    EXPECT_EQ(Little(file, 20, 2), 1U) << "uncompressed";
    EXPECT_EQ(Little(file, 22, 2), 1U) << "channels";
    EXPECT_EQ(Little(file, 24, 4), 22050U) << "samples a second";
    EXPECT_EQ(Little(file, 28, 4), 44100U) << "bytes a second";
    EXPECT_EQ(Little(file, 32, 2), 2U) << "bytes of a sample";
    EXPECT_EQ(Little(file, 34, 2), 16U) << "bits of a sample";
    EXPECT_EQ(file.substr(36, 4), "data");
    EXPECT_EQ(Little(file, 40, 4), size - 44);
}

TEST_P(Waves, LastAsLongAsTheyShouldInAFileThatIsSoonFetched) {
    const double seconds = static_cast<double>(samples.size()) / WaveRate;
    EXPECT_GE(seconds, GetParam().leastSeconds);
    EXPECT_LE(seconds, GetParam().mostSeconds);
    EXPECT_EQ(file.size() % 2, 0U);
    EXPECT_LE(file.size(), LargestWave);
}

TEST_P(Waves, AreAsLoudAsAgreedAndNeverAtFullScale) {
    EXPECT_EQ(Loudest(samples), WavePeak);
    EXPECT_LT(WavePeak, 32767);
}

TEST_P(Waves, AreSilentAtBothEndsAndGrowFromThereWithoutAJump) {
    EXPECT_EQ(samples.front(), 0);
    EXPECT_EQ(samples.back(), 0);
    const std::span all(samples);
    for (std::size_t count = 1; count <= 200; ++count) {
        const int most = WavePeak * static_cast<int>(count) / 220;
        EXPECT_LE(Loudest(all.first(count)), most) << count << " from the beginning";
        EXPECT_LE(Loudest(all.last(count)), most) << count << " from the end";
    }
}

TEST_P(Waves, AreTheSameEachTime) { EXPECT_TRUE(GetParam().make() == file); }

TEST_P(Waves, AreToBeHeardInTheirMiddle) {
    EXPECT_GT(MeanSquare(std::span(samples).subspan(samples.size() / 4, samples.size() / 4)),
              500.0 * 500.0);
}

TEST(WaveSounds, DifferFromEachOther) {
    EXPECT_EQ((std::set<std::string>{RainWave(), ThunderWave(), BellWave()}).size(), 3U);
}

// The mean loudness of each sixth of a wave.
std::vector<double> Course(const std::string& file) {
    const std::vector<int> samples = SamplesOf(file);
    std::vector<double> course;
    for (std::size_t part = 0; part < 6; ++part)
        course.push_back(std::sqrt(
            MeanSquare(std::span(samples).subspan(part * samples.size() / 6, samples.size() / 6))));
    return course;
}

TEST(WaveSounds, RainIsSteady) {
    const std::vector<double> course = Course(RainWave());
    const auto [least, most] = std::ranges::minmax(course);
    EXPECT_LT(most, 1.1 * least);
}

TEST(WaveSounds, ThunderAndTheBellDieAway) {
    for (const auto make : {ThunderWave, BellWave}) {
        const std::vector<double> course = Course(make());
        EXPECT_TRUE(std::ranges::is_sorted(course, std::greater{}));
        EXPECT_LT(20 * course.back(), course.front());
    }
}

struct MidiEvent {
    std::uint32_t tick = 0;
    std::uint8_t status = 0; // 255: about the piece, with its kind as the key
    std::uint8_t key = 0;
    std::uint8_t velocity = 0;
    std::string text;
};

// A track, taken apart without mercy: empty when a byte is not what it has to be.
class MidiReader {
public:
    explicit MidiReader(std::string_view bytes) : track(bytes) {}

    std::vector<MidiEvent> Read() {
        std::vector<MidiEvent> events;
        std::uint32_t tick = 0;
        while (isGood && at < track.size()) {
            tick += Number();
            events.push_back(Next());
            events.back().tick = tick;
        }
        return isGood ? events : std::vector<MidiEvent>{};
    }

private:
    std::uint8_t Byte() {
        isGood = isGood && at < track.size();
        return isGood ? static_cast<std::uint8_t>(track[at++]) : std::uint8_t{0};
    }

    std::uint8_t DataByte() {
        const std::uint8_t byte = Byte();
        isGood = isGood && byte < 128;
        return byte;
    }

    std::uint32_t Number() {
        std::uint32_t number = 0;
        for (int count = 0; count < 4; ++count) {
            const std::uint8_t byte = Byte();
            number = number << 7 | (byte & 0x7f);
            if (byte < 128)
                return number;
        }
        isGood = false;
        return 0;
    }

    MidiEvent Next() {
        MidiEvent event;
        event.status = Byte();
        if (event.status == 0xff) {
            event.key = DataByte();
            for (std::uint32_t left = Number(); left > 0 && isGood; --left)
                event.text += static_cast<char>(Byte());
        } else if (event.status == 0x80 || event.status == 0x90) {
            event.key = DataByte();
            event.velocity = DataByte();
        } else if (event.status == 0xc0) {
            event.key = DataByte();
        } else {
            isGood = false;
        }
        return event;
    }

    std::string_view track;
    std::size_t at = 0;
    bool isGood = true;
};

constexpr std::size_t kTrackBegin = 22;

std::vector<MidiEvent> TuneEvents() { return MidiReader(TuneMidi().substr(kTrackBegin)).Read(); }

TEST(Tune, BeginsWithTwoChunksWhoseLengthsAreRight) {
    const std::string file = TuneMidi();
    ASSERT_GT(file.size(), kTrackBegin);
    EXPECT_EQ(file.substr(0, 4), "MThd");
    EXPECT_EQ(Big(file, 4, 4), 6U);
    EXPECT_EQ(Big(file, 8, 2), 0U) << "format";
    EXPECT_EQ(Big(file, 10, 2), 1U) << "tracks";
    EXPECT_EQ(Big(file, 12, 2), 96U) << "ticks of a quarter";
    EXPECT_EQ(file.substr(14, 4), "MTrk");
    EXPECT_EQ(Big(file, 18, 4), file.size() - kTrackBegin);
}

TEST(Tune, EndsItsTrackOnceAndThere) {
    const std::vector<MidiEvent> events = TuneEvents();
    ASSERT_FALSE(events.empty());
    EXPECT_TRUE(TuneMidi().ends_with(std::string_view("\xff\x2f\0", 3)));
    EXPECT_EQ(std::ranges::count_if(
                  events,
                  [](const MidiEvent& event) { return event.status == 0xff && event.key == 0x2f; }),
              1);
}

TEST(Tune, SetsItsMeasureItsPaceAndAPianoBeforeTheFirstNote) {
    const std::vector<MidiEvent> events = TuneEvents();
    ASSERT_GT(events.size(), 4U);
    EXPECT_EQ(events[0].key, 0x58);
    EXPECT_EQ(events[0].text, "\x03\x02\x18\x08");
    EXPECT_EQ(events[1].key, 0x51);
    EXPECT_EQ(Big(events[1].text, 0, 3), 600000U);
    EXPECT_EQ(events[1].text.size(), 3U);
    EXPECT_EQ(events[2].status, 0xc0);
    EXPECT_LT(events[2].key, 8) << "the pianos";
    EXPECT_EQ(events[3].status, 0x90);
    EXPECT_EQ(events[3].tick, 0U);
}

TEST(Tune, LetsGoOfEveryKeyItPressesBeforeItPressesItAgain) {
    std::set<int> held;
    int pressed = 0;
    for (const MidiEvent& event : TuneEvents()) {
        if (event.status == 0x90) {
            EXPECT_TRUE(held.insert(event.key).second) << event.tick;
            EXPECT_GT(event.velocity, 0);
            EXPECT_TRUE(event.key >= 21 && event.key <= 108) << "a piano has no such key";
            ++pressed;
        } else if (event.status == 0x80) {
            EXPECT_EQ(held.erase(event.key), 1U) << event.tick;
        }
    }
    EXPECT_EQ(pressed, 23 + 8 * 3) << "the melody and three keys in each bar";
    EXPECT_TRUE(held.empty());
}

TEST(Tune, LastsEightBarsAndOneToFade) {
    const std::vector<MidiEvent> events = TuneEvents();
    ASSERT_GT(events.size(), 2U);
    constexpr std::uint32_t bar = 3 * 96;
    const MidiEvent& lastNote = events[events.size() - 2];
    EXPECT_GT(lastNote.tick, 8 * bar - 12);
    EXPECT_LT(lastNote.tick, 8 * bar);
    EXPECT_EQ(events.back().tick, lastNote.tick + bar);
}

TEST(Tune, IsTheSameEachTime) { EXPECT_TRUE(TuneMidi() == TuneMidi()); }

} // namespace
} // namespace world
