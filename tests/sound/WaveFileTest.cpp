#include "sound/WaveFile.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>

namespace mw {
namespace {

using namespace std::string_literals;

constexpr std::uint64_t kAll = kLargestDecoded; // data bytes that are just small enough

std::string Number(std::uint64_t value, int width) {
    std::string bytes;
    for (; width > 0; --width, value >>= 8)
        bytes += static_cast<char>(value & 0xff);
    return bytes;
}

// A chunk whose size may be a lie.
std::string Chunk(const std::string& name, std::uint64_t size, const std::string& content) {
    return name + Number(size, 4) + content;
}

std::string Chunk(const std::string& name, const std::string& content) {
    return Chunk(name, content.size(), content);
}

struct Sound {
    std::uint64_t Channels = 2;
    std::uint64_t Rate = 44100;
    std::uint64_t Bits = 16;
};

std::string Format(const Sound& sound = {}) {
    const std::uint64_t frame = sound.Channels * sound.Bits / 8;
    return Chunk("fmt ", Number(1, 2) + Number(sound.Channels, 2) + Number(sound.Rate, 4) +
                             Number(sound.Rate * frame, 4) + Number(frame, 2) +
                             Number(sound.Bits, 2));
}

std::string Data(std::uint64_t size) { return Chunk("data", size, ""); }

std::string Riff(const std::string& chunks) {
    return "RIFF" + Number(4 + chunks.size(), 4) + "WAVE" + chunks;
}

struct File {
    const char* Name;
    std::string Head;
    bool IsPlayable;
    std::uint64_t Size = 1ull << 40; // of the file: no limit to the data
};

void PrintTo(const File& file, std::ostream* out) { *out << file.Name; }

const File kFiles[] = {
    {"CdSound", Riff(Format() + Data(1000)), true},
    {"MonoOf8Bits", Riff(Format({1, 8000, 8}) + Data(1000)), true},
    {"CompressedTo4Bits", Riff(Format({1, 22050, 4}) + Data(1000)), true},
    {"DoubleFloats", Riff(Format({2, 48000, 64}) + Data(1000)), true},
    {"EightChannels", Riff(Format({8, 44100, 16}) + Data(1000)), true},
    {"TheLowestRate", Riff(Format({1, 1000, 8}) + Data(1000)), true},
    {"AHighRate", Riff(Format({2, 0xffffffff, 16}) + Data(1000)), true},
    {"NoSamples", Riff(Format() + Data(0)), true},
    {"ALongFormatChunk", Riff(Chunk("fmt ", Format().substr(8) + std::string(24, '\0')) + Data(9)),
     true},
    {"AnotherChunkBefore", Riff(Chunk("LIST", "abcd") + Format() + Data(1000)), true},
    {"AnotherChunkBetween", Riff(Format() + Chunk("fact", "abcd") + Data(1000)), true},
    {"AnOddChunkIsPadded", Riff(Chunk("LIST", "abc"s) + "\0"s + Format() + Data(1000)), true},
    {"ASecondFormat", Riff(Format() + Format() + Data(1000)), false},
    {"AFormatThatGrowsBeforeOneThatDoesNot", Riff(Format({1, 1, 8}) + Format() + Data(1000)),
     false},
    {"TheFirstDataCounts", Riff(Format() + Data(0) + Data(kAll + 4)), true},
    {"TheRiffSizeIsNotRead", "RIFF\xff\xff\xff\xffWAVE" + Format() + Data(1000), true},

    {"Nothing", "", false},
    {"RiffAlone", "RIFF", false},
    {"NoChunks", Riff(""), false},
    {"AnotherBeginning", "RIFX" + Riff(Format() + Data(1000)).substr(4), false},
    {"AnotherKind", "RIFF\0\0\0\0AVI "s + Format() + Data(1000), false},
    {"SmallLetters", "riff" + Riff(Format() + Data(1000)).substr(4), false},
    {"Midi", "MThd\0\0\0\6\0\1\0\1\0\x60MTrk"s + Format() + Data(9), false},
    {"NoFormat", Riff(Data(1000)), false},
    {"NoData", Riff(Format()), false},
    {"DataBeforeTheFormat", Riff(Data(0) + Format()), false},
    {"AShortFormatChunk", Riff(Chunk("fmt ", Format().substr(8, 15)) + "\0"s + Data(1000)), false},
    {"AnEmptyFormatChunk", Riff(Chunk("fmt ", "") + Data(1000)), false},
    {"AFormatChunkThatGoesOnBeyondTheFile", Riff(Chunk("fmt ", 0xffffffff, "\1\0\2\0"s)), false},
    {"AnOddChunkWithoutItsPadding", Riff(Chunk("LIST", "abc") + Format() + Data(1000)), false},
    {"AChunkThatGoesOnBeyondTheFile", Riff(Chunk("LIST", 0xffffffff, "") + Format() + Data(9)),
     false},
    {"CapitalsInTheNamesOfChunks", Riff("FMT " + Format().substr(4) + Data(1000)), false},
    {"NoChannels", Riff(Format({0, 44100, 16}) + Data(1000)), false},
    {"NineChannels", Riff(Format({9, 44100, 16}) + Data(1000)), false},
    {"NoRate", Riff(Format({2, 0, 16}) + Data(1000)), false},
    {"ARateBelowTheLowest", Riff(Format({2, 999, 16}) + Data(1000)), false},
    {"NoBits", Riff(Format({2, 44100, 0}) + Data(1000)), false},
    {"ThreeBits", Riff(Format({2, 44100, 3}) + Data(1000)), false},
    {"SixtyFiveBits", Riff(Format({2, 44100, 65}) + Data(1000)), false},

    // How much memory the samples take.
    {"JustSmallEnough", Riff(Format() + Data(kAll)), true},
    {"OneFrameTooLarge", Riff(Format() + Data(kAll + 4)), false},
    {"MonoGrowsToTwoChannels", Riff(Format({1, 44100, 16}) + Data(kAll / 2)), true},
    {"MonoOneFrameTooLarge", Riff(Format({1, 44100, 16}) + Data(kAll / 2 + 2)), false},
    {"EightBitsGrowToSixteen", Riff(Format({1, 44100, 8}) + Data(kAll / 4)), true},
    {"EightBitsOneFrameTooLarge", Riff(Format({1, 44100, 8}) + Data(kAll / 4 + 1)), false},
    {"HalfTheRateDoubles", Riff(Format({2, 22050, 16}) + Data(kAll / 2)), true},
    {"HalfTheRateOneFrameTooLarge", Riff(Format({2, 22050, 16}) + Data(kAll / 2 + 4)), false},
    {"DoubleTheRateHalves", Riff(Format({2, 88200, 16}) + Data(kAll * 2)), true},
    {"AFewCompressedBytesThatGrow", Riff(Format({1, 1000, 4}) + Data(1024 * 1024)), false},
    {"TheLargestNumbers", Riff(Format({8, 1000, 4}) + Data(0xffffffff)), false},
    {"ALieAboutTheSizeOfASmallFile", Riff(Format() + Data(0xffffffff)), true, 5000},
    {"ALieAboutTheSizeOfALargeFile", Riff(Format() + Data(0xffffffff)), false, kAll + 4},
    {"AFileThatHasLessThanItSays", Riff(Format() + Data(kAll + 4)), true, kAll},
    {"AFileThatHasMoreThanItSays", Riff(Format() + Data(1000)), true, kAll * 100},
};

class WaveFiles : public testing::TestWithParam<File> {};

TEST_P(WaveFiles, ArePlayableOrNot) {
    EXPECT_EQ(IsPlayableWave(GetParam().Head, GetParam().Size), GetParam().IsPlayable);
}

TEST_P(WaveFiles, CutAnywhereBeforeTheirDataAreNotPlayable) {
    const std::string head = GetParam().Head;
    const std::size_t data = head.find("data");
    const std::size_t last = data == std::string::npos ? head.size() : data + 7;
    for (std::size_t cut = 0; cut <= last && cut < head.size(); ++cut)
        EXPECT_FALSE(IsPlayableWave(head.substr(0, cut), cut)) << cut;
}

INSTANTIATE_TEST_SUITE_P(Files, WaveFiles, testing::ValuesIn(kFiles),
                         [](const auto& row) { return row.param.Name; });

TEST(WaveFileLimit, IsSixtyFourMebibytes) { EXPECT_EQ(kLargestDecoded, 67108864u); }

TEST(DamagedWaveFiles, AreJudgedByWhatIsThere) {
    const std::string whole = Riff(Chunk("LIST", "abcd") + Format() + Data(1000));
    std::mt19937 random(5201);
    std::uniform_int_distribution<std::size_t> place(0, whole.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    int playable = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string head = whole;
        for (int i = 0; i < 3; ++i)
            head[place(random)] = static_cast<char>(byte(random));
        const bool isPlayable = IsPlayableWave(head, head.size());
        ASSERT_TRUE(!isPlayable || (head.starts_with("RIFF") && head.substr(8, 4) == "WAVE"));
        playable += isPlayable ? 1 : 0;
    }
    EXPECT_GT(playable, 0);
    EXPECT_LT(playable, 20000);
}

} // namespace
} // namespace mw
