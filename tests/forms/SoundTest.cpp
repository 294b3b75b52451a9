#include "forms/Audio.h"
#include "forms/FrameTest.h"
#include "forms/HttpServer.h"
#include "net/http/DownLoad.h"
#include "sound/PlaySound.h"
#include "sound/frmSound.h"
#include "ui/Players.h"

#include <SDL_log.h>
#include <SDL_mixer.h>
#include <algorithm>
#include <csignal>
#include <ostream>
#include <random>

namespace mw {
namespace {

using forms::Boxes;
using forms::HttpServer;
using forms::Recording;
using forms::Says;
using forms::Sounding;
using forms::WaitAMoment;
using forms::WaitFor;
using forms::Whole;
using sounds::kLoud;
using sounds::LittleEndian;
using sounds::Tone;
using sounds::Tune;
using sounds::Wave;
using sounds::WaveFormat;

namespace fs = std::filesystem;

constexpr double kShort = 0.2; // seconds; no whole number of the mixer's blocks
constexpr int kFrame = 4;      // bytes of one sample for both ears
constexpr double kLoudness = kLoud / 1.4142135623730951; // of a tone at full volume
constexpr int kA4 = 69;                                  // MIDI's keys
constexpr int kA6 = 93;

// Players, queues and an audio device that are new, in front of a game that may play. What is
// played goes to a file.
template <typename Base> class Audible : public Base {
protected:
    Audible() {
        // The driver tells every time that it is not a real one.
        SDL_LogSetOutputFunction([](void*, int, SDL_LogPriority, const char*) {}, nullptr);
        RemovePlayers();
        UseDriver("disk");
        qputenv("SDL_DISKAUDIOFILE", QByteArray::fromStdString(AudioFile().string()));
        MudList[0].Name = "Testmere";
        MudList[0].SndW = true;
        MakeGameFolders("Testmere");
    }

    ~Audible() override {
        RemovePlayers();
        ResetPlaySound();
        qunsetenv("SDL_AUDIODRIVER");
        qunsetenv("SDL_DISKAUDIOFILE");
        EXPECT_EQ(this->Closer.Texts, Boxes{});
    }

    static void UseDriver(const char* driver) { qputenv("SDL_AUDIODRIVER", driver); }

    static frmSound* Players() { return qApp->findChild<frmSound*>("frmSound"); }

    static void RemovePlayers() { delete Players(); }

    fs::path AudioFile() const { return this->Folder.Path / "audio.raw"; }

    std::uintmax_t AudioSize() const {
        std::error_code none;
        const std::uintmax_t size = fs::file_size(AudioFile(), none);
        return none ? 0 : size;
    }

    // Lets as much more be played, whether it is heard or silent.
    bool PlaysOn(double seconds) const {
        const auto end =
            AudioSize() + static_cast<std::uintmax_t>(seconds * kFrame * sounds::kRate);
        return WaitFor([&] { return AudioSize() >= end; });
    }

    fs::path Keep(const std::string& name, const std::string& bytes) const {
        const fs::path file = this->Folder.Path / "Testmere" / "sounds" / name;
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    // Everything that was asked for has been played.
    static bool IsOver() {
        return WaitFor(
            [] { return wavPlayer::State() == PlayState::Stopped && cboWavPlayer.empty(); });
    }

    // Closes the device and listens to what it was given.
    Recording Heard() const {
        RemovePlayers();
        return Recording(AudioFile());
    }

    static void Play(const std::string& name, std::int32_t volume = 0, std::int16_t priority = 0) {
        PlayWave(name, "", volume, priority);
    }

    static void PlayTune(const std::string& name, std::int32_t volume = 0) {
        PlayMusic(name, "", volume, 0);
    }
};

using SoundTest = Audible<forms::FormTest>;

void ExpectTone(const Sounding& sounding, double hertz, double seconds = kShort,
                double loudness = kLoudness) {
    EXPECT_NEAR(sounding.Hertz, hertz, 0.03 * hertz);
    EXPECT_NEAR(sounding.Seconds, seconds, 0.03);
    EXPECT_NEAR(sounding.Loudness, loudness, 0.03 * loudness);
}

TEST_F(SoundTest, OpensNoDeviceBeforeASoundIsAskedFor) {
    wavPlayer::SetURL(Keep("rain.wav", Tone(440, kShort)));
    wavPlayer::SetVolume(100);
    wavPlayer::Stop();
    midiPlayer::Stop();
    EXPECT_EQ(wavPlayer::State(), PlayState::Stopped);
    EXPECT_EQ(midiPlayer::State(), PlayState::Stopped);
    EXPECT_FALSE(fs::exists(AudioFile()));
}

TEST_F(SoundTest, OfAWaveIsHeardInBothEarsAndThenSilence) {
    Keep("rain.wav", Tone(440, kShort));
    Play("rain.wav");
    EXPECT_EQ(wavPlayer::State(), PlayState::Playing);
    EXPECT_TRUE(IsOver());
    QTest::qWait(100);
    const Recording heard = Heard();
    ASSERT_EQ(heard.Soundings().size(), 1u);
    ExpectTone(heard.Soundings()[0], 440);
    EXPECT_TRUE(heard.Left == heard.Right);
    EXPECT_GT(heard.Seconds(), kShort + 0.05);
    EXPECT_EQ(Notice, "");
}

struct Format {
    const char* Name;
    WaveFormat Of;
};

void PrintTo(const Format& row, std::ostream* out) { *out << row.Name; }

class WaveFormats : public SoundTest, public testing::WithParamInterface<Format> {};

TEST_P(WaveFormats, SoundAtTheirPitch) {
    Keep("rain.wav", Tone(440, kShort, GetParam().Of));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    EXPECT_NEAR(soundings[0].Hertz, 440, 15);
    EXPECT_NEAR(soundings[0].Seconds, kShort, 0.03);
    EXPECT_NEAR(soundings[0].Loudness, kLoudness, 0.05 * kLoudness);
    EXPECT_EQ(Notice, "");
}

const Format kFormats[] = {
    {"EightBits", {1, 1, 11025, 8}},
    {"Stereo", {1, 2, 44100, 16}},
    {"HalfTheRate", {1, 1, 22050, 16}},
    {"AHigherRate", {1, 2, 48000, 16}},
};

INSTANTIATE_TEST_SUITE_P(Sound, WaveFormats, testing::ValuesIn(kFormats),
                         [](const auto& row) { return row.param.Name; });

TEST_F(SoundTest, OfAWaveIsAsLoudAsItsVolume) {
    Keep("rain.wav", Tone(440, kShort));
    const int volumes[] = {100, 75, 50, 25, 1};
    for (const int volume : volumes)
        Play("rain.wav", volume);
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 5u);
    for (std::size_t i = 0; i < 4; ++i)
        ExpectTone(soundings[i], 440, kShort, kLoudness * volumes[i] / 100);
    EXPECT_LT(soundings[4].Loudness, 0.02 * kLoudness);
}

TEST_F(SoundTest, OfAVolumeOfZeroIsAtItsLoudestOnPurpose) {
    Keep("rain.wav", Tone(440, kShort));
    Play("rain.wav", 0);
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 440);
}

TEST_F(SoundTest, OfWavesThatWaitComesInTheirOrderEachWithItsVolume) {
    Keep("low.wav", Tone(300, kShort));
    Keep("middle.wav", Tone(600, kShort));
    Keep("high.wav", Tone(1200, kShort));
    Play("middle.wav", 50);
    Play("high.wav", 100);
    Play("low.wav", 25);
    Play("high.wav", 75);
    EXPECT_EQ(cboWavPlayer.size(), 3u);
    EXPECT_TRUE(Players()->wavTimer.isActive());
    EXPECT_TRUE(IsOver());
    EXPECT_TRUE(WaitFor([] { return !Players()->wavTimer.isActive(); }));
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 4u);
    ExpectTone(soundings[0], 600, kShort, kLoudness * 0.5);
    ExpectTone(soundings[1], 1200, kShort, kLoudness);
    ExpectTone(soundings[2], 300, kShort, kLoudness * 0.25);
    ExpectTone(soundings[3], 1200, kShort, kLoudness * 0.75);
}

TEST_F(SoundTest, OfANegativePriorityComesAtOnceInPlaceOfWhatPlays) {
    Keep("low.wav", Tone(300, 3));
    Keep("high.wav", Tone(1200, kShort));
    Play("low.wav");
    QTest::qWait(200);
    Play("high.wav", 50, -1);
    EXPECT_TRUE(IsOver());
    const Recording heard = Heard();
    EXPECT_LT(heard.Seconds(), 2);
    EXPECT_GT(heard.Strength(300), 0);
    EXPECT_GT(heard.Strength(1200), 0.1 * heard.Strength(300));
}

TEST_F(SoundTest, OfAWaveStops) {
    Keep("rain.wav", Tone(440, 3));
    Play("rain.wav");
    QTest::qWait(200);
    EXPECT_EQ(wavPlayer::State(), PlayState::Playing);
    wavPlayer::Stop();
    EXPECT_EQ(wavPlayer::State(), PlayState::Stopped);
    QTest::qWait(200);
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    EXPECT_LT(soundings[0].Seconds, 0.35);
}

TEST_F(SoundTest, ThatWaitsComesWhenTheOneBeforeIsStopped) {
    Keep("low.wav", Tone(300, 3));
    Keep("high.wav", Tone(1200, kShort));
    Play("low.wav");
    Play("high.wav");
    QTest::qWait(100);
    wavPlayer::Stop();
    EXPECT_TRUE(IsOver());
    ExpectTone(Heard().AtLast(kShort), 1200);
}

TEST_F(SoundTest, OfAFileThatIsWrittenAnewIsTheNewOne) {
    Keep("rain.wav", Tone(300, kShort));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    Keep("rain.wav", Tone(1200, kShort));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 2u);
    ExpectTone(soundings[1], 1200);
}

// Files that no wave player opens.
struct BadFile {
    const char* Name;
    std::string Bytes;
    std::uintmax_t Size = 0; // of the file, when it is larger than its bytes
};

void PrintTo(const BadFile& row, std::ostream* out) { *out << row.Name; }

class BadWaves : public SoundTest, public testing::WithParamInterface<BadFile> {
protected:
    void KeepIt() const {
        const fs::path file = Keep("bad.wav", GetParam().Bytes);
        if (GetParam().Size > 0)
            fs::resize_file(file, GetParam().Size);
    }
};

TEST_P(BadWaves, AreNoticedAndCountAsStopped) {
    KeepIt();
    Play("bad.wav");
    EXPECT_EQ(wavPlayer::State(), PlayState::Stopped);
    EXPECT_EQ(Notice, "Can't be played: bad.wav");
    QTest::qWait(50);
    EXPECT_TRUE(Heard().IsSilent());
}

const std::string kSamples(20000, '\x40');

const BadFile kBadWaves[] = {
    {"Empty", ""},
    {"Text", "A page of text, as a web server sends it instead of a sound.\r\n"},
    {"Music", Tune(kA4, 0.1)},
    {"CutInItsHead", Tone(440, 0.1).substr(0, 30)},
    {"WithoutSamples", Tone(440, 0.1).substr(0, 40)},
    {"ACompressionNobodyKnows", Wave(kSamples, {0x1234, 1, 44100, 16})},
    {"NoChannels", Wave(kSamples, {1, 0, 44100, 16})},
    {"AThousandChannels", Wave(kSamples, {1, 1000, 44100, 16})},
    {"ARateOfZero", Wave(kSamples, {1, 1, 0, 16})},
    {"ARateOfOne", Wave(kSamples, {1, 1, 1, 16})},
    {"ARateOfFourThousandMillion", Wave(kSamples, {1, 1, 0xffffffff, 16})},
    {"SamplesOfSevenBits", Wave(kSamples, {1, 1, 44100, 7})},
    {"TwoHundredMegabytes", Wave("").substr(0, 40) + LittleEndian(200 * 1024 * 1024, 4),
     200 * 1024 * 1024},
};

INSTANTIATE_TEST_SUITE_P(Sound, BadWaves, testing::ValuesIn(kBadWaves),
                         [](const auto& row) { return row.param.Name; });

TEST_F(SoundTest, GoesOnBehindFilesThatCantBePlayed) {
    Keep("rain.wav", Tone(440, 0.1));
    Keep("thunder.wav", Tone(220, 0.1));
    Keep("empty.wav", "");
    Keep("text.wav", "A page of text.\r\n");
    Keep("codec.wav", Wave(kSamples, {0x1234, 1, 44100, 16}));
    for (const char* const name : {"rain.wav", "empty.wav", "text.wav", "codec.wav", "thunder.wav"})
        Play(name);
    EXPECT_TRUE(IsOver());
    EXPECT_EQ(Notice, "Can't be played: codec.wav");
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 2u);
    EXPECT_NEAR(soundings[0].Hertz, 440, 20);
    EXPECT_NEAR(soundings[1].Hertz, 220, 20);
}

// Bytes changed, taken out and put in, anywhere but in the name of the format.
std::string Damaged(std::string bytes, unsigned seed) {
    constexpr std::size_t kName = 4;
    std::minstd_rand random(seed);
    for (std::size_t hits = 1 + random() % 6; hits > 0; --hits) {
        const std::size_t at = kName + random() % std::min<std::size_t>(bytes.size() - kName, 80);
        if (random() % 3 > 0)
            bytes[at] = static_cast<char>(random());
        else if (random() % 2 > 0)
            bytes.erase(at, random() % 8);
        else
            bytes.insert(at, random() % 8, static_cast<char>(random()));
    }
    return bytes;
}

TEST_F(SoundTest, GoesOnBehindFilesWithRandomDamage) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        Keep("damaged.wav", Damaged(Tone(440, 0.01), seed));
        Keep("damaged.mid", Damaged(Tune(kA4, 0.1), seed));
        Play("damaged.wav", 0, -1); // at once
        PlayTune("damaged.mid");
        midiPlayer::Stop();
    }
    Keep("rain.wav", Tone(1200, kShort));
    Play("rain.wav", 0, -1);
    EXPECT_TRUE(IsOver());
    ExpectTone(Heard().AtLast(kShort), 1200);
}

TEST_F(SoundTest, OfAFileThatIsCutOffIsWhatIsThere) {
    const std::string tone = Tone(440, 1);
    Keep("rain.wav", tone.substr(0, tone.size() / 5));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 440);
}

TEST_F(SoundTest, OfNoSamplesIsOverAtOnceAndHoldsUpNothing) {
    Keep("none.wav", Wave(""));
    Keep("rain.wav", Tone(440, kShort));
    Play("rain.wav");
    Play("none.wav");
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    EXPECT_EQ(Heard().Soundings().size(), 2u);
}

TEST_F(SoundTest, OfAFileThatGoesWhileItWaitsIsNoticed) {
    Keep("rain.wav", Tone(440, 0.1));
    const fs::path gone = Keep("gone.wav", Tone(440, 0.1));
    Play("rain.wav");
    Play("gone.wav");
    Play("rain.wav");
    fs::remove(gone);
    EXPECT_TRUE(IsOver());
    EXPECT_EQ(Notice, "Can't be played: gone.wav");
    EXPECT_EQ(Heard().Soundings().size(), 2u);
}

TEST_F(SoundTest, OfMusicIsHeard) {
    Keep("tune.mid", Tune(kA4, 0.4));
    PlayTune("tune.mid");
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    QTest::qWait(400);
    midiPlayer::Stop();
    EXPECT_EQ(midiPlayer::State(), PlayState::Stopped);
    const Recording heard = Heard();
    EXPECT_FALSE(heard.IsSilent());
    EXPECT_GT(heard.Strength(440), 5 * heard.Strength(1760));
    EXPECT_EQ(Notice, "");
}

TEST_F(SoundTest, OfMusicIsHeardFromAFileOfFourMebibytes) {
    fs::resize_file(Keep("tune.mid", Tune(kA4, 0.3)), 4 * 1024 * 1024);
    PlayTune("tune.mid");
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    EXPECT_EQ(Notice, "");
    QTest::qWait(300);
    EXPECT_FALSE(Heard().IsSilent());
}

TEST_F(SoundTest, OfMusicEndsByItself) {
    Keep("tune.mid", Tune(kA4, 0.1));
    PlayTune("tune.mid");
    EXPECT_TRUE(WaitFor([] { return midiPlayer::State() == PlayState::Stopped; }));
}

TEST_F(SoundTest, OfMusicStops) {
    Keep("tune.mid", Tune(kA4, 5));
    PlayTune("tune.mid");
    EXPECT_TRUE(PlaysOn(0.25));
    midiPlayer::Stop();
    EXPECT_TRUE(PlaysOn(0.4));
    const Recording heard = Heard();
    ASSERT_FALSE(heard.IsSilent());
    EXPECT_LT(heard.Soundings().back().Seconds, 0.5);
}

TEST_F(SoundTest, OfASecondMusicIsDropped) {
    Keep("first.mid", Tune(kA4, 0.3));
    Keep("second.mid", Tune(kA6, 0.3));
    PlayTune("first.mid");
    QTest::qWait(100);
    PlayTune("second.mid");
    QTest::qWait(600);
    EXPECT_TRUE(cboMidiPlayer.empty());
    const Recording heard = Heard();
    EXPECT_GT(heard.Strength(440), 5 * heard.Strength(1760));
}

TEST_F(SoundTest, OfASecondMusicIsHeardWhenTheFirstWasStopped) {
    Keep("first.mid", Tune(kA4, 0.3));
    Keep("second.mid", Tune(kA6, 0.3));
    PlayTune("first.mid");
    QTest::qWait(100);
    midiPlayer::Stop();
    PlayTune("second.mid");
    QTest::qWait(400);
    const Recording heard = Heard();
    EXPECT_GT(heard.Strength(1760), heard.Strength(440));
}

// A server may start and stop one tune thousands of times in one arrival.
TEST_F(SoundTest, OfMusicThatIsAskedForAtOnceAfterAnotherIsLoadedAMomentLater) {
    Keep("first.mid", Tune(kA4, 0.3));
    Keep("bad.mid", "no music");
    PlayTune("first.mid");
    midiPlayer::Stop();
    PlayTune("bad.mid");
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    EXPECT_EQ(Notice, "");
    EXPECT_TRUE(WaitFor([] { return midiPlayer::State() == PlayState::Stopped; }));
    EXPECT_EQ(Notice, "Can't be played: bad.mid");
}

TEST_F(SoundTest, OfAWaveThatIsStoppedBeforeItIsLoadedIsNeverLoaded) {
    Keep("first.wav", Tone(440, kShort));
    Keep("bad.wav", "no sound");
    Play("first.wav");
    wavPlayer::Stop();
    Play("bad.wav");
    EXPECT_EQ(wavPlayer::State(), PlayState::Playing);
    wavPlayer::Stop();
    EXPECT_EQ(wavPlayer::State(), PlayState::Stopped);
    QTest::qWait(300);
    EXPECT_EQ(Notice, "");
}

// Else a game that queues waves in quick succession would keep the queue from ever going on.
TEST_F(SoundTest, TimersThatAreEnabledAgainComeNoLater) {
    for (const SoundTimer timer : {SoundTimer::wavTimer, SoundTimer::midiTimer}) {
        SetEnabled(timer, true);
        const QTimer& own =
            timer == SoundTimer::wavTimer ? Players()->wavTimer : Players()->midiTimer;
        QTest::qSleep(50); // without its tick
        const int left = own.remainingTime();
        SetEnabled(timer, true);
        EXPECT_LE(own.remainingTime(), left);
        EXPECT_TRUE(own.isActive());
    }
}

// The loudness of a note by the volume it is given in hundredths.
class MusicVolume : public SoundTest {
protected:
    double LoudnessAt(std::int32_t hundredths) const {
        midiPlayer::SetFileName(Keep("tune.mid", Tune(kA4, 0.4)));
        midiPlayer::SetVolume(hundredths);
        midiPlayer::Play();
        QTest::qWait(350);
        return Heard().LoudnessAtFirst(0.2);
    }
};

TEST_F(MusicVolume, IsFullAtZeroAndSilentAtItsLowest) {
    const double full = LoudnessAt(0);
    EXPECT_GT(full, 200);
    EXPECT_NEAR(LoudnessAt(-5000), full / 2, 0.08 * full);
    EXPECT_NEAR(LoudnessAt(-7500), full / 4, 0.08 * full);
    EXPECT_EQ(LoudnessAt(-10000), 0);
}

TEST_F(SoundTest, OfMusicGoesOnBesideAWave) {
    Keep("tune.mid", Tune(kA4, 0.6));
    Keep("rain.wav", Tone(3000, kShort));
    PlayTune("tune.mid");
    Play("rain.wav");
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    EXPECT_EQ(wavPlayer::State(), PlayState::Playing);
    EXPECT_TRUE(IsOver());
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    const Recording heard = Heard();
    EXPECT_GT(heard.Strength(3000), 5 * heard.Strength(2500));
    EXPECT_GT(heard.Strength(440), 5 * heard.Strength(400));
}

class BadMusic : public SoundTest, public testing::WithParamInterface<BadFile> {};

TEST_P(BadMusic, IsNoticedAndCountsAsStopped) {
    const fs::path file = Keep("bad.mid", GetParam().Bytes);
    if (GetParam().Size > 0)
        fs::resize_file(file, GetParam().Size);
    PlayTune("bad.mid");
    EXPECT_TRUE(WaitFor([] { return midiPlayer::State() == PlayState::Stopped; }));
    EXPECT_EQ(Notice, "Can't be played: bad.mid");
    Keep("tune.mid", Tune(kA4, 0.3));
    PlayTune("tune.mid");
    QTest::qWait(150);
    EXPECT_FALSE(Heard().IsSilent());
}

const BadFile kBadMusic[] = {
    {"Empty", ""},
    {"Text", "A page of text, as a web server sends it instead of music.\r\n"},
    {"AWave", Tone(440, 0.1)},
    {"FourLetters", "MThd"},
    {"CutInItsHead", Tune(kA4, 0.1).substr(0, 10)},
    {"WithoutItsTrack", Tune(kA4, 0.1).substr(0, 14)},
    {"GarbageBehindItsHead", Tune(kA4, 0.1).substr(0, 14) + std::string(100, '\xAA')},
    {"OneByteMoreThanFourMebibytes", Tune(kA4, 0.1), 4 * 1024 * 1024 + 1},
};

INSTANTIATE_TEST_SUITE_P(Sound, BadMusic, testing::ValuesIn(kBadMusic),
                         [](const auto& row) { return row.param.Name; });

// Music by the instruments (soundfonts) of these files.
class Instruments : public SoundTest {
protected:
    ~Instruments() override {
        qunsetenv("SDL_SOUNDFONTS");
        qunsetenv("SDL_FORCE_SOUNDFONTS");
    }

    static void Use(const std::string& files) {
        qputenv("SDL_SOUNDFONTS", QByteArray::fromStdString(files));
        qputenv("SDL_FORCE_SOUNDFONTS", "1");
    }
};

TEST_F(Instruments, ThatAreMissingAreNoticedAndWavesGoOn) {
    Use("/nowhere.sf2");
    Keep("tune.mid", Tune(kA4, 0.3));
    PlayTune("tune.mid");
    EXPECT_EQ(midiPlayer::State(), PlayState::Stopped);
    EXPECT_EQ(Notice, "No music: the instruments (a soundfont) are missing");
    Keep("rain.wav", Tone(440, kShort));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    EXPECT_EQ(Heard().Soundings().size(), 1u);
}

TEST_F(Instruments, MayBeSeveralFiles) {
    Keep("tune.mid", Tune(kA4, 0.3));
    PlayTune("tune.mid"); // the mixer looks for the usual ones
    const char* const usual = Mix_GetSoundFonts();
    ASSERT_NE(usual, nullptr);
    Use(std::string(usual) + ";" + usual);
    RemovePlayers();
    PlayTune("tune.mid");
    QTest::qWait(200);
    EXPECT_EQ(Notice, "");
    EXPECT_FALSE(Heard().IsSilent());
}

TEST_F(SoundTest, ClosesItsDeviceFiveSecondsAfterTheLastAndOpensItAgain) {
    Keep("rain.wav", Tone(440, kShort));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    QTest::qWait(4500);
    const std::uintmax_t size = AudioSize();
    EXPECT_TRUE(WaitFor([&] { return AudioSize() > size; })) << "closed too early";
    QTest::qWait(900);
    const std::uintmax_t atLast = AudioSize();
    WaitAMoment([&] { return AudioSize() != atLast; });
    EXPECT_NEAR(static_cast<double>(atLast) / (kFrame * sounds::kRate), 5.2, 0.5);
    Keep("thunder.wav", Tone(220, kShort));
    Play("thunder.wav");
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings(); // the device's file is a new one
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 220);
}

TEST_F(SoundTest, OfMoreThanFiveSecondsIsNotCutShort) {
    Keep("rain.wav", Tone(440, 5.6));
    Play("rain.wav");
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 440, 5.6);
}

// What the system's signals do is the client's own affair.
class SoundAndSignals : public SoundTest, public testing::WithParamInterface<int> {
protected:
    struct sigaction AfterASound() const {
        Keep("rain.wav", Tone(440, kShort));
        Play("rain.wav");
        EXPECT_EQ(wavPlayer::State(), PlayState::Playing);
        struct sigaction now {};
        ::sigaction(GetParam(), nullptr, &now);
        return now;
    }

    static void Ignored(int) {}
};

TEST_P(SoundAndSignals, LeavesTheSystemsOwnHandling) {
    ::signal(GetParam(), SIG_DFL);
    EXPECT_EQ(AfterASound().sa_handler, SIG_DFL);
}

TEST_P(SoundAndSignals, LeavesTheClientsHandler) {
    ::signal(GetParam(), Ignored);
    EXPECT_EQ(AfterASound().sa_handler, Ignored);
    RemovePlayers();
    struct sigaction now {};
    ::sigaction(GetParam(), nullptr, &now);
    EXPECT_EQ(now.sa_handler, Ignored);
    ::signal(GetParam(), SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(Sound, SoundAndSignals, testing::Values(SIGTERM, SIGINT),
                         [](const auto& row) {
                             return row.param == SIGTERM ? std::string("Terminate") : "Interrupt";
                         });

// With the frame, a game and a web server.
class SoundOfAGame : public Audible<forms::FrameTest> {
protected:
    SoundOfAGame() { MudList[0].SndD = true; }

    ~SoundOfAGame() override { AbandonDownloads(); }

    // A trigger stands at the beginning of a line. The client drops the last byte of what arrives
    // together, so one more is sent.
    void Trigger(const std::string& line) const { Server.Send("\r\n" + line + "\r\n\r"); }

    HttpServer Web;
};

TEST_F(SoundOfAGame, IsHeardAsItsTriggerSays) {
    Keep("rain.wav", Tone(440, kShort));
    Connect();
    Trigger("!!SOUND(rain.wav V=50 )");
    EXPECT_TRUE(WaitFor([] { return wavPlayer::State() == PlayState::Playing; }));
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 440, kShort, kLoudness * 0.5);
}

TEST_F(SoundOfAGame, StopsWhenTheGameSaysOff) {
    Keep("rain.wav", Tone(440, 5));
    Keep("tune.mid", Tune(kA4, 5));
    Connect();
    Trigger("!!SOUND(rain.wav )");
    EXPECT_TRUE(WaitFor([] { return wavPlayer::State() == PlayState::Playing; }));
    Trigger("!!MUSIC(tune.mid )");
    EXPECT_TRUE(WaitFor([] { return midiPlayer::State() == PlayState::Playing; }));
    Trigger("!!SOUND(Off)");
    EXPECT_TRUE(WaitFor([] { return wavPlayer::State() == PlayState::Stopped; }));
    EXPECT_EQ(midiPlayer::State(), PlayState::Playing);
    Trigger("!!MUSIC(Off)");
    EXPECT_TRUE(WaitFor([] { return midiPlayer::State() == PlayState::Stopped; }));
}

TEST_F(SoundOfAGame, IsFetchedTheFirstTimeAndHeardTheSecond) {
    Web.Answers["/rain.wav"] = Says(Whole(Tone(440, kShort)));
    Connect();
    const std::string trigger = "!!SOUND(rain.wav V=100 U=" + Web.Address("/rain.wav") + ")";
    const fs::path file = Folder.Path / "Testmere" / "sounds" / "rain.wav";
    Trigger(trigger);
    EXPECT_TRUE(WaitFor([&] { return fs::exists(file); }));
    EXPECT_FALSE(fs::exists(AudioFile())) << "nothing is played yet";
    Trigger(trigger);
    EXPECT_TRUE(WaitFor([] { return wavPlayer::State() == PlayState::Playing; }));
    EXPECT_TRUE(IsOver());
    const auto soundings = Heard().Soundings();
    ASSERT_EQ(soundings.size(), 1u);
    ExpectTone(soundings[0], 440);
    EXPECT_EQ(Web.Requests.size(), 1u);
}

TEST_F(SoundOfAGame, IsNotPlayedWithoutTheSwitchOfTheWaves) {
    MudList[0].SndW = false;
    MudList[0].Msp = MudList[0].SndM = true;
    Keep("rain.wav", Tone(440, kShort));
    Keep("tune.mid", Tune(kA4, kShort));
    Connect();
    Trigger("!!SOUND(rain.wav )");
    Receive("You hear nothing.");
    Trigger("!!MUSIC(tune.mid )");
    Receive("Nothing at all.");
    EXPECT_FALSE(fs::exists(AudioFile()));
}

// A machine without an audio device.
struct NoDevice {
    const char* Name;
    const char* Driver;
    const char* File;
};

void PrintTo(const NoDevice& row, std::ostream* out) { *out << row.Name; }

class WithoutADevice : public SoundOfAGame, public testing::WithParamInterface<NoDevice> {
protected:
    WithoutADevice() {
        UseDriver(GetParam().Driver);
        qputenv("SDL_DISKAUDIOFILE", GetParam().File);
        Keep("rain.wav", Tone(440, kShort));
        Keep("tune.mid", Tune(kA4, kShort));
    }
};

TEST_P(WithoutADevice, OneNoticeSaysSo) {
    Play("rain.wav");
    EXPECT_TRUE(Panel(2).starts_with("No sound: ")) << Panel(2);
    EXPECT_GT(Panel(2).size(), 12u) << "and why";
    ShowNotice("");
    Play("rain.wav");
    PlayTune("tune.mid");
    Play("rain.wav", 50, -1);
    EXPECT_EQ(Panel(2), "");
    EXPECT_EQ(wavPlayer::State(), PlayState::Stopped);
    EXPECT_EQ(midiPlayer::State(), PlayState::Stopped);
    EXPECT_TRUE(cboWavPlayer.empty());
}

TEST_P(WithoutADevice, EverythingElseWorks) {
    Web.Answers["/thunder.wav"] = Says(Whole("abc"));
    Connect();
    Trigger("!!SOUND(rain.wav )");
    EXPECT_TRUE(WaitFor([this] { return Panel(2).starts_with("No sound: "); }));
    Trigger("!!MUSIC(tune.mid )");
    Receive("You hear nothing.");
    Trigger("!!SOUND(thunder.wav U=" + Web.Address("/thunder.wav") + ")");
    Enter("look");
    EXPECT_TRUE(Server.Gets("look\r"));
    EXPECT_TRUE(WaitFor(
        [this] { return fs::exists(Folder.Path / "Testmere" / "sounds" / "thunder.wav"); }));
}

const NoDevice kNoDevices[] = {
    {"AnUnknownDriver", "nonsense", ""},
    {"ADriverThatCantOpen", "disk", "/nowhere/at/all/audio.raw"},
};

INSTANTIATE_TEST_SUITE_P(Sound, WithoutADevice, testing::ValuesIn(kNoDevices),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace mw
