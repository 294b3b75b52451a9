#define SDL_MAIN_HANDLED
#include "sound/frmSound.h"

#include "base/Notice.h"
#include "config/FileHandler.h"
#include "sound/PlaySound.h"
#include "sound/WaveFile.h"
#include "ui/Players.h"
#include "ui/qt/EventBoundary.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <algorithm>
#include <fstream>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QStringList>

namespace mw {
namespace {

constexpr int kRate = 44100;
constexpr int kChannels = 2;
constexpr int kBlock = 1024;        // frames mixed at a time, 23 milliseconds
constexpr int kQueueInterval = 250; // milliseconds, of both timers
constexpr int kStartInterval = 200; // milliseconds from one start to the next
constexpr int kIdleInterval = 5000; // milliseconds until a silent device is closed
constexpr int kWaveChannel = 0;
constexpr std::size_t kHead = 64 * 1024;
constexpr std::size_t kFirstTrack = 14;                   // in a MIDI file, behind its header
constexpr std::uintmax_t kLargestMusic = 4 * 1024 * 1024; // bytes of a MIDI file

QPointer<frmSound> Form; // the one sound window

frmSound& Sounds() {
    if (!Form)
        Form = new frmSound;
    return *Form;
}

int MixerVolume(int percent) { return percent * MIX_MAX_VOLUME / 100; }

std::string HeadOf(const std::filesystem::path& file) {
    std::string head(kHead, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(stream.gcount()));
    return head;
}

std::uintmax_t SizeOf(const std::filesystem::path& file) {
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(file, failure);
    return failure ? 0 : size;
}

// What sounds and instruments took goes back to the system, also what lies between other things.
void GiveBackMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

bool IsMusic(const std::filesystem::path& file) {
    const std::string head = HeadOf(file);
    return SizeOf(file) <= kLargestMusic && head.starts_with("MThd") && head.size() > kFirstTrack &&
           head.compare(kFirstTrack, 4, "MTrk") == 0;
}

// One of the files that the mixer would take its instruments from is there.
bool HasInstruments() {
    const QString fonts(Mix_GetSoundFonts());
    const QStringList files = fonts.split(QRegularExpression("[;:]"), Qt::SkipEmptyParts);
    return std::any_of(files.begin(), files.end(),
                       [](const QString& file) { return QFile::exists(file); });
}

void TellUnplayable(const std::filesystem::path& file) {
    ShowNotice("Can't be played: " + PathText(file.filename()));
}

// Called in the mixer's thread.
void SoundHasEnded() {
    if (QCoreApplication* const app = QCoreApplication::instance())
        QMetaObject::invokeMethod(app, [] {
            if (Form)
                Form->WaitForSilence();
        });
}

} // namespace

frmSound::frmSound() : QObject(qApp) {
    setObjectName("frmSound");
    wavTimer.setInterval(kQueueInterval);
    midiTimer.setInterval(kQueueInterval);
    IdleTimer.setInterval(kIdleInterval);
    IdleTimer.setSingleShot(true);
    connect(&wavTimer, &QTimer::timeout, this,
            [] { RunHandler("wavTimer_Timer", wavTimer_Timer); });
    connect(&midiTimer, &QTimer::timeout, this,
            [] { RunHandler("midiTimer_Timer", midiTimer_Timer); });
    connect(&IdleTimer, &QTimer::timeout, this, &frmSound::CloseWhenSilent);
    Prepare(WaveStart, &frmSound::StartWave);
    Prepare(MusicStart, &frmSound::StartMusic);
}

frmSound::~frmSound() { CloseDevice(); }

// Tried until it fails once: what waits for a missing device waits for nothing.
bool frmSound::OpenDevice() {
    if (DeviceIsOpen || DeviceFailed)
        return DeviceIsOpen;
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // the client's own answer them
    SDL_SetHint(SDL_HINT_APP_NAME, "Quillmere Mud Client");
    DeviceIsOpen = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0 &&
                   Mix_OpenAudio(kRate, AUDIO_S16SYS, kChannels, kBlock) == 0;
    if (!DeviceIsOpen) {
        DeviceFailed = true;
        ShowNotice(std::string("No sound: ") + SDL_GetError());
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    Mix_ChannelFinished([](int) { SoundHasEnded(); });
    Mix_HookMusicFinished(SoundHasEnded);
    return true;
}

void frmSound::CloseDevice() {
    if (!DeviceIsOpen)
        return;
    Mix_ChannelFinished(nullptr);
    Mix_HookMusicFinished(nullptr);
    Mix_HaltChannel(kWaveChannel);
    Mix_HaltMusic();
    Mix_FreeChunk(Wave);
    Mix_FreeMusic(Music);
    Wave = nullptr;
    Music = nullptr;
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    DeviceIsOpen = false;
    GiveBackMemory();
}

void frmSound::WaitForSilence() { IdleTimer.start(); }

void frmSound::CloseWhenSilent() {
    if (!IsWavePlaying() && !IsMusicPlaying())
        CloseDevice();
}

void frmSound::Prepare(Start& start, bool (frmSound::*play)()) {
    start.Pause.setInterval(kStartInterval);
    start.Pause.setSingleShot(true);
    connect(&start.Pause, &QTimer::timeout, this, [this, &start, play] {
        if (start.Waits)
            Begin(start, play);
    });
}

void frmSound::Begin(Start& start, bool (frmSound::*play)()) {
    start.Waits = start.Pause.isActive();
    if (start.Waits)
        return;
    if ((this->*play)())
        start.Pause.start();
}

void frmSound::PlayWave() { Begin(WaveStart, &frmSound::StartWave); }

void frmSound::PlayMusic() { Begin(MusicStart, &frmSound::StartMusic); }

bool frmSound::StartWave() {
    if (!OpenDevice())
        return false;
    StopWave();
    Mix_FreeChunk(Wave);
    Wave = IsPlayableWave(HeadOf(WaveFile), SizeOf(WaveFile))
               ? Mix_LoadWAV(WaveFile.string().c_str())
               : nullptr;
    Mix_Volume(kWaveChannel, WaveVolume);
    if (Wave == nullptr || Mix_PlayChannel(kWaveChannel, Wave, 0) < 0)
        TellUnplayable(WaveFile);
    WaitForSilence();
    return Wave != nullptr;
}

bool frmSound::StartMusic() {
    if (!OpenDevice())
        return false;
    StopMusic();
    Mix_FreeMusic(Music);
    const bool isMusic = IsMusic(MusicFile);
    Music = isMusic ? Mix_LoadMUS(MusicFile.string().c_str()) : nullptr;
    Mix_VolumeMusic(MusicVolume);
    if (isMusic && !HasInstruments())
        ShowNotice("No music: the instruments (a soundfont) are missing");
    else if (Music == nullptr || Mix_PlayMusic(Music, 1) < 0)
        TellUnplayable(MusicFile);
    WaitForSilence();
    return Music != nullptr;
}

void frmSound::StopWave() {
    WaveStart.Waits = false;
    if (DeviceIsOpen)
        Mix_HaltChannel(kWaveChannel);
}

void frmSound::StopMusic() {
    MusicStart.Waits = false;
    if (DeviceIsOpen)
        Mix_HaltMusic();
}

void frmSound::SetWaveVolume(int percent) { WaveVolume = MixerVolume(percent); }

void frmSound::SetMusicVolume(int percent) { MusicVolume = MixerVolume(percent); }

bool frmSound::IsWavePlaying() const {
    return WaveStart.Waits || (DeviceIsOpen && Mix_Playing(kWaveChannel) != 0);
}

bool frmSound::IsMusicPlaying() const {
    return MusicStart.Waits || (DeviceIsOpen && Mix_PlayingMusic() != 0);
}

namespace {

PlayState StateOf(bool isPlaying) { return isPlaying ? PlayState::Playing : PlayState::Stopped; }

} // namespace

namespace wavPlayer {

PlayState State() { return StateOf(Form && Form->IsWavePlaying()); }

void SetURL(const std::filesystem::path& file) { Sounds().WaveFile = file; }

void SetVolume(std::int32_t percent) { Sounds().SetWaveVolume(percent); }

void Play() { Sounds().PlayWave(); }

void Stop() {
    if (Form)
        Form->StopWave();
}

} // namespace wavPlayer

namespace midiPlayer {

PlayState State() { return StateOf(Form && Form->IsMusicPlaying()); }

void SetFileName(const std::filesystem::path& file) { Sounds().MusicFile = file; }

void SetVolume(std::int32_t hundredths) { Sounds().SetMusicVolume((hundredths + 10000) / 100); }

void Play() { Sounds().PlayMusic(); }

void Stop() {
    if (Form)
        Form->StopMusic();
}

} // namespace midiPlayer

void SetEnabled(SoundTimer timer, bool enabled) {
    QTimer& own = timer == SoundTimer::wavTimer ? Sounds().wavTimer : Sounds().midiTimer;
    if (!enabled)
        own.stop();
    else if (!own.isActive()) // to start it anew would put its tick off
        own.start();
}

} // namespace mw
