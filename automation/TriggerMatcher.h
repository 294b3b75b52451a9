// Finds all triggers whose texts occur in a line, in one pass over the line.
//
// An Aho-Corasick automaton ("Efficient string matching: an aid to bibliographic search", 1975):
// a tree of all texts, with a link from each node to the longest other beginning of a text that
// ends there. The cost of a line does not depend on how many triggers there are.
#pragma once

#include "automation/Macros.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace mw {

struct TriggerMatcher {
    // A node of the tree. Its children are neighbours, in the order of their labels; nodes are in
    // the order of their depth. Node 0 is the root.
    struct Node {
        std::uint32_t FirstChild = 0;
        std::uint32_t ChildCount = 0;
        std::uint32_t Fallback = 0;   // longest proper suffix that is a node
        std::uint32_t Ending = 0;     // longest suffix, itself included, where a text ends; or 0
        std::uint32_t FirstEntry = 0; // in Entries: the triggers whose text ends here
        std::uint32_t EntryCount = 0;
    };

    std::vector<Node> Nodes;
    std::vector<unsigned char> Labels;          // of each node, the last character of its text
    std::vector<std::uint32_t> Entries;         // trigger indices
    std::array<std::uint32_t, 256> RootChild{}; // by character, 0 for none
};

// The matcher of a table. Entries without a text match every line. Takes time and memory in
// proportion to the length of all texts.
TriggerMatcher BuildMatcher(const std::vector<TriggerEntry>& entries);

// Indices of the entries that occur in line (which is not empty), in ascending order.
std::vector<std::size_t> MatchesIn(const TriggerMatcher& matcher, std::string_view line);

} // namespace mw
