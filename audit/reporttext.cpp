// The report for people at a command line.
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "report.h"

namespace qrs::audit {

namespace {

constexpr std::size_t kSeverityWidth = 8;
constexpr char32_t kFirstWideCharacter = 0x2E80;

// Chinese characters take two columns.
std::wstring padded(std::wstring text, std::size_t width) {
    std::size_t columns = 0;
    for (const wchar_t c : text)
        columns += static_cast<char32_t>(c) >= kFirstWideCharacter ? 2 : 1;
    return text.append(columns < width ? width - columns : 0, L' ');
}

std::wstring objectsOf(const Finding& finding) {
    std::wstring text =
        countedText(finding.count, platform::untranslated(L"%1 object"), platform::untranslated(L"%1 objects"));
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
        text += indent + L"  " + textOf(difference) + L"\n";
    if (!finding.reason.empty()) text += indent + L"  " + platform::translated(L"accepted: %1", finding.reason) + L"\n";
}

// Findings lie in order, so those of a rule lie side by side.
void addFindings(const Findings& findings, std::wstring& text) {
    const Finding* last = nullptr;
    for (const Finding& finding : findings) {
        if (last == nullptr || last->rule != finding.rule || last->reason.empty() != finding.reason.empty()) {
            const std::wstring kind = platform::translated(
                finding.reason.empty() ? nameOf(finding.severity) : platform::untranslated(L"accepted"));
            text += padded(kind, kSeverityWidth) + L"  " + platform::translated(finding.rule->title) + L" [" +
                    finding.rule->id + L"]\n";
            if (finding.reason.empty())
                text += std::wstring(kSeverityWidth + 2, L' ') + remedyOf(*finding.rule) + L"\n";
        }
        addFinding(finding, text);
        last = &finding;
    }
}

void addResult(const CheckResult& result, std::wstring& text) {
    text += titleOf(result) + L"\n";
    if (!result.unreadable.empty()) {
        text += platform::translated(L"not checked: %1", platform::fromUtf8(result.unreadable)) + L"\n";
        return;
    }
    text += standardOf(result) + L"\n";
    addFindings(result.findings, text);
    for (const std::wstring& row : result.idle)
        text += platform::translated(L"accepted, but not found any more: %1", row) + L"\n";
    text += summaryOf(result) + L"\n";
}

}  // namespace

std::wstring countedText(std::uint64_t count, const wchar_t* one, const wchar_t* many) {
    return platform::translated(count == 1 ? one : many, count);
}

std::wstring textOf(const Difference& difference) {
    return platform::translated(L"%1: %2 here, %3 in the standard", difference.property, difference.drawing,
                                difference.standard);
}

std::wstring remedyOf(const Rule& rule) {
    return platform::translated(L"To do: %1.", platform::translated(rule.remedy));
}

std::wstring summaryOf(const CheckResult& result) {
    if (!result.unreadable.empty()) return platform::translated(L"not checked");
    const auto counted = [&](Severity severity, const wchar_t* one, const wchar_t* many) {
        return countedText(result.count(severity), one, many);
    };
    std::wstring text = platform::translated(
        L"%1, %2, %3",
        counted(Severity::Error, platform::untranslated(L"%1 error"), platform::untranslated(L"%1 errors")),
        counted(Severity::Warning, platform::untranslated(L"%1 warning"), platform::untranslated(L"%1 warnings")),
        counted(Severity::Note, platform::untranslated(L"%1 note"), platform::untranslated(L"%1 notes")));
    if (const std::size_t accepted = result.count(Severity::Off); accepted > 0)
        text += platform::translated(L"; %1 accepted", accepted);
    return text;
}

std::wstring titleOf(const CheckResult& result) {
    const std::wstring name = result.drawing.empty() ? platform::translated(L"The drawing") : result.drawing;
    return result.unreadable.empty() ? platform::translated(L"%1 against the standard %2", name, result.standard)
                                     : name;
}

std::wstring standardOf(const CheckResult& result) {
    return result.standardFile.empty() ? platform::translated(L"Standard: built into the program")
                                       : platform::translated(L"Standard: %1", result.standardFile);
}

std::string textReport(const CheckResults& results) {
    std::wstring text;
    for (const CheckResult& result : results) {
        if (&result != &results.front()) text += L"\n";
        addResult(result, text);
    }
    if (results.size() > 1) {
        text +=
            L"\n" +
            countedText(results.size(), platform::untranslated(L"%1 drawing"), platform::untranslated(L"%1 drawings")) +
            L"\n";
        for (const CheckResult& result : results)
            text += result.drawing + L": " + summaryOf(result) + L"\n";
    }
    return platform::toUtf8(text);
}

}  // namespace qrs::audit
