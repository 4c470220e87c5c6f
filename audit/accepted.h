// Findings that somebody has accepted, in a file beside the drawing: "plan.dxf.accepted".
//
//     # rule, subject, reason
//     layer-foreign, TEMP*, agreed with the architect until May
#pragma once

#include <string>
#include <vector>

#include "host/platform/error.h"
#include "rules.h"

namespace qrs::audit {

// Follows the name of a drawing.
constexpr const wchar_t* kAcceptedSuffix = L".accepted";

class AcceptedFindings {
  public:
    // Reads the file of a drawing; a missing one accepts nothing. The subject may hold the wildcards "?" and "*".
    // False, with file and line in error, when a row names no rule or gives no reason.
    bool read(const std::wstring& drawing, platform::Error& error);

    // Why what a rule finds of a subject was accepted; empty when it was not.
    std::wstring reasonOf(const Rule& rule, const std::wstring& subject);
    // Likewise for a finding, which may bear other names than its subject.
    std::wstring reasonOf(const Finding& finding);
    // Gives each accepted finding its reason.
    void mark(Findings& findings);
    // Rows of rules that are on, and that nothing fits of what was asked for, as "file:line: rule, subject".
    std::vector<std::wstring> idle(const RuleWeights& weights) const;

  private:
    struct Entry {
        int line;
        const Rule* rule;
        std::wstring subject, reason;
        bool fits = false;
    };
    std::wstring path_;
    std::vector<Entry> entries_;
};

}  // namespace qrs::audit
