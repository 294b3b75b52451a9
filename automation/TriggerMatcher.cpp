#include "automation/TriggerMatcher.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace mw {
namespace {

using Node = TriggerMatcher::Node;

// The sorted texts that begin with a node's own text: while the tree grows a node is such a range.
struct Range {
    std::size_t First = 0;
    std::size_t Last = 0; // one past the end
    std::size_t Depth = 0;
};

std::uint32_t ChildOf(const TriggerMatcher& matcher, std::uint32_t node, unsigned char label) {
    if (node == 0)
        return matcher.RootChild[label];
    const Node& parent = matcher.Nodes[node];
    const auto first = matcher.Labels.begin() + static_cast<std::ptrdiff_t>(parent.FirstChild);
    const auto last = first + static_cast<std::ptrdiff_t>(parent.ChildCount);
    const auto found = std::lower_bound(first, last, label);
    if (found == last || *found != label)
        return 0;
    return static_cast<std::uint32_t>(found - matcher.Labels.begin());
}

// The node of the longest suffix of (node's text + label) that is in the tree.
std::uint32_t Step(const TriggerMatcher& matcher, std::uint32_t node, unsigned char label) {
    std::uint32_t child = ChildOf(matcher, node, label);
    while (child == 0 && node != 0) {
        node = matcher.Nodes[node].Fallback;
        child = ChildOf(matcher, node, label);
    }
    return child;
}

// Appends the child of parent that is reached by label.
void AddChild(TriggerMatcher& matcher, std::uint32_t parent, unsigned char label) {
    const auto child = static_cast<std::uint32_t>(matcher.Nodes.size());
    Node node;
    if (parent != 0)
        node.Fallback = Step(matcher, matcher.Nodes[parent].Fallback, label);
    matcher.Nodes.push_back(node);
    matcher.Labels.push_back(label);
    Node& above = matcher.Nodes[parent];
    if (above.ChildCount++ == 0)
        above.FirstChild = child;
    if (parent == 0)
        matcher.RootChild[label] = child;
}

} // namespace

TriggerMatcher BuildMatcher(const std::vector<TriggerEntry>& entries) {
    TriggerMatcher matcher;
    matcher.Entries.resize(entries.size());
    std::iota(matcher.Entries.begin(), matcher.Entries.end(), 0U);
    const auto text = [&](std::size_t i) {
        return std::string_view(entries[matcher.Entries[i]].Trigger);
    };
    std::stable_sort(
        matcher.Entries.begin(), matcher.Entries.end(),
        [&](std::uint32_t a, std::uint32_t b) { return entries[a].Trigger < entries[b].Trigger; });

    matcher.Nodes.emplace_back();
    matcher.Labels.push_back(0);
    std::vector<Range> ranges = {{0, entries.size(), 0}};
    // Level by level, so that a fallback, which is shorter, is there before it is needed.
    for (std::uint32_t current = 0; current < matcher.Nodes.size(); ++current) {
        const Range range = ranges[current];
        std::size_t i = range.First;
        while (i < range.Last && text(i).size() == range.Depth)
            ++i;
        Node& node = matcher.Nodes[current];
        node.FirstEntry = static_cast<std::uint32_t>(range.First);
        node.EntryCount = static_cast<std::uint32_t>(i - range.First);
        node.Ending = node.EntryCount > 0 ? current : matcher.Nodes[node.Fallback].Ending;
        while (i < range.Last) {
            const char label = text(i)[range.Depth];
            const std::size_t first = i;
            while (i < range.Last && text(i)[range.Depth] == label)
                ++i;
            AddChild(matcher, current, static_cast<unsigned char>(label));
            ranges.push_back({first, i, range.Depth + 1});
        }
    }
    return matcher;
}

std::vector<std::size_t> MatchesIn(const TriggerMatcher& matcher, std::string_view line) {
    std::vector<std::size_t> matches;
    if (matcher.Nodes.empty())
        return matches;
    const auto take = [&](std::uint32_t node) {
        const auto first = matcher.Entries.begin() + matcher.Nodes[node].FirstEntry;
        matches.insert(matches.end(), first, first + matcher.Nodes[node].EntryCount);
    };
    take(0); // entries without a text
    std::unordered_set<std::uint32_t> seen;
    std::uint32_t node = 0;
    for (const char c : line) {
        node = Step(matcher, node, static_cast<unsigned char>(c));
        // An ending that was seen before has brought along the shorter ones behind it.
        for (std::uint32_t ending = matcher.Nodes[node].Ending;
             ending != 0 && seen.insert(ending).second;
             ending = matcher.Nodes[matcher.Nodes[ending].Fallback].Ending)
            take(ending);
    }
    std::sort(matches.begin(), matches.end());
    return matches;
}

} // namespace mw
