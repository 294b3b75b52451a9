// Numbers and booleans read from text, and numbers rounded to whole ones.
//
// Files, dialogs and servers hand over numbers as text. One grammar serves them all, whatever the
// system's locale says:
//
//     number  = blanks ( [ "+" | "-" ] decimal | hex | octal ) blanks
//     decimal = digits [ "." [ digits ] ] [ exponent ]  |  "." digits [ exponent ]
//     exponent = ( "e" | "E" ) [ "+" | "-" ] digits
//     hex     = ( "&H" | "&h" ) 1*hexdigit        octal = "&O" 1*octaldigit
//
// A blank is the space character. Hexadecimal and octal digits give an unsigned 32-bit value that
// is taken as a signed one, so &HFFFF is 65535 and &HFFFFFFFF is -1.
#pragma once

#include <cstdint>
#include <string_view>

namespace mw {

// True when the whole text is a number by the grammar above, in range of any type or not.
bool IsNumeric(std::string_view text);

// The number in text as a whole one, halves rounded to even. Raises Type mismatch when the text is
// no number, Overflow when it does not fit.
std::int16_t ToInt16(std::string_view text);
std::int32_t ToInt32(std::string_view text);

// "True" or "False" in any case, or a number (0 is false). Raises Type mismatch for anything else.
bool ToBoolean(std::string_view text);

// "True" or "False", as the files and the stores write a boolean.
std::string_view BooleanText(bool value);

// The nearest whole number, halves to even: 10.5 gives 10, 11.5 gives 12. Raises Overflow when it
// does not fit.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

} // namespace mw
