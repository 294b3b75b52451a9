#include "net/http/FileDownloader.h"

#include "base/Notice.h"
#include "config/FileHandler.h"
#include "ui/Disk.h"
#include "ui/Inet.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kFetchedAgain = 4096; // bytes of a partial file, when one is resumed
constexpr const char* kPartExtension = ".part";

struct StatusText {
    std::string_view Status;
    std::string_view Text;
};

constexpr StatusText kRefusals[] = {
    {"204", "Nothing to download!"},
    {"401", "Authorization failed!"},
};

bool IsSameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

// The first line, its CR included.
std::string FirstLine(const std::string& header) {
    const std::string line = header.substr(0, header.find('\r') + 1);
    return line.empty() ? "<nothing>" : line;
}

// By its name, FILE.NUMBER.part.
bool IsPartialFile(const fs::path& file) {
    const fs::path::string_type number = file.stem().extension().native();
    return file.extension() == kPartExtension && number.size() > 1 &&
           std::all_of(number.begin() + 1, number.end(),
                       [](auto character) { return character >= '0' && character <= '9'; });
}

// Three characters, where a status line has its code. Nothing without a status line.
std::string StatusOf(const std::string& header) {
    return header.starts_with("HTTP/") && header.size() >= 12 ? header.substr(9, 3) : "";
}

} // namespace

void DeleteLeftParts(const fs::path& folder) {
    std::error_code failure;
    for (fs::directory_iterator file(folder, failure), end; file != end; file.increment(failure)) {
        std::error_code ignored;
        if (IsPartialFile(file->path()) && file->is_regular_file(ignored))
            fs::remove(file->path(), ignored);
    }
}

std::int64_t ContentLength(const std::string& header) {
    constexpr std::string_view kField = "\ncontent-length:";
    const auto field =
        std::search(header.begin(), header.end(), kField.begin(), kField.end(), IsSameLetter);
    if (field == header.end())
        return 0;
    std::string_view value(header);
    value.remove_prefix(static_cast<std::size_t>(field - header.begin()) + kField.size());
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    std::int64_t length = 0;
    const auto [end, failure] = std::from_chars(value.data(), value.data() + value.size(), length);
    if (failure == std::errc::result_out_of_range)
        return std::numeric_limits<std::int64_t>::max();
    return std::max<std::int64_t>(length, 0);
}

std::string PercentText(std::int64_t received, std::int64_t total) {
    return std::to_string(
        std::llrint(100.0 * static_cast<double>(received) / static_cast<double>(total)));
}

FileDownloader::~FileDownloader() {
    inet::Cancel(Transfer);
    CloseFile();
    if (IsRunning())
        DeletePartialFile();
}

void FileDownloader::DownloadFile(const std::string& address, const fs::path& destination,
                                  const std::string& userName, const std::string& password) {
    Cancel();
    cancelled = false;
    succeeded = false;
    Address = address;
    Destination = destination;
    Now = State::Requesting;
    if (resuming) {
        received = std::max<std::int64_t>(received - kFetchedAgain, 0);
        DownloadEvents("Resuming download");
    } else {
        DeletePartialFile(); // one that a crash may have left
        received = total = 0;
        DownloadEvents("Getting file information");
    }
    if (cancelled) // by who was told
        return;
    inet::Execute(Transfer,
                  {address, userName, password, "Range: bytes=" + std::to_string(received) + "-"});
}

void FileDownloader::Cancel() {
    cancelled = true;
    if (IsRunning())
        End();
}

void FileDownloader::StateChanged() {
    if (Now == State::Requesting) {
        if (const auto header = inet::GetHeader(Transfer))
            ReadHeader(*header);
    }
    while (Now == State::Receiving) {
        const auto chunk = inet::GetChunk(Transfer, kChunk);
        if (!chunk)
            return;
        TakeChunk(*chunk);
    }
}

void FileDownloader::ReadHeader(const std::string& header) {
    const std::string status = StatusOf(header);
    const auto* const refusal =
        std::find_if(std::begin(kRefusals), std::end(kRefusals),
                     [&status](const StatusText& row) { return row.Status == status; });
    if (status == "200" && resuming) {
        DeletePartialFile();
        Fail("The server is unable to resume this download.");
    } else if (status == "200" || status == "206") {
        BeginFile(header);
    } else if (refusal != std::end(kRefusals)) {
        Fail(std::string(refusal->Text));
    } else if (status == "404") {
        Fail("The file, \"" + ShownLine(Address) + "\" was not found!");
    } else if (status.empty()) {
        Fail("Cannot establish connection.");
    } else {
        Fail("The server returned the following response:\r\r" + ShownLine(FirstLine(header)));
    }
}

void FileDownloader::BeginFile(const std::string& header) {
    if (!resuming)
        total = ContentLength(header);
    if (total == 0) // meant: counts as complete, with no file written
        return End();
    if (total > kLargestDownload)
        return GiveUp();
    if (!HasRoom())
        return Fail("There is not enough free space on disk for this file.");
    std::error_code ignored;
    fs::create_directory(Destination.parent_path(), ignored);
    File.clear();
    File.open(PartialFile(), resuming ? std::ios::binary | std::ios::in | std::ios::out
                                      : std::ios::binary | std::ios::out);
    File.seekp(received);
    Now = State::Receiving;
    if (!File)
        End();
}

bool FileDownloader::HasRoom() const {
    return FreeSpace(Destination.parent_path()) >= static_cast<std::uint64_t>(total);
}

// A chunk of one byte or none is the last: chunks are full unless the body ends.
void FileDownloader::TakeChunk(const std::string& chunk) {
    File.write(chunk.data(), static_cast<std::streamsize>(chunk.size()));
    if (!File)
        return End();
    received += static_cast<std::int64_t>(chunk.size());
    if (received > kLargestDownload)
        return GiveUp();
    DownloadProgress(PercentText(received, total));
    if (Now == State::Receiving && chunk.size() <= 1)
        End();
}

// Told by a notice, and else as if the player had cancelled.
void FileDownloader::GiveUp() {
    ShowNotice("Not downloaded, because it is too large: " + Address);
    Cancel();
}

void FileDownloader::Fail(const std::string& text) {
    cancelled = true;
    Now = State::Ending;
    DownloadErrors(text);
    End();
}

void FileDownloader::End() {
    Now = State::Ending; // what is told below may ask to cancel
    inet::Cancel(Transfer);
    CloseFile();
    succeeded = received == total && KeepFile();
    if (!succeeded)
        EndShort();
    else if (!cancelled)
        DowloadComplete();
    Now = State::Idle;
    Ended();
}

void FileDownloader::EndShort() {
    PlainBox(PathText(Destination));
    std::error_code ignored;
    if (!fs::exists(PartialFile(), ignored))
        cancelled = true;
    else if (!cancelled)
        DownloadErrors("The connection with the server was reset.");
    DeletePartialFile();
}

void FileDownloader::CloseFile() {
    if (File.is_open())
        File.close();
}

// The whole file takes its name. True too when there is none to be named.
bool FileDownloader::KeepFile() {
    std::error_code failure;
    if (!fs::exists(PartialFile(), failure))
        return true;
    if (!File) // the last bytes did not fit when it was closed
        return false;
    fs::rename(PartialFile(), Destination, failure);
    return !failure;
}

void FileDownloader::DeletePartialFile() const {
    std::error_code ignored;
    fs::remove(PartialFile(), ignored);
}

// Beside the file, under a name that no other run uses.
fs::path FileDownloader::PartialFile() const {
    return fs::path(Destination) += "." + std::to_string(Transfer) + kPartExtension;
}

} // namespace mw
