// Any text as the file of a macro set: it is read, or ends in the boxes or the error that are
// stated.
#include "automation/MacroFiles.h"
#include "base/Error.h"
#include "fuzz/Fresh.h"

namespace mw {
namespace {

MacroSet Empty() { return OneMacroSet("Default")[0]; }

// As the file keeps it: entries without a text are gaps, and end no table.
MacroSet Kept(MacroSet set) {
    for (AliasEntry& alias : set.Aliases) {
        if (alias.Alias.empty())
            alias = {};
    }
    while (set.Aliases.size() > 1 && set.Aliases.back().Alias.empty())
        set.Aliases.pop_back();
    std::vector<TriggerEntry>& triggers = Edit(set.Triggers);
    while (triggers.size() > 1 && triggers.back().Trigger.empty())
        triggers.pop_back();
    return set;
}

// Each thing that is refused, or is read into entry 0, has three boxes.
void Read(const std::string& text) {
    const Fresh fresh;
    try {
        const MacroSet set = ParseMacroSet(text, Empty());
        Must(fakes::Messages.size() % 3 == 0);
        fakes::Messages.clear();
        Must(ParseMacroSet(FormatMacroSet(set), Empty()) == Kept(set));
        Must(fakes::Messages.empty());
    } catch (const Error& error) {
        Must(error.Number == SubscriptOutOfRange || error.Number == TypeMismatch ||
             error.Number == Overflow || error.Number == InputPastEnd);
    } catch (const EndProgram&) {
        Must(!fakes::Messages.empty() && fakes::Messages.size() % 3 == 0);
    }
}

} // namespace
} // namespace mw

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    mw::Read(Text(bytes, count));
    return 0;
}
