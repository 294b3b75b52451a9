// The error that a call ends in, for tests.
#pragma once

#include "base/Error.h"

#include <cstdint>

// The Error that call raises; its number is 0 when it raises none.
template <typename Call> mw::Error RaisedBy(Call call) {
    try {
        call();
    } catch (const mw::Error& error) {
        return error;
    }
    return {};
}

// Its number alone.
template <typename Call> std::int32_t ErrorOf(Call call) { return RaisedBy(call).Number; }
