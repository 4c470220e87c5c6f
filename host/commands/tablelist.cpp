// Records of a symbol table, found by lists of names and shown in columns.
#include "host/commands/tablelist.h"

#include <algorithm>
#include <unordered_map>

#include "acedads.h"
#include "host/commands/asking.h"
#include "host/editor/wildcard.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/text.h"
#include "host/platform/textwidth.h"

namespace qrs::host::commands {

using platform::translated;

std::vector<std::wstring> splitNames(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(L',', begin), list.size());
        const std::wstring_view name = platform::trimmed(std::wstring_view(list).substr(begin, end - begin));
        begin = end + 1;
        if (!name.empty()) names.emplace_back(name);
    }
    return names;
}

std::vector<NamedRecord> findRecords(const std::vector<NamedRecord>& records, const std::wstring& list,
                                     const std::wstring& noun) {
    std::vector<bool> meant(records.size());
    std::unordered_multimap<std::wstring, std::size_t> byName;
    for (std::size_t i = 0; i < records.size(); ++i)
        byName.emplace(platform::foldCase(records[i].name), i);
    for (const std::wstring& part : splitNames(list)) {
        const auto [first, last] = byName.equal_range(platform::foldCase(part));
        for (auto one = first; one != last; ++one)
            meant[one->second] = true;
        if (first != last) continue;
        bool any = false;
        const bool isPattern = part.find_first_of(L"*?#@.~[") != std::wstring::npos;
        for (std::size_t i = 0; isPattern && i < records.size(); ++i)
            if (ed::matchesWildcard(records[i].name, part)) any = meant[i] = true;
        if (any) continue;
        // A pattern means whatever there is, in drawings of every kind.
        if (isPattern)
            tell(translated(L"No matching %1 names found: %2", translated(noun.c_str()), part));
        else
            refuse(translated(L"Cannot find %1 \"%2\".", translated(noun.c_str()), part));
    }
    std::vector<NamedRecord> found;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (meant[i]) found.push_back(records[i]);
    return found;
}

void printTable(std::vector<Row> rows) {
    if (rows.empty()) return;
    std::vector<std::size_t> widths(rows.front().size());
    for (Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = platform::shownInTable(row[i]);
            widths[i] = std::max(widths[i], platform::columnsOf(row[i]));
        }
    }
    std::wstring text;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            text += i == 0 ? L"\n" : L"  ";
            text += i + 1 < widths.size() ? platform::paddedTo(rows[line][i], widths[i]) : rows[line][i];
        }
        if (line > 0) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i == 0 ? L"\n" : L"  ") + std::wstring(widths[i], L'-');
    }
    acedPrompt(text.c_str());
}

}  // namespace qrs::host::commands
