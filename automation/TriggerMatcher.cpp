#include "automation/TriggerMatcher.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <utility>

namespace mw {
namespace {

using Node = TriggerMatcher::Node;

// A node with more children than this has a row, where a child is found at once.
constexpr std::uint32_t kMostWithoutRow = 8;

std::uint32_t ChildOf(const TriggerMatcher& matcher, std::uint32_t node, unsigned char label) {
    const Node& parent = matcher.Nodes[node];
    if (parent.Row != TriggerMatcher::kNoRow)
        return matcher.Rows[parent.Row][label];
    for (std::uint32_t i = 0; i < parent.ChildCount; ++i) {
        if (matcher.Labels[parent.FirstChild + i] == label)
            return parent.FirstChild + i;
    }
    return 0;
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

// Grows the tree over the sorted texts, level by level, so that a fallback, which is shorter, is
// there before it is needed.
struct Builder {
    // The sorted texts that begin with a node's own.
    struct Range {
        std::size_t First = 0;
        std::size_t Last = 0; // one past the end
        std::size_t Depth = 0;
    };

    const std::vector<TriggerEntry>& Table;
    TriggerMatcher Matcher;
    std::vector<Range> Ranges; // by node

    std::string_view Text(std::size_t i) const { return Table[Matcher.Entries[i]].Trigger; }

    void Sort() {
        Matcher.Entries.resize(Table.size());
        std::iota(Matcher.Entries.begin(), Matcher.Entries.end(), 0U);
        std::sort(Matcher.Entries.begin(), Matcher.Entries.end(),
                  [this](std::uint32_t a, std::uint32_t b) {
                      return Table[a].Trigger < Table[b].Trigger;
                  });
    }

    void AddChild(std::uint32_t parent, unsigned char label, const Range& range) {
        const auto child = static_cast<std::uint32_t>(Matcher.Nodes.size());
        Node node;
        if (parent != 0)
            node.Fallback = Step(Matcher, Matcher.Nodes[parent].Fallback, label);
        Matcher.Nodes.push_back(node);
        Matcher.Labels.push_back(label);
        Ranges.push_back(range);
        Node& above = Matcher.Nodes[parent];
        if (above.ChildCount++ == 0)
            above.FirstChild = child;
    }

    // Gives the node the first texts of its range, if they are the only ones or end here. Returns
    // the first of those that go on below.
    std::size_t TakeEntries(Node& node, const Range& range) {
        if (range.First == range.Last)
            return range.Last;
        const std::string_view text = Text(range.First);
        std::size_t end = range.First;
        if (range.Depth > 0 && text == Text(range.Last - 1))
            end = range.Last;
        while (end < range.Last && Text(end).size() == range.Depth)
            ++end;
        if (end > range.First) {
            node.FirstEntry = static_cast<std::uint32_t>(range.First);
            node.EntryCount = static_cast<std::uint32_t>(end - range.First);
            node.RestStart = static_cast<std::uint32_t>(Matcher.Rests.size());
            node.RestLength = static_cast<std::uint32_t>(text.size() - range.Depth);
            Matcher.Rests += text.substr(range.Depth);
        }
        return end;
    }

    void GiveRow(Node& node) {
        node.Row = static_cast<std::uint32_t>(Matcher.Rows.size());
        Matcher.Rows.emplace_back().fill(0);
        for (std::uint32_t i = 0; i < node.ChildCount; ++i)
            Matcher.Rows.back()[Matcher.Labels[node.FirstChild + i]] = node.FirstChild + i;
    }

    void Grow(std::uint32_t current) {
        const Range range = Ranges[current];
        Node& node = Matcher.Nodes[current];
        std::size_t i = TakeEntries(node, range);
        node.Ending = node.EntryCount > 0 ? current : Matcher.Nodes[node.Fallback].Ending;
        while (i < range.Last) {
            const char label = Text(i)[range.Depth];
            const std::size_t first = i;
            while (i < range.Last && Text(i)[range.Depth] == label)
                ++i;
            AddChild(current, static_cast<unsigned char>(label), {first, i, range.Depth + 1});
        }
        Node& grown = Matcher.Nodes[current];
        if (current == 0 || grown.ChildCount > kMostWithoutRow)
            GiveRow(grown);
    }
};

} // namespace

TriggerMatcher BuildMatcher(const std::vector<TriggerEntry>& entries) {
    Builder builder{entries, {}, {}};
    builder.Matcher.Filter = BuildFilter(entries);
    builder.Sort();
    builder.Matcher.Nodes.emplace_back();
    builder.Matcher.Labels.push_back(0);
    builder.Ranges.push_back({0, entries.size(), 0});
    for (std::uint32_t current = 0; current < builder.Matcher.Nodes.size(); ++current)
        builder.Grow(current);
    return std::move(builder.Matcher);
}

std::vector<std::size_t> MatchesIn(const TriggerMatcher& matcher, std::string_view line) {
    std::vector<std::size_t> matches;
    if (matcher.Nodes.empty() || !MayMatch(matcher.Filter, line))
        return matches;
    const std::string_view rests = matcher.Rests;
    std::unordered_set<std::uint32_t> found; // nodes whose text is in the line
    const auto look = [&](std::uint32_t ending, std::string_view ahead) {
        const Node& node = matcher.Nodes[ending];
        if (ahead.starts_with(rests.substr(node.RestStart, node.RestLength)))
            found.insert(ending);
    };
    look(0, line); // entries without a text
    std::uint32_t node = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        node = Step(matcher, node, static_cast<unsigned char>(line[i]));
        for (std::uint32_t ending = matcher.Nodes[node].Ending; ending != 0;
             ending = matcher.Nodes[matcher.Nodes[ending].Fallback].Ending)
            look(ending, line.substr(i + 1));
    }
    for (const std::uint32_t ending : found) {
        const auto first = matcher.Entries.begin() + matcher.Nodes[ending].FirstEntry;
        matches.insert(matches.end(), first, first + matcher.Nodes[ending].EntryCount);
    }
    std::sort(matches.begin(), matches.end());
    return matches;
}

} // namespace mw
