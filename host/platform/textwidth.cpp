// Measures the characters people see, each of which may be made of several code points.
#include "host/platform/textwidth.h"

#include <utf8proc.h>

#include <algorithm>

#include "host/platform/text.h"

namespace qrs::platform {

namespace {

constexpr std::size_t kWidestShown = 255;
constexpr std::wstring_view kCut = L"...";
constexpr char32_t kEmojiPresentation = 0xFE0F;  // asks for the coloured form of the character before it

bool isFlagLetter(char32_t codePoint) {
    return codePoint >= 0x1F1E6 && codePoint <= 0x1F1FF;
}

// In columns, of one code point by itself.
std::size_t widthOf(char32_t codePoint) {
    // Ideographs that are younger than the library.
    if (codePoint >= 0x20000 && codePoint <= 0x3FFFD) return 2;
    return static_cast<std::size_t>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(codePoint)));
}

// One character: a letter with its marks, a flag, emoji joined to one.
struct Cluster {
    std::size_t width = 0;
    int flagLetters = 0;

    void add(char32_t codePoint) {
        flagLetters += isFlagLetter(codePoint) ? 1 : 0;
        const bool isEmoji = flagLetters == 2 || (width > 0 && codePoint == kEmojiPresentation);
        width = std::max(width, isEmoji ? std::size_t{2} : widthOf(codePoint));
    }
};

}  // namespace

std::size_t columnsOf(std::wstring_view text) {
    std::size_t columns = 0;
    Cluster cluster;
    utf8proc_int32_t before = 0;
    utf8proc_int32_t state = 0;
    for (std::size_t i = 0; i < text.size();) {
        const bool isFirst = i == 0;
        const char32_t codePoint = nextCodePoint(text, i);
        // Half a pair is shown as a character that is missing.
        const auto shown = static_cast<utf8proc_int32_t>(isSurrogate(codePoint) ? U'\uFFFD' : codePoint);
        if (!isFirst && utf8proc_grapheme_break_stateful(before, shown, &state)) {
            columns += cluster.width;
            cluster = Cluster();
        }
        cluster.add(static_cast<char32_t>(shown));
        before = shown;
    }
    return columns + cluster.width;
}

std::wstring paddedTo(std::wstring_view text, std::size_t columns) {
    std::wstring padded(text);
    const std::size_t width = columnsOf(text);
    if (width < columns) padded.append(columns - width, L' ');
    return padded;
}

std::wstring shownInTable(std::wstring_view text) {
    std::size_t cut = 0;
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (columns + kCut.size() <= kWidestShown) cut = i;
        columns += widthOf(nextCodePoint(text, i));
        if (columns > kWidestShown) return std::wstring(text.substr(0, cut)) + std::wstring(kCut);
    }
    return std::wstring(text);
}

}  // namespace qrs::platform
