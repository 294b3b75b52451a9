#include "automation/TriggerMatcher.h"
#include "automation/Triggers.h"
#include "bench/Corpus.h"
#include "bench/Work.h"

namespace bench {
namespace {

constexpr std::size_t kLines = 2000;

std::function<void()> PrepareCheck(std::size_t count) {
    mw::MacroSets = mw::OneMacroSet("Default");
    if (count > 0)
        mw::CurrentSet().Triggers = mw::TriggerTable(Triggers(count));
    return [lines = Lines(kLines)] {
        for (const std::string& line : lines)
            mw::CheckTriggers(line);
    };
}

std::function<void()> PrepareBuild(std::size_t count) {
    return [table = Triggers(count), matcher = mw::TriggerMatcher()]() mutable {
        matcher = mw::BuildMatcher(table);
    };
}

} // namespace

std::vector<Work> TriggerWork() {
    std::vector<Work> all;
    for (const std::size_t count : {0U, 100U, 1000U, 10000U})
        all.push_back({"trigger check at " + std::to_string(count), kLines, Unit::Lines,
                       [count] { return PrepareCheck(count); }});
    for (const std::size_t count : {100U, 1000U, 10000U})
        all.push_back({"automaton of " + std::to_string(count), count, Unit::Entries,
                       [count] { return PrepareBuild(count); }});
    return all;
}

} // namespace bench
