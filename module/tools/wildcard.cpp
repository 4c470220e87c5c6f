// Wildcard patterns over the bytes of the ANSI code page.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "afx.h"
#include "host/platform/codepage.h"
#include "host/platform/text.h"
#include "PwxTool.h"
#include "standard/text.h"

namespace {

namespace platform = qrs::platform;
using qrs::standard::view;

constexpr char kAnyByte = '?';
constexpr char kAnyText = '*';
constexpr char kBetween = ',';
constexpr wchar_t kWideAnyByte = 0xFF1F;  // full-width question mark
constexpr char32_t kLastOfBasicPlane = 0xFFFF;

// A character without a place becomes "?", as the editor's system converts it; beyond the basic plane it has two
// halves there, of which each becomes one. An empty text stands for a code page nobody knows.
std::string converted(std::wstring_view text) {
    const unsigned codePage = platform::ansiCodePage();
    // Whoever set it broke what it promised; going on would match anything with anything.
    if (!platform::isKnownCodePage(codePage)) {
        std::fprintf(stderr, "text cannot be converted to code page %u\n", codePage);
        AfxAbort();
    }
    std::string bytes;
    if (platform::encode(codePage, text, bytes)) return bytes;
    bytes.clear();
    std::string one;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        const char32_t codePoint = platform::nextCodePoint(text, i);
        one.clear();
        if (platform::encode(codePage, text.substr(begin, i - begin), one))
            bytes += one;
        else
            bytes.append(codePoint > kLastOfBasicPlane ? 2 : 1, '?');
    }
    return bytes;
}

std::string convertedPattern(const CString& pattern) {
    CString plain = pattern;
    plain.Replace(kWideAnyByte, L'?');
    return converted(view(plain));
}

// Bytes alone: the second half of a character may be a letter, and is folded too. Patterns in use count on it.
void foldBytes(std::string& bytes) {
    for (char& byte : bytes)
        byte = platform::asciiLower(byte);
}

bool fits(char byte, char wanted) {
    return wanted == kAnyByte || wanted == byte;
}

bool fitsAt(std::string_view text, std::string_view segment) {
    return std::equal(segment.begin(), segment.end(), text.begin(),
                      [](char wanted, char byte) { return fits(byte, wanted); });
}

// Neither is folded any more. Segments take the leftmost place they fit and are never tried at another.
bool matches(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) return text.empty();
    std::size_t star = pattern.find(kAnyText);
    const std::string_view head = pattern.substr(0, star);
    if (head.size() > text.size() || !fitsAt(text, head)) return false;
    text.remove_prefix(head.size());
    if (star == std::string_view::npos) return text.empty();
    for (;;) {
        const std::size_t begin = pattern.find_first_not_of(kAnyText, star);
        if (begin == std::string_view::npos) return true;
        star = pattern.find(kAnyText, begin);
        const std::string_view segment = pattern.substr(begin, star - begin);
        if (segment.size() > text.size()) return false;
        if (star == std::string_view::npos) return fitsAt(text.substr(text.size() - segment.size()), segment);
        // Texts are names: a search that prepares a table for each segment costs more than it saves.
        const auto found = std::search(text.begin(), text.end(), segment.begin(), segment.end(), fits);
        if (found == text.end()) return false;
        text.remove_prefix(static_cast<std::size_t>(found - text.begin()) + segment.size());
    }
}

}  // namespace

namespace PwxTool {

bool MatchingString(const CString& text, const CString& pattern, bool caseSensitive) {
    std::string textBytes = converted(view(text));
    std::string patternBytes = convertedPattern(pattern);
    if (!caseSensitive) {
        foldBytes(textBytes);
        foldBytes(patternBytes);
    }
    return matches(textBytes, patternBytes);
}

bool MultiMatching(const CString& text, const CString& patterns, int matchAll, bool negate, bool caseSensitive) {
    std::string textBytes = converted(view(text));
    const std::string list = convertedPattern(patterns);
    if (!caseSensitive) foldBytes(textBytes);
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(kBetween, begin), list.size());
        std::string pattern = list.substr(begin, end - begin);
        begin = end + 1;
        if (!caseSensitive) foldBytes(pattern);
        if (matchAll == 0 && pattern.empty()) continue;
        // One that does not fit settles whether all do, one that fits whether any does.
        if (matches(textBytes, pattern) != (matchAll != 0)) return (matchAll == 0) != negate;
    }
    return (matchAll != 0) != negate;
}

}  // namespace PwxTool
