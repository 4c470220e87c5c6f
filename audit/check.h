// Checks one drawing: every rule, what was accepted, and the order in which findings are told.
#pragma once

#include <string>
#include <vector>

#include "host/platform/error.h"
#include "rules.h"

namespace qrs::audit {

struct CheckResult {
    std::wstring drawing;       // its file's name; empty for one without a file
    std::wstring file;          // whole, as the system spells paths
    std::wstring standard;      // the name of the standard it was checked against
    std::wstring standardFile;  // its path as the system spells it; empty: it is built in
    std::string unreadable;     // why nothing was checked; empty when it was
    std::uint64_t entities = 0;
    Findings findings;  // by harm: severity, then the order of the rules, then how many objects; accepted ones last
    std::vector<std::wstring> idle;  // rows of what was accepted that fit nothing any more

    // Of those that were not accepted; of accepted ones alone for Off.
    std::size_t count(Severity severity) const;
};

// file: the path of the drawing, beside which the accepted findings lie. False, with the reason in error, when that
// file cannot be read.
bool checkDrawing(AcDbDatabase& database, const std::wstring& file, const RuleWeights& weights,
                  const StandardLists& standard, CheckResult& result, platform::Error& error);

}  // namespace qrs::audit
