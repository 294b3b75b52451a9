// Any answer of a web server: header up to the first empty line, then the body, in pieces.
#include "fuzz/Fresh.h"
#include "net/http/FileDownloader.h"

#include <algorithm>
#include <filesystem>

namespace {

void Wire(mw::FileDownloader& control) {
    control.DowloadComplete = control.Ended = [] {};
    control.DownloadProgress = control.DownloadErrors = control.DownloadEvents =
        control.PlainBox = [](const std::string&) {};
}

// The header is there at once, the body in pieces of the size given.
void Answer(mw::FileDownloader& control, const std::string& answer, std::size_t piece) {
    const std::size_t end = answer.find("\r\n\r\n");
    const std::size_t head = end == std::string::npos ? answer.size() : end + 4;
    fakes::Transfers[1].Header = answer.substr(0, head);
    control.StateChanged();
    for (std::size_t at = head; at < answer.size() && fakes::Transfers.contains(1); at += piece) {
        fakes::Transfers[1].Body += answer.substr(at, piece);
        control.StateChanged();
    }
    if (fakes::Transfers.contains(1)) {
        fakes::Transfers[1].Ended = true;
        control.StateChanged();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count == 0)
        return 0;
    const Fresh fresh;
    fakes::FreeSpace = 1 << 20;
    const std::filesystem::path folder = mw::ApplicationFolder / "sounds";
    mw::FileDownloader control(1);
    Wire(control);
    control.DownloadFile("http://127.0.0.1/rain.wav", folder / "rain.wav");
    Answer(control, Text(bytes + 1, count - 1), bytes[0] + std::size_t{1});
    if (control.IsRunning())
        __builtin_trap(); // a run ends when its transfer does
    std::error_code ignored;
    for (const auto& file : std::filesystem::directory_iterator(folder, ignored)) {
        if (file.path().filename() != "rain.wav")
            __builtin_trap(); // nothing is left beside the file
    }
    std::filesystem::remove_all(folder, ignored);
    return 0;
}
