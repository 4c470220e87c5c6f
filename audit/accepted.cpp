// Reads what was accepted, and marks it.
#include "accepted.h"

#include <utility>

#include "csv.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "PwxTool.h"

namespace qrs::audit {

bool AcceptedFindings::read(const std::wstring& drawing, platform::Error& error) {
    entries_.clear();
    path_ = drawing + kAcceptedSuffix;
    // A folder of that name is told, as what cannot be read.
    if (drawing.empty() || !(platform::fileExists(path_) || platform::folderExists(path_))) return true;
    std::vector<CsvRow> rows;
    if (!readCsv(path_, rows, error)) return false;
    for (const CsvRow& row : rows) {
        const Rule* rule = ruleNamed(row.cells[0]);
        std::wstring fault;
        if (rule == nullptr)
            fault = platform::translated(L"there is no rule \"%1\"", row.cells[0]);
        else if (row.cells.size() != 3 || row.cells[1].empty() || row.cells[2].empty())
            fault = platform::translated(L"a row is a rule, a subject and a reason");
        if (!fault.empty()) {
            error.message = faultAt(path_, row.line, fault);
            return false;
        }
        entries_.push_back({row.line, rule, row.cells[1], row.cells[2]});
    }
    return true;
}

std::wstring AcceptedFindings::reasonOf(const Rule& rule, const std::wstring& subject) {
    std::wstring reason;
    for (Entry& entry : entries_) {
        if (entry.rule != &rule) continue;
        if (!PwxTool::MatchingString(CString(subject), CString(entry.subject), false)) continue;
        entry.fits = true;
        if (reason.empty()) reason = entry.reason;
    }
    return reason;
}

std::wstring AcceptedFindings::reasonOf(const Finding& finding) {
    if (finding.names.empty()) return reasonOf(*finding.rule, finding.subject);
    std::wstring reason;
    for (const std::wstring& name : finding.names)
        if (std::wstring own = reasonOf(*finding.rule, name); reason.empty()) reason = std::move(own);
    return reason;
}

void AcceptedFindings::mark(Findings& findings) {
    for (Finding& finding : findings)
        finding.reason = reasonOf(finding);
}

std::vector<std::wstring> AcceptedFindings::idle(const RuleWeights& weights) const {
    std::vector<std::wstring> rows;
    for (const Entry& entry : entries_)
        if (!entry.fits && weights.of(*entry.rule) != Severity::Off)
            rows.push_back(platform::fromUtf8(faultAt(path_, entry.line, entry.rule->id + (L", " + entry.subject))));
    return rows;
}

}  // namespace qrs::audit
