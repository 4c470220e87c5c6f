// Text in drawings: code page or UTF-8, with \U+XXXX and \M+nXXXX escapes.
#pragma once

#include <string>
#include <string_view>

namespace qrs::dxf {

// The code page of a $DWGCODEPAGE value ("ANSI_936", "gb2312", "dos850" ...); 0 when unknown.
unsigned codePageOf(std::string_view dwgCodePage);

// Letters of ASCII and no escapes: such a text means itself in every code page.
bool isPlainText(std::string_view value);

// Bytes of a value to text; escapes are resolved; a backslash that is the second byte of a two-byte character is none.
std::wstring decodeText(unsigned codePage, std::string_view value);

// Text to the bytes of a value; a character the code page cannot hold is written \U+XXXX (two of them for a code point
// outside the basic plane).
std::string encodeText(unsigned codePage, std::wstring_view text);

}  // namespace qrs::dxf
