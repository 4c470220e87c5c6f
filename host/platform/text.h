// Characters and short texts: surrogate pairs, blanks, ASCII letters, hexadecimal digits, names without regard to case.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/platform/port.h"

namespace qrs::platform {

// A code point outside the basic plane is a pair of units in UTF-16: a high surrogate, then a low one.
constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool isSurrogate(char32_t unit) {
    return isHighSurrogate(unit) || isLowSurrogate(unit);
}
constexpr char32_t joinedSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
// Gives put the one or two units of a code point, in order. A lone surrogate stays one.
template <typename Put>
constexpr void forEachUtf16Unit(char32_t codePoint, const Put& put) {
    if (codePoint < 0x10000) {
        put(static_cast<char16_t>(codePoint));
    } else {
        put(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
        put(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
    }
}

// The next code point of a wide text at position i, which moves past it; joins surrogate pairs.
QRS_HOST_PORT char32_t nextCodePoint(std::wstring_view text, std::size_t& i);
// One wchar_t where it has 32 bits; up to two where it has 16.
QRS_HOST_PORT void appendCodePoint(std::wstring& text, char32_t codePoint);

// A blank or tab; none of them begins or ends a trimmed text, which is a part of the one given.
constexpr bool isBlank(char32_t unit) {
    return unit == U' ' || unit == U'\t';
}
template <typename View>
constexpr View trimmedView(View text) {
    while (!text.empty() && isBlank(static_cast<char32_t>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(static_cast<char32_t>(text.back())))
        text.remove_suffix(1);
    return text;
}
constexpr std::string_view trimmed(std::string_view text) {
    return trimmedView(text);
}
constexpr std::wstring_view trimmed(std::wstring_view text) {
    return trimmedView(text);
}

// The letters A to Z alone change, in whatever code page.
constexpr char asciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The digits of numbers to the base 16, capital and small.
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kSmallHexDigits = "0123456789abcdef";
// The value of a hexadecimal digit, capital or small; -1 for anything else.
constexpr int hexValue(char32_t digit) {
    if (digit >= U'0' && digit <= U'9') return static_cast<int>(digit - U'0');
    if (digit >= U'A' && digit <= U'F') return static_cast<int>(digit - U'A') + 10;
    if (digit >= U'a' && digit <= U'f') return static_cast<int>(digit - U'a') + 10;
    return -1;
}
// Two capital digits a byte.
QRS_HOST_PORT std::string hexText(std::string_view bytes);
// Appends the byte of each two digits. False, with nothing appended, when the text is something else.
QRS_HOST_PORT bool appendHexBytes(std::string_view digits, std::string& bytes);

// Comparison as the editor compares names: simple upper-case folding of each code point, no locale. Below, equal to or
// above 0.
QRS_HOST_PORT int compareNoCase(std::wstring_view a, std::wstring_view b);
QRS_HOST_PORT std::wstring foldCase(std::wstring_view text);
// A number that is the same for texts that compare as equal, and hardly ever for others.
QRS_HOST_PORT std::uint64_t hashNoCase(std::wstring_view text);
// The same characters in lower case.
QRS_HOST_PORT std::wstring lowerCaseText(std::wstring_view text);

}  // namespace qrs::platform
