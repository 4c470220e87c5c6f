// Text as bytes, in code pages and UTF-8. The ANSI code page is Windows' own there and 936 elsewhere unless a setting
// changes it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/platform/port.h"
#include "host/platform/text.h"

namespace qrs::platform {

constexpr unsigned kUtf8 = 65001;
// Only decode, decodeStrict and encode take these, since they are not built on ASCII.
constexpr unsigned kUtf16Little = 1200;
constexpr unsigned kUtf16Big = 1201;

QRS_HOST_PORT unsigned ansiCodePage();
// False, nothing changed, when the system does not know the code page.
QRS_HOST_PORT bool setAnsiCodePage(unsigned codePage);

QRS_HOST_PORT bool isKnownCodePage(unsigned codePage);

// True when the byte opens a character of two or four bytes of the code page (never for single-byte code pages and
// UTF-8).
QRS_HOST_PORT bool isLeadByte(unsigned codePage, unsigned char byte);

// Bytes that are no text of the code page become U+FFFD each. Code points outside the basic plane become one wchar_t
// where it has 32 bits and a surrogate pair where it has 16.
QRS_HOST_PORT std::wstring decode(unsigned codePage, std::string_view bytes);
// As decode, but false when some byte is no text of the code page.
QRS_HOST_PORT bool decodeStrict(unsigned codePage, std::string_view bytes, std::wstring& text);
// False when a character has no place in the code page; out then holds what came before it.
QRS_HOST_PORT bool encode(unsigned codePage, std::wstring_view text, std::string& out);

// Whether decodeStrict would take the bytes for UTF-8.
QRS_HOST_PORT bool isUtf8(std::string_view bytes);
QRS_HOST_PORT std::wstring fromUtf8(std::string_view bytes);
// A lone surrogate is written as its three bytes, so nothing is lost.
QRS_HOST_PORT std::string toUtf8(std::wstring_view text);

}  // namespace qrs::platform
