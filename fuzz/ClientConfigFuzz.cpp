// Any text as Data\client.cfg: it is read, or ends in the boxes or the error that are stated.
#include "automation/Macros.h"
#include "base/Error.h"
#include "config/ClientConfig.h"
#include "fuzz/Fresh.h"

#include <algorithm>

namespace mw {
namespace {

std::vector<std::string> NamesOf(const ClientConfig& config) {
    std::vector<std::string> names;
    for (const MacroSet& set : config.Sets)
        names.push_back(set.Name);
    return names;
}

ClientConfig Defaults() { return {kDefaultPalette, ";", OneMacroSet("Default")}; }

// The two boxes: a text, and the line that it is about.
void MustShowTheLine(const std::string& text) {
    Must(fakes::Messages.size() == 2);
    Must(fakes::Messages[0].ends_with("occured loading the configuration file"));
    Must(text.find(fakes::Messages[1]) != std::string::npos);
}

// A name with a "=" loses what stands before it, one that begins with "[" is a header.
void MustComeBack(const ClientConfig& config) {
    const std::vector<std::string> names = NamesOf(config);
    const bool canBeKept = std::ranges::none_of(names, [](const std::string& name) {
        return name.starts_with('[') || name.find('=') != std::string::npos;
    });
    if (!canBeKept)
        return;
    const ClientConfig again = ParseClientConfig(FormatClientConfig(config), Defaults());
    Must(again.Colours == config.Colours && again.Escape == config.Escape);
    Must(NamesOf(again) == names);
}

void Read(const std::string& text) {
    const Fresh fresh;
    try {
        const ClientConfig config = ParseClientConfig(text, Defaults());
        if (!fakes::Messages.empty())
            MustShowTheLine(text);
        MustComeBack(config);
    } catch (const Error& error) {
        Must(error.Number == TypeMismatch || error.Number == Overflow ||
             error.Number == InputPastEnd);
        Must(fakes::Messages.empty());
    } catch (const EndProgram&) {
        MustShowTheLine(text);
    }
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    mw::Read(Text(bytes, count));
    return 0;
}
