// Finds all triggers whose texts occur in a line, in one pass over the line.
//
// An Aho-Corasick automaton ("Efficient string matching: an aid to bibliographic search", 1975):
// a tree of the texts' beginnings, with a link from each node to the longest other beginning that
// ends there. The tree holds a text only as far as others share its beginning; the rest is compared
// where the line has come that far, so that a line costs about the same however many triggers there
// are. Most lines do not come so far: the filter sees before that nothing occurs in them.
#pragma once

#include "automation/Macros.h"
#include "automation/TriggerFilter.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

struct TriggerMatcher {
    static constexpr std::uint32_t kNoRow = 0xffffffff;

    // A node of the tree. Its children are neighbours; nodes are in the order of their depth. Node
    // 0 is the root.
    struct Node {
        std::uint32_t FirstChild = 0;
        std::uint32_t ChildCount = 0;
        std::uint32_t Row = kNoRow; // in Rows, for the root and nodes of many children
        std::uint32_t Fallback = 0; // longest proper suffix that is a node
        std::uint32_t Ending = 0;   // longest suffix, itself included, with entries; or 0
        std::uint32_t FirstEntry =
            0; // in Entries: triggers of one text that begins with this node's
        std::uint32_t EntryCount = 0;
        std::uint32_t RestStart = 0; // in Rests: what follows of that text
        std::uint32_t RestLength = 0;
    };

    TriggerFilter Filter;
    std::vector<Node> Nodes;
    std::vector<unsigned char> Labels; // of each node, the last character of its text
    std::vector<std::array<std::uint32_t, 256>> Rows; // children by character, 0 for none
    std::vector<std::uint32_t> Entries;               // trigger indices
    std::string Rests;
};

// The matcher of a table. Entries without a text match every line. Takes time and memory in
// proportion to the length of all texts.
TriggerMatcher BuildMatcher(const std::vector<TriggerEntry>& entries);

// Indices of the entries that occur in line (which is not empty), in ascending order.
std::vector<std::size_t> MatchesIn(const TriggerMatcher& matcher, std::string_view line);

} // namespace mw
