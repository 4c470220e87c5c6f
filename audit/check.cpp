// One loop over the rules.
#include "check.h"

#include <algorithm>
#include <tuple>

#include "accepted.h"

namespace qrs::audit {

namespace {

bool comesBefore(const Finding& a, const Finding& b) {
    const auto key = [](const Finding& finding) {
        return std::tuple(!finding.reason.empty(), -static_cast<int>(finding.severity), finding.rule, ~finding.count,
                          std::wstring_view(finding.subject), std::wstring_view(finding.detail));
    };
    return key(a) < key(b);
}

}  // namespace

std::size_t CheckResult::count(Severity severity) const {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), [severity](const Finding& finding) {
        return severity == Severity::Off ? !finding.reason.empty()
                                         : finding.reason.empty() && finding.severity == severity;
    }));
}

bool checkDrawing(AcDbDatabase& database, const std::wstring& file, const RuleWeights& weights,
                  const StandardLists& standard, CheckResult& result, platform::Error& error) {
    AcceptedFindings accepted;
    if (!accepted.read(file, error)) return false;
    const DrawingFacts facts(database);
    result.standard = standard.name();
    result.standardFile = standard.file();
    result.entities = facts.entities;
    for (const Rule& rule : allRules()) {
        const Severity severity = weights.of(rule);
        if (severity == Severity::Off) continue;
        const std::size_t before = result.findings.size();
        rule.find({facts, standard}, result.findings);
        for (std::size_t i = before; i < result.findings.size(); ++i) {
            result.findings[i].rule = &rule;
            result.findings[i].severity = severity;
        }
    }
    accepted.mark(result.findings);
    std::stable_sort(result.findings.begin(), result.findings.end(), &comesBefore);
    result.idle = accepted.idle(weights);
    return true;
}

}  // namespace qrs::audit
