// The downloads that are under way, each with its window, and the table of their slots.
//
// Sounds are fetched through it. A window closes when its run has ended; a failed one after the
// player has closed its boxes. Closing the window by hand cancels the run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mw {

inline constexpr std::size_t kMostDownloads = 32; // at once

struct DownloadSlot {
    std::int32_t Download = 0; // its number, while the slot is busy
    std::int16_t Busy = 0;     // 1 while it is

    bool operator==(const DownloadSlot&) const = default;
};

inline std::vector<DownloadSlot> DownloadTable(1);
inline bool DownloadRunning = false; // a download has begun and none has failed since

// The slot for a new download: free ones at the end of table are cut off first, then the first free
// one is taken, or a new one is added.
std::int16_t TakeSlot(std::vector<DownloadSlot>& table);

// True while kMostDownloads are under way.
bool TooManyDownloads();

// Opens a download window and starts to fetch address into destination. Returns at once. Not done,
// with a notice, when there are too many downloads.
void FetchFile(const std::string& address, const std::filesystem::path& destination);

// The window of that download is closed: its run is cancelled and its slot is free.
void frmDownload_Unload(std::int32_t download);

// Ends all downloads without a word, their partial files deleted. Used when the program stops.
void AbandonDownloads();

// The table as it is at program start: one free slot.
void ResetDownloads();

} // namespace mw
