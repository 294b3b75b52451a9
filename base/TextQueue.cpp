#include "base/TextQueue.h"

#include <algorithm>

namespace mw {

std::string_view View(const TextQueue& queue) {
    return std::string_view(queue.Bytes).substr(queue.Start);
}

void Append(TextQueue& queue, std::string_view text) { queue.Bytes.append(text); }

void TakeFront(TextQueue& queue, std::size_t count) {
    count = std::min(count, queue.Bytes.size() - queue.Start);
    queue.Start += count;
    queue.Taken += count;
    // The front that is gone is given up once it is the larger half, so each character moves at
    // most once on average.
    if (queue.Start > queue.Bytes.size() / 2) {
        queue.Bytes.erase(0, queue.Start);
        queue.Start = 0;
    }
}

std::size_t Find(const TextQueue& queue, Search& search) {
    const std::string_view text = View(queue);
    search.From = std::max(search.From, queue.Taken);
    const std::size_t at = text.find(search.What, search.From - queue.Taken);
    if (at != std::string_view::npos) {
        search.From = queue.Taken + at;
    } else if (text.size() >= search.What.size()) {
        // The last characters may be the beginning of What.
        search.From = std::max(search.From, queue.Taken + text.size() - search.What.size() + 1);
    }
    return at;
}

} // namespace mw
