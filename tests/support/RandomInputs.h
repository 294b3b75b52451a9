// How many random inputs a comparison with a straightforward oracle takes.
#pragma once

#include <cstdio>
#include <cstdlib>

// The usual number, or that in QUILLMERE_RANDOM_INPUTS. Tells the seed when it is not the usual
// one.
inline int RandomInputs(int usual, unsigned seed) {
    const char* const asked = std::getenv("QUILLMERE_RANDOM_INPUTS");
    if (asked == nullptr)
        return usual;
    const int count = std::atoi(asked);
    std::printf("%d random inputs from the seed %u\n", count, seed);
    return count;
}
