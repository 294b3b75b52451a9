#include "net/http/DownLoad.h"

#include "base/Notice.h"
#include "config/FileHandler.h"
#include "net/http/FileDownloader.h"
#include "net/http/WebBoxes.h"
#include "ui/DownloadControls.h"
#include "ui/Inet.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace mw {
namespace {

struct Download {
    explicit Download(std::int32_t number) : Number(number), Control(number) {}

    std::int32_t Number;
    FileDownloader Control;
    int OpenBoxes = 0; // shown or waiting
};

std::map<std::int32_t, std::shared_ptr<Download>> Downloads; // by number, while the window is there
std::int32_t LastNumber = 0;

// Held by whoever calls into it: its window may be closed, and the entry go, meanwhile.
std::shared_ptr<Download> DownloadOf(std::int32_t number) {
    const auto found = Downloads.find(number);
    return found == Downloads.end() ? nullptr : found->second;
}

void CloseWhenDone(std::int32_t number) {
    const auto download = DownloadOf(number);
    if (download && !download->Control.IsRunning() && download->OpenBoxes == 0)
        CloseDownloadWindow(number);
}

void ShowBox(std::int32_t number, const std::string& text, bool isError) {
    if (const auto download = DownloadOf(number))
        ++download->OpenBoxes;
    QueueWebBox({text, isError, [number] {
                     if (const auto download = DownloadOf(number))
                         --download->OpenBoxes;
                     CloseWhenDone(number);
                 }});
}

void ShowError(std::int32_t number, const std::string& text) {
    ShowBox(number, text, true);
    SetProgress(number, 0);
    DownloadRunning = false;
    if (const auto download = DownloadOf(number))
        download->Control.Cancel();
}

void Wire(std::int32_t number, FileDownloader& control) {
    control.DowloadComplete = [number] { CloseDownloadWindow(number); };
    control.DownloadProgress = [number](const std::string& percent) {
        // More may come than was announced.
        SetProgress(number, static_cast<std::int16_t>(std::min(std::stoll(percent), 100LL)));
    };
    control.DownloadErrors = [number](const std::string& text) { ShowError(number, text); };
    control.DownloadEvents = [](const std::string&) {}; // nobody is told
    control.PlainBox = [number](const std::string& text) { ShowBox(number, text, false); };
    control.Ended = [number] { CloseWhenDone(number); };
}

} // namespace

std::int16_t TakeSlot(std::vector<DownloadSlot>& table) {
    const auto isFree = [](const DownloadSlot& slot) { return slot.Busy == 0; };
    while (table.size() > 1 && isFree(table.back()))
        table.pop_back();
    const auto free = std::find_if(table.begin(), table.end(), isFree);
    const auto slot = static_cast<std::int16_t>(free - table.begin());
    if (free == table.end())
        table.emplace_back();
    table[static_cast<std::size_t>(slot)].Busy = 1;
    return slot;
}

bool TooManyDownloads() {
    const auto busy = std::count_if(DownloadTable.begin(), DownloadTable.end(),
                                    [](const DownloadSlot& slot) { return slot.Busy != 0; });
    return static_cast<std::size_t>(busy) >= kMostDownloads;
}

void FetchFile(const std::string& address, const std::filesystem::path& destination) {
    if (TooManyDownloads()) {
        ShowNotice("Not downloaded, because too many are under way: " + address);
        return;
    }
    const std::int16_t slot = TakeSlot(DownloadTable);
    const auto download = std::make_shared<Download>(++LastNumber);
    DownloadTable[static_cast<std::size_t>(slot)].Download = download->Number;
    Downloads[download->Number] = download;
    DownloadRunning = true;
    Wire(download->Number, download->Control);
    OpenDownloadWindow(download->Number, slot, PathText(destination.filename()));
    download->Control.DownloadFile(address, destination);
}

void inet_StateChanged(std::int32_t transfer) {
    if (const auto download = DownloadOf(transfer))
        download->Control.StateChanged();
}

void frmDownload_Unload(std::int32_t number) {
    const auto download = DownloadOf(number);
    if (!download)
        return;
    Downloads.erase(number);
    download->Control.Cancel();
    for (DownloadSlot& slot : DownloadTable) {
        if (slot.Download == number)
            slot = {};
    }
}

void AbandonDownloads() {
    const auto abandoned = std::exchange(Downloads, {});
    DropWebBoxes();
    for (const auto& [number, download] : abandoned)
        CloseDownloadWindow(number);
    ResetDownloads();
}

void ResetDownloads() {
    Downloads.clear();
    DownloadTable.assign(1, {});
    DownloadRunning = false;
}

} // namespace mw
