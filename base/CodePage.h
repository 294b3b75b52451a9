// Windows-1252, the one code page of the client.
//
// The logic, the files and the wire hold 8-bit characters; windows and file names are Unicode. The
// five bytes that the code page leaves undefined map to the C1 control of the same number, so that
// every byte maps and maps back. The table is the one published by the Unicode consortium
// (CP1252.TXT).
#pragma once

#include <string>
#include <string_view>

namespace mw {

// One UTF-16 unit for each byte.
std::u16string ToUnicode(std::string_view bytes);

// One byte for each character; a character that the code page lacks becomes "?".
std::string FromUnicode(std::u16string_view text);

} // namespace mw
