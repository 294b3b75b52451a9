// The hidden sound window: one player for waves, one for music, and the timers of their queues.
//
// Made when the first sound is asked for. It implements ui/Players.h with SDL2_mixer, which mixes
// in a thread of its own. The audio device is open only while something plays and a little longer,
// so that an idle client does nothing.
#pragma once

#include <filesystem>

#include <QObject>
#include <QTimer>

struct Mix_Chunk;
typedef struct _Mix_Music Mix_Music;

namespace mw {

class frmSound : public QObject {
    Q_OBJECT

public:
    frmSound();
    ~frmSound() override;

    // At once or, when another was begun just before, a moment later; until then it counts as
    // playing.
    void PlayWave();
    void PlayMusic();
    void StopWave();
    void StopMusic();
    void SetWaveVolume(int percent);
    void SetMusicVolume(int percent);
    bool IsWavePlaying() const;
    bool IsMusicPlaying() const;

    // A sound has begun or ended: if it stays silent, the device is closed after a while.
    void WaitForSilence();

    std::filesystem::path WaveFile;
    std::filesystem::path MusicFile;
    QTimer wavTimer;
    QTimer midiTimer;

private:
    // A sound that is asked for right after another has begun waits until the pause is over, or a
    // server that starts and stops one again and again would have the client do nothing but load
    // it.
    struct Start {
        QTimer Pause; // runs from the last start on
        bool Waits = false;
    };

    bool OpenDevice();
    void CloseDevice();
    void CloseWhenSilent();
    void Prepare(Start& start, bool (frmSound::*play)());
    void Begin(Start& start, bool (frmSound::*play)());
    bool StartWave(); // true when it was loaded
    bool StartMusic();

    Start WaveStart;
    Start MusicStart;
    Mix_Chunk* Wave = nullptr;
    Mix_Music* Music = nullptr;
    QTimer IdleTimer;
    int WaveVolume = 0; // of the mixer, as MusicVolume
    int MusicVolume = 0;
    bool DeviceIsOpen = false;
    bool DeviceFailed = false;
};

} // namespace mw
