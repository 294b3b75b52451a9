// Fetches one file over HTTP into a path, in chunks, with progress and one set of error texts.
//
// The control sits on a download window. DownloadFile starts a run and returns; the run is driven
// by the transfer's events, so that several go on side by side and nothing ever waits for one. What
// happens is told through the six functions below, from inside StateChanged or Cancel.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace mw {

inline constexpr std::int64_t kLargestDownload = 64 * 1024 * 1024; // bytes, announced or received
inline constexpr std::size_t kChunk = 1024;                        // bytes

class FileDownloader {
public:
    // transfer is the number under which the control transfers (ui/Inet.h); no two share one.
    explicit FileDownloader(std::int32_t transfer) : Transfer(transfer) {}
    ~FileDownloader();
    FileDownloader(const FileDownloader&) = delete;
    FileDownloader& operator=(const FileDownloader&) = delete;

    // All are set before the first run.
    std::function<void()> DowloadComplete; // the misspelt name is the interface's own
    std::function<void(const std::string& percent)> DownloadProgress;
    std::function<void(const std::string& text)> DownloadErrors;
    std::function<void(const std::string& text)> DownloadEvents;
    std::function<void(const std::string& text)> PlainBox; // to be shown in a plain message box
    std::function<void()> Ended;                           // last of all, once a run

    // Starts a run that fetches address into destination, given as the player would read it; one
    // that is under way is cancelled first.
    void DownloadFile(const std::string& address, const std::filesystem::path& destination,
                      const std::string& userName = "", const std::string& password = "");

    // Ends the run that is under way, its partial file deleted.
    void Cancel();

    // The transfer has a header, some of the body or its end for the run.
    void StateChanged();

    bool IsRunning() const { return Now == State::Requesting || Now == State::Receiving; }

    bool resuming = false;  // go on with a partial file; nothing sets it
    bool succeeded = false; // result of the run that ended last: as much arrived as was announced.
                            // Meant: also when it failed before anything was
    bool cancelled = false;
    std::int64_t received = 0; // bytes written, and the start offset of the request
    std::int64_t total = 0;    // bytes announced

private:
    enum class State { Idle, Requesting, Receiving, Ending };

    void ReadHeader(const std::string& header);
    void BeginFile(const std::string& header);
    bool HasRoom() const;
    void TakeChunk(const std::string& chunk);
    void GiveUp();
    void Fail(const std::string& text);
    void End();
    void EndShort();
    void CloseFile();
    bool KeepFile();
    void DeletePartialFile() const;
    std::filesystem::path PartialFile() const;

    std::int32_t Transfer;
    State Now = State::Idle;
    std::string Address;
    std::filesystem::path Destination;
    std::ofstream File;
};

// Deletes the partial files in folder, which runs of a client that was killed have left. None may
// be under way there.
void DeleteLeftParts(const std::filesystem::path& folder);

// The bytes that the header announces: 0 when it has no such field or one that is no number.
std::int64_t ContentLength(const std::string& header);

// 100 times received of total, as whole percent in decimal.
std::string PercentText(std::int64_t received, std::int64_t total);

} // namespace mw
