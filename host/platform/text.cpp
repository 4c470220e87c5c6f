// Walks texts by code points, compares and folds names.
#include "host/platform/text.h"

#include "host/platform/inside/casemap.h"

namespace qrs::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Through wchar_t's own unsigned width, else a 16-bit unit above 0x7FFF would widen with its sign.
char32_t unitAt(std::wstring_view text, std::size_t i) {
    return sizeof(wchar_t) == 2 ? static_cast<char32_t>(static_cast<std::uint16_t>(text[i]))
                                : static_cast<char32_t>(text[i]);
}

template <typename Map>
std::wstring mapped(std::wstring_view text, const Map& map) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();)
        appendCodePoint(result, map(nextCodePoint(text, i)));
    return result;
}

}  // namespace

char32_t nextCodePoint(std::wstring_view text, std::size_t& i) {
    const char32_t first = unitAt(text, i++);
    if (isHighSurrogate(first) && i < text.size() && isLowSurrogate(unitAt(text, i)))
        return joinedSurrogates(first, unitAt(text, i++));
    return first > 0x10FFFF ? kReplacement : first;
}

void appendCodePoint(std::wstring& text, char32_t codePoint) {
    if (sizeof(wchar_t) == 2)
        forEachUtf16Unit(codePoint, [&text](char16_t unit) { text += static_cast<wchar_t>(unit); });
    else
        text += static_cast<wchar_t>(codePoint);
}

std::string hexText(std::string_view bytes) {
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 15];
    }
    return text;
}

bool appendHexBytes(std::string_view digits, std::string& bytes) {
    if (digits.size() % 2 != 0) return false;
    const std::size_t before = bytes.size();
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int high = hexValue(static_cast<unsigned char>(digits[i]));
        const int low = hexValue(static_cast<unsigned char>(digits[i + 1]));
        if (high < 0 || low < 0) {
            bytes.resize(before);
            return false;
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    return true;
}

int compareNoCase(std::wstring_view a, std::wstring_view b) {
    std::size_t i = 0;
    std::size_t k = 0;
    for (;;) {
        const std::size_t start = i;
        while (i < a.size() && k < b.size() && a[i] == b[k])
            ++i, ++k;
        if (i == a.size() || k == b.size()) return (i < a.size()) - (k < b.size());
        // Units that differ may be the second halves of pairs.
        if (i > start && isHighSurrogate(unitAt(a, i - 1))) --i, --k;
        const char32_t left = upperCase(nextCodePoint(a, i));
        const char32_t right = upperCase(nextCodePoint(b, k));
        if (left != right) return left < right ? -1 : 1;
    }
}

std::wstring foldCase(std::wstring_view text) {
    return mapped(text, upperCase);
}

std::uint64_t hashNoCase(std::wstring_view text) {
    // FNV-1a over the folded code points.
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (std::size_t i = 0; i < text.size();)
        hash = (hash ^ upperCase(nextCodePoint(text, i))) * 0x100000001B3u;
    return hash;
}

std::wstring lowerCaseText(std::wstring_view text) {
    return mapped(text, lowerCase);
}

}  // namespace qrs::platform
