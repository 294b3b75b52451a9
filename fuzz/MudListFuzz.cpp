// Any text as Data\muds.lst: it is read, or ends in the boxes or the error that are stated.
#include "base/Error.h"
#include "config/MudList.h"
#include "fuzz/Fresh.h"

namespace mw {
namespace {

// What is kept comes back, with the last wave switch in entry 0. A first name that is not the
// maker's would be pushed on to entry 1.
void MustComeBack(std::vector<MudEntry> muds) {
    if (muds[0].Name.find("Quillmere") == std::string::npos)
        return;
    const std::vector<MudEntry> again = ParseMudList(FormatMudList(muds), DefaultMudList());
    muds[0].SndW = muds.back().SndW;
    Must(again == muds);
}

void Read(const std::string& text) {
    const Fresh fresh;
    try {
        const std::vector<MudEntry> muds = ParseMudList(text, DefaultMudList());
        Must(fakes::Messages.empty());
        MustComeBack(muds);
    } catch (const Error& error) {
        Must(error.Number == TypeMismatch || error.Number == Overflow ||
             error.Number == InputPastEnd);
        Must(fakes::Messages.empty());
    } catch (const EndProgram&) {
        Must(fakes::Messages.size() == 2);
        Must(text.find(fakes::Messages[1]) != std::string::npos);
    }
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    mw::Read(Text(bytes, count));
    return 0;
}
