// Reads tables of mappings.
#include "mapping.h"

#include <algorithm>
#include <iterator>

#include "csv.h"
#include "host/platform/language.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"

namespace qrs::audit {

namespace {

struct KindName {
    const wchar_t* name;
    Mapping::Kind kind;
};
constexpr KindName kKinds[] = {{L"layer", Mapping::Kind::Layer},
                               {L"linetype", Mapping::Kind::Linetype},
                               {L"textstyle", Mapping::Kind::TextStyle},
                               {L"system", Mapping::Kind::PipeSystem}};

}  // namespace

bool readMappings(const std::wstring& path, std::vector<Mapping>& mappings, platform::Error& error) {
    std::vector<CsvRow> rows;
    if (!readCsv(path, rows, error)) return false;
    for (const CsvRow& row : rows) {
        const bool isWhole = row.cells.size() == 3 && !row.cells[0].empty() && !row.cells[1].empty();
        const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                       [&](const KindName& one) { return isWhole && row.cells[2] == one.name; });
        std::wstring fault;
        if (!isWhole)
            fault = platform::translated(L"a row is a pattern, a name and what it is");
        else if (kind == std::end(kKinds))
            fault = platform::translated(L"\"%1\" is none of: layer, linetype, textstyle, system", row.cells[2]);
        else if (kind->kind == Mapping::Kind::PipeSystem &&
                 !PipeSystemTool::IsPipeSystemOfCurrentStandard(CString(row.cells[1])))
            fault = platform::translated(L"the standard has no pipe system \"%1\"", row.cells[1]);
        if (!fault.empty()) {
            error.message = faultAt(path, row.line, fault);
            return false;
        }
        mappings.push_back({row.line, kind->kind, row.cells[0], row.cells[1]});
    }
    return true;
}

bool fits(const Mapping& mapping, std::wstring_view name) {
    return PwxTool::MatchingString(CString(name), CString(mapping.from), false);
}

}  // namespace qrs::audit
