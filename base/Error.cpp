#include "base/Error.h"

namespace mw {
namespace {

std::string_view Description(RunTimeError number) {
    switch (number) {
    case Overflow:
        return "Overflow";
    case SubscriptOutOfRange:
        return "Subscript out of range";
    case TypeMismatch:
        return "Type mismatch";
    case FileNotFound:
        return "File not found";
    case InputPastEnd:
        return "Input past end of file";
    case PathFileAccess:
        return "Path/File access error";
    case InvalidSocketState:
        return "Invalid operation at current state";
    }
    return "";
}

} // namespace

void Raise(RunTimeError number, std::string_view source) {
    throw Error{number, std::string(source), std::string(Description(number))};
}

} // namespace mw
