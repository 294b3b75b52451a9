// Any answer of a web server: header up to the first empty line, then the body, in pieces.
//
// The first byte tells how long the pieces are, the second what is the matter besides. The answer
// comes to the control alone, and to one with its window.
#include "fuzz/Fresh.h"
#include "net/http/DownLoad.h"
#include "net/http/FileDownloader.h"
#include "net/http/WebBoxes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace mw {
namespace {

namespace fs = std::filesystem;

enum Matter : std::uint8_t { Resumes = 1, IsCancelled = 2, HasLittleRoom = 4, NameIsTaken = 8 };

const std::string kAddress = "http://127.0.0.1/rain.wav";
constexpr std::size_t kLeftOver = 5000; // bytes of a partial file that is resumed

struct Answer {
    std::string Head;
    std::string Body;
    std::size_t Piece = 1;
};

Answer AnswerOf(const std::string& text, std::size_t piece) {
    const std::size_t end = text.find("\r\n\r\n");
    const std::size_t head = end == std::string::npos ? text.size() : end + 4;
    return {text.substr(0, head), text.substr(head), piece};
}

fs::path Destination() { return ApplicationFolder / "sounds" / "rain.wav"; }

void MakeFile(const fs::path& file, std::size_t size) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << std::string(size, 'x');
}

// The header is there at once. A transfer that is cancelled meanwhile is gone.
template <typename Tell> void Receive(std::int32_t transfer, const Answer& answer, Tell tell) {
    fakes::Transfers[transfer].Header = answer.Head;
    tell();
    for (std::size_t at = 0; at < answer.Body.size(); at += answer.Piece) {
        if (!fakes::Transfers.contains(transfer))
            return;
        fakes::Transfers[transfer].Body += answer.Body.substr(at, answer.Piece);
        tell();
    }
    if (fakes::Transfers.contains(transfer)) {
        fakes::Transfers[transfer].Ended = true;
        tell();
    }
}

// A file stands there only whole, and nothing is left beside it.
void MustBeWhole(const FileDownloader& control, const Answer& answer, std::uint8_t matter) {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(Destination().parent_path(), ignored))
        Must(entry.path() == Destination());
    if (!fs::is_regular_file(Destination()))
        return;
    Must(control.succeeded && control.received == control.total);
    Must(fs::file_size(Destination()) == static_cast<std::uintmax_t>(control.total));
    Must((matter & Resumes) != 0 || control.total <= static_cast<std::int64_t>(answer.Body.size()));
}

void Resume(FileDownloader& control) {
    MakeFile(fs::path(Destination()) += ".1.part", kLeftOver);
    control.resuming = true;
    control.received = kLeftOver;
    control.total = kLeftOver + 100;
}

void FetchAlone(const Answer& answer, std::uint8_t matter) {
    FileDownloader control(1);
    int completions = 0;
    int ends = 0;
    control.DowloadComplete = [&completions] { ++completions; };
    control.Ended = [&ends] { ++ends; };
    control.DownloadErrors = control.DownloadEvents = control.PlainBox = [](const std::string&) {};
    control.DownloadProgress = [&control, matter](const std::string& percent) {
        Must(std::stoll(percent) >= 0);
        if ((matter & IsCancelled) != 0)
            control.Cancel();
    };
    if ((matter & Resumes) != 0)
        Resume(control);
    control.DownloadFile(kAddress, Destination());
    Receive(1, answer, [&control] { control.StateChanged(); });
    Must(!control.IsRunning() && ends == 1 && fakes::Transfers.empty());
    Must(completions == (control.succeeded && !control.cancelled ? 1 : 0));
    MustBeWhole(control, answer, matter);
}

// The window goes when its boxes are answered, and its slot is free then.
void FetchInAWindow(const Answer& answer) {
    FetchFile(kAddress, Destination());
    const std::int32_t number = fakes::Transfers.begin()->first;
    Receive(number, answer, [number] { inet_StateChanged(number); });
    for (std::size_t boxes = 0; boxes <= kMostWaitingBoxes; ++boxes)
        WebBox_Closed();
    const std::string close = "CloseDownloadWindow " + std::to_string(number);
    Must(std::ranges::find(fakes::Calls, close) != fakes::Calls.end());
    frmDownload_Unload(number);
    Must(DownloadTable.size() == 1 && DownloadTable[0] == DownloadSlot{});
    Must(fakes::Transfers.empty());
}

void Fetch(const std::string& text, std::size_t piece, std::uint8_t matter) {
    const Fresh fresh;
    fakes::FreeSpace = (matter & HasLittleRoom) != 0 ? 3 : 1 << 20;
    if ((matter & NameIsTaken) != 0)
        MakeFile(Destination() / "inside", 1); // a folder of that name
    const Answer answer = AnswerOf(text, piece);
    FetchAlone(answer, matter);
    FetchInAWindow(answer);
    fs::remove_all(Destination().parent_path());
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count >= 2)
        mw::Fetch(Text(bytes + 2, count - 2), bytes[0] + std::size_t{1}, bytes[1]);
    return 0;
}
