// What the targets do with the bytes they are given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

inline std::string Text(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

// Stands between the steps of an input that has several. A player can hardly type it.
inline constexpr char kCut = '\x1c';

// The pieces between the cuts, at least one.
inline std::vector<std::string> Pieces(const std::string& text) {
    std::vector<std::string> pieces(1);
    for (const char c : text) {
        if (c == kCut)
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    return pieces;
}

// Anything else is a finding.
inline void Must(bool holds) {
    if (!holds)
        __builtin_trap();
}
