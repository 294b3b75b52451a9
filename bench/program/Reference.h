// The least that a client has to do: it reads, splits lines, and answers the question.
#pragma once

#include "bench/program/Wire.h"

#include <sys/types.h>

namespace bench {

// A process of its own, as the client is.
struct Reference {
    Reference();
    ~Reference();
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;

    Listener Gate;
    pid_t Reader;
    Wire Game;
};

} // namespace bench
