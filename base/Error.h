// The errors that a running handler can raise.
//
// Error stands for what goes wrong at run time: it is thrown by the modules, caught where the
// platform layer calls a handler (shown in a message box, the program goes on) and around the
// loaders of the start-up (shown, the program ends). EndProgram is the other signal: a reader has
// already shown its own boxes and the program ends at once, saving nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

struct Error {
    std::int32_t Number = 0;
    std::string Source;
    std::string Description;

    bool operator==(const Error&) const = default;
};

struct EndProgram {};

enum RunTimeError : std::int32_t {
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    InputPastEnd = 62,
    PathFileAccess = 75,
    InvalidSocketState = 40020,
};

// Throws the Error of that number with its customary description. source names the operation.
[[noreturn]] void Raise(RunTimeError number, std::string_view source);

} // namespace mw
