// Text that is appended at its end and consumed from its front.
//
// Received text and the unfinished output line are such queues. Taking characters moves an index,
// so that it costs nothing however long the rest is, and a Search remembers how far it has looked,
// so that asking again after each piece taken never looks at a character twice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

struct TextQueue {
    std::string Bytes;
    std::size_t Start = 0;   // where the text that is still there begins in Bytes
    std::uint64_t Taken = 0; // characters taken so far; never goes back
};

// The waiting text. Valid until the queue is changed.
std::string_view View(const TextQueue& queue);

void Append(TextQueue& queue, std::string_view text);

// Removes the first count characters, all of them when there are fewer.
void TakeFront(TextQueue& queue, std::size_t count);

// One text that is looked for in one queue again and again. Belongs to that queue.
struct Search {
    std::string_view What;
    std::uint64_t From = 0; // counted as TextQueue::Taken is: What begins nowhere before it
};

// Position of the first What counted from the queue's front, or npos.
std::size_t Find(const TextQueue& queue, Search& search);

} // namespace mw
