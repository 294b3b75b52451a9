#include "sound/PlaySound.h"

#include "base/Notice.h"
#include "config/FileHandler.h"
#include "config/MudList.h"
#include "net/http/DownLoad.h"
#include "net/http/FileDownloader.h"
#include "ui/Players.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>

namespace mw {
namespace {

constexpr std::int32_t kFullVolume = 100;
constexpr std::int16_t kDefaultPriority = 50;

std::set<std::filesystem::path> TidyFolders; // of sounds; a part in one may be this client's own

std::filesystem::path SoundPath(const std::string& fileName) {
    return PathBelow(MudAt(CurrentMud).Name + "\\sounds\\" + fileName);
}

bool IsNameBelow(const std::string& fileName) {
    return IsFolderName(MudAt(CurrentMud).Name) && IsRelativeName(fileName);
}

// Where the sound lies. Nothing when it is not there; it is fetched then, if it may be.
std::optional<std::filesystem::path> FindOrFetch(const std::string& fileName,
                                                 const std::string& address) {
    if (!IsNameBelow(fileName))
        return std::nullopt;
    const std::filesystem::path path = SoundPath(fileName);
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored))
        return path;
    if (IsWebAddress(address) && MudAt(CurrentMud).SndD) {
        LastRequestedDownload = address;
        FetchSound(address);
    }
    return std::nullopt;
}

std::int32_t VolumeOrDefault(std::int32_t volume) {
    return volume == 0 ? kFullVolume : std::clamp(volume, std::int32_t{0}, kFullVolume);
}

// Compared with what plays, which counts as 0.
bool MustWait(PlayState state, std::int16_t priority) {
    return state == PlayState::Playing &&
           PlayingPriority <= (priority == 0 ? kDefaultPriority : priority);
}

void QueueWave(const std::filesystem::path& path, std::int32_t volume) {
    if (cboWavPlayer.size() >= kMostWaitingWaves)
        return;
    cboWavPlayer.push_back(path);
    cboWavVolume.push_back(std::to_string(volume));
    SetEnabled(SoundTimer::wavTimer, true);
}

// Once for each folder, before the first download into it.
void Tidy(const std::filesystem::path& folder) {
    std::error_code failure;
    const std::filesystem::path own = std::filesystem::weakly_canonical(folder, failure);
    if (!failure && TidyFolders.insert(own).second)
        DeleteLeftParts(own);
}

bool IsFull(const std::filesystem::path& folder) {
    if (folder == FullFolder)
        return true;
    Tidy(folder);
    std::size_t files = 0;
    std::uintmax_t bytes = 0;
    std::error_code failure; // a folder that can't be read is taken for an empty one
    for (std::filesystem::directory_iterator file(folder, failure), end; file != end;
         file.increment(failure)) {
        std::error_code isNoFile;
        const std::uintmax_t size = file->file_size(isNoFile);
        bytes += isNoFile ? 0 : size;
        ++files;
    }
    if (files < kMostSounds && bytes < kLargestSounds)
        return false;
    FullFolder = folder;
    return true;
}

} // namespace

void PlayWave(const std::string& fileName, const std::string& address, std::int32_t volume,
              std::int16_t priority) {
    if (!MudAt(CurrentMud).SndW)
        return;
    const auto path = FindOrFetch(fileName, address);
    if (!path)
        return;
    if (MustWait(wavPlayer::State(), priority))
        return QueueWave(*path, VolumeOrDefault(volume));
    wavPlayer::SetURL(*path);
    wavPlayer::Stop();
    wavPlayer::SetVolume(VolumeOrDefault(volume));
    wavPlayer::Play();
}

void PlayMusic(const std::string& fileName, const std::string& address, std::int32_t volume,
               std::int16_t priority) {
    if (!MudAt(CurrentMud).SndW) // meant: not the switch of the music
        return;
    const auto path = FindOrFetch(fileName, address);
    if (!path || MustWait(midiPlayer::State(), priority))
        return;
    midiPlayer::Stop();
    midiPlayer::SetFileName(*path);
    midiPlayer::SetVolume(VolumeOrDefault(volume) * 100 - 10000);
    midiPlayer::Play();
}

void wavTimer_Timer() {
    if (cboWavPlayer.empty()) {
        SetEnabled(SoundTimer::wavTimer, false);
    } else if (wavPlayer::State() == PlayState::Stopped) {
        wavPlayer::SetVolume(std::stoi(cboWavVolume.front()));
        wavPlayer::SetURL(cboWavPlayer.front());
        cboWavPlayer.pop_front();
        cboWavVolume.pop_front();
        wavPlayer::Play();
    }
}

void midiTimer_Timer() {
    if (cboMidiPlayer.empty()) {
        SetEnabled(SoundTimer::midiTimer, false);
    } else if (midiPlayer::State() == PlayState::Stopped) {
        // Meant: the text of the other queue.
        midiPlayer::SetFileName(cboWavPlayer.empty() ? std::filesystem::path()
                                                     : cboWavPlayer.front());
        cboMidiPlayer.pop_front();
        midiPlayer::Play();
    }
}

void FetchSound(const std::string& address) {
    const std::string name = address.substr(address.rfind('/') + 1);
    if (FolderIsTaken || !IsFileName(name) || !IsNameBelow(name))
        return;
    // With too many downloads FetchFile refuses by itself, for less than a look into the folder.
    if (!TooManyDownloads() && IsFull(SoundPath(name).parent_path()))
        ShowNotice("Not downloaded, because the game has too many sounds already: " + address);
    else
        FetchFile(address, SoundPath(name));
}

bool IsWebAddress(const std::string& address) {
    const std::size_t colon = address.find("://");
    std::string scheme = address.substr(0, colon);
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (colon == std::string::npos || (scheme != "http" && scheme != "https"))
        return false;
    const std::string rest = address.substr(colon + 3);
    const std::size_t path = rest.find_first_of("/?#");
    if (path == std::string::npos || rest[path] != '/')
        return false;
    const std::string server = rest.substr(0, path);
    const std::string host = server.substr(server.rfind('@') + 1); // npos + 1 is 0
    return !host.empty() && host.front() != ':';
}

void ResetPlaySound() {
    cboWavPlayer.clear();
    cboWavVolume.clear();
    cboMidiPlayer.clear();
    cboMidiVolume.clear();
    PlayingPriority = 0;
    LastRequestedDownload.clear();
    FullFolder.clear();
    TidyFolders.clear();
}

} // namespace mw
