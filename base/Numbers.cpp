#include "base/Numbers.h"

#include "base/Error.h"
#include "base/Lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace mw {
namespace {

// What a text holds that fits the grammar. Infinity stands for a number beyond every range.
using Number = std::optional<double>;

constexpr double kBeyondRange = std::numeric_limits<double>::infinity();

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(std::string_view text, std::size_t from) {
    const auto end =
        std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), IsDigit);
    return static_cast<std::size_t>(end - text.begin());
}

Number ReadRadix(std::string_view digits, int radix, std::size_t longest) {
    std::uint64_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, value, radix);
    if (read.ptr != end || digits.empty())
        return std::nullopt;
    if (digits.size() > longest || value > std::numeric_limits<std::uint32_t>::max())
        return kBeyondRange;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

bool IsDecimal(std::string_view text) {
    std::size_t end = SkipDigits(text, 0);
    std::size_t digits = end;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = SkipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    if (digits == 0)
        return false;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        ++end;
        if (end < text.size() && (text[end] == '+' || text[end] == '-'))
            ++end;
        const std::size_t exponent = end;
        end = SkipDigits(text, exponent);
        if (end == exponent)
            return false;
    }
    return end == text.size();
}

Number ReadDecimal(std::string_view text) {
    if (!IsDecimal(text))
        return std::nullopt;
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc::result_out_of_range)
        return value;
    // Out of range is either far too large or too close to zero to tell from it.
    return text.find("e-") == std::string_view::npos && text.find("E-") == std::string_view::npos
               ? kBeyondRange
               : 0;
}

Number ReadNumber(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with("&H") || text.starts_with("&h"))
        return ReadRadix(text.substr(2), 16, 8);
    if (text.starts_with("&O"))
        return ReadRadix(text.substr(2), 8, 11);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    const Number value = ReadDecimal(text);
    return negative && value ? Number(-*value) : value;
}

double NumberIn(std::string_view text, std::string_view source) {
    const Number value = ReadNumber(text);
    if (!value)
        Raise(TypeMismatch, source);
    return *value;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
}

template <typename Integer> Integer Round(double value) {
    // nearbyint rounds halves to even in the default rounding mode, which nothing here changes.
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Integer>::min() &&
          whole <= std::numeric_limits<Integer>::max()))
        Raise(Overflow, "Round");
    return static_cast<Integer>(whole);
}

} // namespace

bool IsNumeric(std::string_view text) { return ReadNumber(text).has_value(); }

std::int16_t ToInt16(std::string_view text) { return RoundToInt16(NumberIn(text, "ToInt16")); }

std::int32_t ToInt32(std::string_view text) { return RoundToInt32(NumberIn(text, "ToInt32")); }

bool ToBoolean(std::string_view text) {
    if (EqualsIgnoringCase(text, "true"))
        return true;
    if (EqualsIgnoringCase(text, "false"))
        return false;
    return NumberIn(text, "ToBoolean") != 0;
}

std::string_view BooleanText(bool value) { return value ? "True" : "False"; }

std::int16_t RoundToInt16(double value) { return Round<std::int16_t>(value); }

std::int32_t RoundToInt32(double value) { return Round<std::int32_t>(value); }

} // namespace mw
