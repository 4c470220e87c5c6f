// The report for people at a command line.
#include <algorithm>
#include <iterator>

#include "host/platform/codepage.h"
#include "report.h"

namespace qrs::audit {

namespace {

constexpr Severity kSeverities[] = {Severity::Error, Severity::Warning, Severity::Note};
constexpr std::size_t kSeverityWidth = 8;

std::wstring padded(std::wstring text, std::size_t width) {
    text.resize(std::max(width, text.size()), L' ');
    return text;
}

std::wstring objectsOf(const Finding& finding) {
    std::wstring text = countedText(finding.count, L"object", L"objects");
    if (finding.handles.empty()) return text;
    text += L" (";
    for (std::size_t i = 0; i < finding.handles.size(); ++i)
        text += (i > 0 ? L", " : L"") + finding.handles[i];
    return text + (finding.count > finding.handles.size() ? L", ...)" : L")");
}

void addFinding(const Finding& finding, std::wstring& text) {
    const std::wstring indent(kSeverityWidth + 2, L' ');
    text += indent + finding.subject;
    if (!finding.detail.empty()) text += L", " + finding.detail;
    if (finding.count > 0) text += L": " + objectsOf(finding);
    text += L"\n";
    for (const Difference& difference : finding.differences)
        text += indent + L"  " + difference.property + L": " + difference.drawing + L" here, " + difference.standard +
                L" in the standard\n";
    if (!finding.reason.empty()) text += indent + L"  accepted: " + finding.reason + L"\n";
}

// Findings lie in order, so those of a rule lie side by side.
void addFindings(const Findings& findings, std::wstring& text) {
    const Finding* last = nullptr;
    for (const Finding& finding : findings) {
        if (last == nullptr || last->rule != finding.rule || last->reason.empty() != finding.reason.empty()) {
            const std::wstring kind = finding.reason.empty() ? nameOf(finding.severity) : L"accepted";
            text += padded(kind, kSeverityWidth) + L"  " + finding.rule->title + L" [" + finding.rule->id + L"]\n";
            if (finding.reason.empty())
                text += std::wstring(kSeverityWidth + 2, L' ') + L"To do: " + finding.rule->remedy + L".\n";
        }
        addFinding(finding, text);
        last = &finding;
    }
}

void addResult(const CheckResult& result, std::wstring& text) {
    text += titleOf(result) + L"\n";
    if (!result.unreadable.empty()) {
        text += L"not checked: " + platform::fromUtf8(result.unreadable) + L"\n";
        return;
    }
    addFindings(result.findings, text);
    for (const std::wstring& row : result.idle)
        text += L"accepted, but not found any more: " + row + L"\n";
    text += summaryOf(result) + L"\n";
}

}  // namespace

std::wstring countedText(std::uint64_t count, const wchar_t* one, const wchar_t* many) {
    return std::to_wstring(count) + L" " + (count == 1 ? one : many);
}

std::wstring summaryOf(const CheckResult& result) {
    if (!result.unreadable.empty()) return L"not checked";
    constexpr const wchar_t* kCounted[][2] = {{L"error", L"errors"}, {L"warning", L"warnings"}, {L"note", L"notes"}};
    std::wstring text;
    for (std::size_t i = 0; i < std::size(kSeverities); ++i)
        text += (i > 0 ? L", " : L"") + countedText(result.count(kSeverities[i]), kCounted[i][0], kCounted[i][1]);
    if (const std::size_t accepted = result.count(Severity::Off); accepted > 0)
        text += L"; " + std::to_wstring(accepted) + L" accepted";
    return text;
}

std::wstring titleOf(const CheckResult& result) {
    const std::wstring name = result.drawing.empty() ? L"The drawing" : result.drawing;
    return result.unreadable.empty() ? name + L" against the standard " + result.standard : name;
}

std::string textReport(const CheckResults& results) {
    std::wstring text;
    for (const CheckResult& result : results) {
        if (&result != &results.front()) text += L"\n";
        addResult(result, text);
    }
    if (results.size() > 1) {
        text += L"\n" + countedText(results.size(), L"drawing", L"drawings") + L"\n";
        for (const CheckResult& result : results)
            text += result.drawing + L": " + summaryOf(result) + L"\n";
    }
    return platform::toUtf8(text);
}

}  // namespace qrs::audit
