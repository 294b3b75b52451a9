#include "base/CodePage.h"

#include <algorithm>
#include <iterator>

namespace mw {
namespace {

// The characters of bytes 0x80 to 0x9F. All other bytes are their own Unicode number.
constexpr char16_t kHigh[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t CharacterOf(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x80 && code <= 0x9F ? kHigh[code - 0x80] : code;
}

char ByteOf(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto* const found = std::find(std::begin(kHigh), std::end(kHigh), character);
    return found == std::end(kHigh) ? '?' : static_cast<char>(0x80 + (found - kHigh));
}

bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

} // namespace

std::u16string ToUnicode(std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), CharacterOf);
    return text;
}

std::string FromUnicode(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char16_t unit : text) {
        // A surrogate pair is one character: its first half has already become the "?".
        if (!IsLowSurrogate(unit))
            bytes += ByteOf(unit);
    }
    return bytes;
}

} // namespace mw
