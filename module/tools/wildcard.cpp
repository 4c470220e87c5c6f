// Wildcard patterns over the bytes of the ANSI code page.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "afx.h"
#include "host/platform/codepage.h"
#include "PwxTool.h"

namespace {

namespace platform = qrs::platform;

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
    return converted(plain.view());
}

// Bytes alone: the second half of a character may be a letter, and is folded too. Patterns in use count on it.
void foldBytes(std::string& bytes) {
    for (char& byte : bytes)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
}

bool fitsAt(std::string_view text, std::string_view segment) {
    for (std::size_t i = 0; i < segment.size(); ++i)
        if (segment[i] != kAnyByte && segment[i] != text[i]) return false;
    return true;
}

// The leftmost place of a segment, searched with a set of all its beginnings that fit so far, one bit each. A search
// that falls back by a table of borders would miss places: with "?" what fits a part of the segment need not fit
// another one. The set takes a word for every 64 bytes of the segment, whatever the text holds.
class SegmentSearch {
  public:
    explicit SegmentSearch(std::string_view segment)
        : length_(segment.size()), words_((length_ + kBits - 1) / kBits), fits_(kBytes * words_), begun_(words_) {
        for (std::size_t i = 0; i < length_; ++i) {
            const std::uint64_t bit = std::uint64_t{1} << i % kBits;
            for (std::size_t byte = 0; byte < kBytes; ++byte)
                if (segment[i] == kAnyByte || static_cast<unsigned char>(segment[i]) == byte)
                    fits_[byte * words_ + i / kBits] |= bit;
        }
    }

    // The end of the first place of the segment in the text; npos when there is none.
    std::size_t endIn(std::string_view text) {
        const std::uint64_t whole = std::uint64_t{1} << (length_ - 1) % kBits;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::uint64_t* fits = &fits_[static_cast<unsigned char>(text[i]) * words_];
            std::uint64_t carry = 1;
            for (std::size_t word = 0; word < words_; ++word) {
                const std::uint64_t next = begun_[word] >> (kBits - 1);
                begun_[word] = (begun_[word] << 1 | carry) & fits[word];
                carry = next;
            }
            if ((begun_.back() & whole) != 0) return i + 1;
        }
        return std::string_view::npos;
    }

  private:
    static constexpr std::size_t kBits = 64;
    static constexpr std::size_t kBytes = 256;

    std::size_t length_;
    std::size_t words_;
    std::vector<std::uint64_t> fits_;  // of each byte: the places of the segment it fits
    std::vector<std::uint64_t> begun_;
};

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
        const std::size_t end = SegmentSearch(segment).endIn(text);
        if (end == std::string_view::npos) return false;
        text.remove_prefix(end);
    }
}

}  // namespace

namespace PwxTool {

bool MatchingString(const CString& text, const CString& pattern, bool caseSensitive) {
    std::string textBytes = converted(text.view());
    std::string patternBytes = convertedPattern(pattern);
    if (!caseSensitive) {
        foldBytes(textBytes);
        foldBytes(patternBytes);
    }
    return matches(textBytes, patternBytes);
}

bool MultiMatching(const CString& text, const CString& patterns, int matchAll, bool negate, bool caseSensitive) {
    std::string textBytes = converted(text.view());
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
