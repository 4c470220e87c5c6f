// How wide a text is on a terminal.
#include "host/platform/textwidth.h"

#include <algorithm>
#include <iterator>

#include "host/platform/text.h"

namespace qrs::platform {

namespace {

// Code points that take two columns of a terminal, and those that take none.
struct Range {
    char32_t first, last;
};
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},
                           {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
                           {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr Range kZeroWidth[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0xFE00, 0xFE0F}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t codePoint) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [codePoint](const Range& range) { return codePoint >= range.first && codePoint <= range.last; });
}

}  // namespace

std::size_t columnsOf(std::wstring_view text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t codePoint = nextCodePoint(text, i);
        columns += isIn(kWide, codePoint) ? 2u : isIn(kZeroWidth, codePoint) ? 0u : 1u;
    }
    return columns;
}

std::wstring paddedTo(std::wstring_view text, std::size_t columns) {
    std::wstring padded(text);
    const std::size_t width = columnsOf(text);
    if (width < columns) padded.append(columns - width, L' ');
    return padded;
}

}  // namespace qrs::platform
