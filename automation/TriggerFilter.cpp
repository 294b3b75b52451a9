#include "automation/TriggerFilter.h"

#include <algorithm>
#include <array>
#include <bit>

namespace mw {
namespace {

constexpr std::uint32_t kLongestPart = 8;
constexpr std::size_t kMarksAPart = 32; // so that one look in thirty finds a mark in vain

// The last characters that went by, the newest on top.
struct Window {
    std::uint64_t Characters = 0;
    std::uint32_t Seen = 0; // how many of them count

    void Take(char c) {
        Characters = Characters >> 8 | std::uint64_t{static_cast<unsigned char>(c)} << 56;
        Seen = std::min(Seen + 1, kLongestPart);
    }

    std::uint64_t Part(std::uint32_t length) const {
        return Characters & ~std::uint64_t{0} << 8 * (kLongestPart - length);
    }
};

// The upper bits of a product with an odd number depend on all bits of the part.
std::size_t Hash(std::uint64_t part, std::size_t count) {
    constexpr std::uint64_t kGoldenRatio = 0x9e3779b97f4a7c15;
    return (part * kGoldenRatio) >> (64 - std::bit_width(count - 1));
}

// 8, 4, 2, 1 or 0: each length that occurs costs a look of its own at every character.
std::uint32_t PartLength(std::string_view text) {
    return std::bit_floor(
        static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), kLongestPart)));
}

template <typename Visit> void ForEachPart(std::string_view text, Visit visit) {
    const std::uint32_t length = PartLength(text);
    Window window;
    for (const char c : text) {
        window.Take(c);
        if (window.Seen >= length)
            visit(window.Part(length));
    }
}

// How often parts occur in all texts; those that share a place are counted as one.
struct Counts {
    std::vector<std::uint32_t> Places = std::vector<std::uint32_t>(std::size_t{1} << 16);

    std::uint32_t& Of(std::uint64_t part) { return Places[Hash(part, Places.size())]; }
};

std::uint64_t RarestPart(std::string_view text, Counts& counts) {
    std::uint64_t rarest = 0;
    std::uint32_t least = 0xffffffff;
    ForEachPart(text, [&](std::uint64_t part) {
        if (counts.Of(part) <= least) { // ends differ more than beginnings
            least = counts.Of(part);
            rarest = part;
        }
    });
    return rarest;
}

} // namespace

TriggerFilter BuildFilter(const std::vector<TriggerEntry>& entries) {
    Counts counts;
    for (const TriggerEntry& entry : entries)
        ForEachPart(entry.Trigger, [&](std::uint64_t part) { ++counts.Of(part); });
    TriggerFilter filter;
    std::array<bool, kLongestPart + 1> lengths{};
    for (const TriggerEntry& entry : entries) {
        lengths[PartLength(entry.Trigger)] = true;
        if (!entry.Trigger.empty())
            filter.Parts.insert(RarestPart(entry.Trigger, counts));
    }
    filter.LetsAllPass = lengths[0];
    for (std::uint32_t length = 1; length <= kLongestPart; length *= 2) {
        if (lengths[length])
            filter.Lengths.push_back(length);
    }
    filter.Marks.resize(std::bit_ceil(kMarksAPart * (filter.Parts.size() + 1)));
    for (const std::uint64_t part : filter.Parts)
        filter.Marks[Hash(part, filter.Marks.size())] = true;
    return filter;
}

bool MayMatch(const TriggerFilter& filter, std::string_view line) {
    if (filter.LetsAllPass)
        return true;
    Window window;
    for (const char c : line) {
        window.Take(c);
        for (const std::uint32_t length : filter.Lengths) {
            const std::uint64_t part = window.Part(length);
            if (window.Seen >= length && filter.Marks[Hash(part, filter.Marks.size())] &&
                filter.Parts.contains(part))
                return true;
        }
    }
    return false;
}

} // namespace mw
