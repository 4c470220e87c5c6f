// Records of a symbol table, found by lists of names and shown in columns.
#include "commands/tablelist.h"

#include <algorithm>

#include "acedads.h"
#include "ed/wildcard.h"
#include "host/platform/codepage.h"

namespace qrs::host::commands {

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

std::size_t columnsOf(const std::wstring& text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t codePoint = platform::nextCodePoint(text, i);
        columns += isIn(kWide, codePoint) ? 2u : isIn(kZeroWidth, codePoint) ? 0u : 1u;
    }
    return columns;
}

}  // namespace

std::vector<std::wstring> splitNames(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(L',', begin), list.size());
        std::wstring name = list.substr(begin, end - begin);
        begin = end + 1;
        name.erase(0, name.find_first_not_of(L' '));
        name.erase(name.find_last_not_of(L' ') + 1);
        if (!name.empty()) names.push_back(std::move(name));
    }
    return names;
}

std::vector<NamedRecord> findRecords(const std::vector<NamedRecord>& records, const std::wstring& list,
                                     const std::wstring& noun) {
    std::vector<bool> meant(records.size());
    const auto mark = [&](const auto& means) {
        bool any = false;
        for (std::size_t i = 0; i < records.size(); ++i)
            if (means(records[i].name)) any = meant[i] = true;
        return any;
    };
    for (const std::wstring& part : splitNames(list)) {
        if (mark([&](const std::wstring& name) { return platform::compareNoCase(name, part) == 0; })) continue;
        if (part.find_first_of(L"*?#@.~[") == std::wstring::npos)
            acedPrompt((L"\nCannot find " + noun + L" \"" + part + L"\".").c_str());
        else if (!mark([&](const std::wstring& name) { return ed::matchesWildcard(name, part); }))
            acedPrompt((L"\nNo matching " + noun + L" names found.").c_str());
    }
    std::vector<NamedRecord> found;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (meant[i]) found.push_back(records[i]);
    return found;
}

void printTable(const std::vector<Row>& rows) {
    if (rows.empty()) return;
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columnsOf(row[i]));
    std::wstring text;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            text += (i == 0 ? L"\n" : L"  ") + rows[line][i];
            if (i + 1 < widths.size()) text.append(widths[i] - columnsOf(rows[line][i]), L' ');
        }
        if (line > 0) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i == 0 ? L"\n" : L"  ") + std::wstring(widths[i], L'-');
    }
    acedPrompt(text.c_str());
}

}  // namespace qrs::host::commands
