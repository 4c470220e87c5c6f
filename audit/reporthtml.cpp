// The report as a page of its own: one file, tables, no script.
#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "report.h"

namespace qrs::audit {

namespace {

// Light and dark follow the reader's system; on paper the tables keep their lines.
constexpr const char* kHead = R"(
<meta charset="utf-8">
<meta name="viewport" content="width=device-width,initial-scale=1">
<style>
:root { color-scheme: light dark; --line: #d5d9de; --soft: #f4f6f8; --dim: #5b6570; --text: #1c2126; --page: #fff;
  --error: #b3261e; --warning: #9a6300; --note: #33658a; --accepted: #3c7a3c; }
@media (prefers-color-scheme: dark) { :root { --line: #3a4149; --soft: #22272d; --dim: #9aa5b1; --text: #e4e8ec;
  --page: #181b1f; --error: #ff8a80; --warning: #f0b64d; --note: #8fc1e8; --accepted: #8fce8f; } }
body { font: 15px/1.5 "Segoe UI", "Microsoft YaHei", "Noto Sans", "Noto Sans CJK SC", sans-serif; color: var(--text);
  background: var(--page); max-width: 68rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.6rem; margin: 0 0 .3rem; }
h2 { font-size: 1.25rem; margin: 2.5rem 0 .3rem; overflow-wrap: anywhere; }
p { margin: .2rem 0 .8rem; color: var(--dim); }
table { border-collapse: collapse; width: 100%; margin: .6rem 0 1.4rem; }
caption { text-align: left; font-weight: 600; padding: .5rem 0 .2rem; }
caption small { display: block; font-weight: 400; color: var(--dim); }
th, td { text-align: left; vertical-align: top; padding: .35rem .6rem; border-bottom: 1px solid var(--line); }
th { color: var(--dim); font-weight: 600; background: var(--soft); }
td { overflow-wrap: anywhere; }
.findings { table-layout: fixed; break-inside: avoid; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; overflow-wrap: normal; }
.mark { display: inline-block; min-width: 4.8rem; font-weight: 600; }
.error { color: var(--error); } .warning { color: var(--warning); } .note { color: var(--note); }
.accepted { color: var(--accepted); }
code { font: 13px/1.5 ui-monospace, Consolas, monospace; color: var(--dim); }
@media print { body { margin: 0; max-width: none; font-size: 12px; } h2, h2 + p { break-after: avoid; }
  tr { break-inside: avoid; } a { color: inherit; text-decoration: none; } }
</style>
</head>
<body>
)";
constexpr const char* kTail = "</body>\n</html>\n";

std::string escaped(std::wstring_view text) {
    std::string html;
    for (const char c : platform::toUtf8(text)) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            default:
                // Control characters have no place in a page.
                html += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return html;
}

std::string shown(const wchar_t* english) {
    return escaped(platform::translated(english));
}

// A severity, or "accepted": the class of the style, and the word.
std::string markOf(const wchar_t* kind) {
    return "<span class=\"mark " + escaped(kind) + "\">" + shown(kind) + "</span>";
}

const wchar_t* kindOf(const Finding& finding) {
    return finding.reason.empty() ? nameOf(finding.severity) : platform::untranslated(L"accepted");
}

// The head of a column; those of numbers stand on the right.
std::string head(const wchar_t* english) {
    return "<th scope=\"col\">" + shown(english) + "</th>";
}
std::string numberHead(const wchar_t* english) {
    return "<th scope=\"col\" class=\"number\">" + shown(english) + "</th>";
}
std::string tableHead(const wchar_t* caption, const std::string& heads) {
    return "<table>\n<caption>" + shown(caption) + "</caption>\n<tr>" + heads + "</tr>\n";
}

std::string cell(std::uint64_t number) {
    return "<td class=\"number\">" + std::to_string(number) + "</td>";
}

// --- a drawing

// Columns of all tables of findings have the same widths, in percent.
struct Column {
    const wchar_t* head;
    int width;
    bool isNumber;
};
constexpr Column kPlain[] = {{platform::untranslated(L"What"), 34, false},
                             {platform::untranslated(L"How"), 34, false},
                             {platform::untranslated(L"Objects"), 9, true},
                             {platform::untranslated(L"First handles"), 23, false}};
constexpr Column kCompared[] = {
    {platform::untranslated(L"What"), 34, false},  {platform::untranslated(L"Property"), 10, false},
    {platform::untranslated(L"Here"), 12, false},  {platform::untranslated(L"Standard"), 12, false},
    {platform::untranslated(L"Objects"), 9, true}, {platform::untranslated(L"First handles"), 23, false}};

template <std::size_t Count>
std::string columnsOf(const Column (&columns)[Count]) {
    std::string html = "<colgroup>";
    std::string heads = "<tr>";
    for (const Column& column : columns) {
        html += "<col style=\"width:" + std::to_string(column.width) + "%\">";
        heads += column.isNumber ? numberHead(column.head) : head(column.head);
    }
    return html + "</colgroup>\n" + heads + "</tr>\n";
}

std::string howOf(const Finding& finding) {
    std::string html = escaped(finding.detail);
    if (finding.reason.empty()) return html;
    return html + (html.empty() ? "" : "<br>") + escaped(platform::translated(L"accepted: %1", finding.reason));
}

std::string objectsOf(const Finding& finding, const std::string& spanned) {
    std::string html =
        "<td class=\"number\"" + spanned + ">" + std::to_string(finding.count) + "</td><td" + spanned + "><code>";
    for (const std::wstring& handle : finding.handles)
        html += escaped(handle) + " ";
    return html + (finding.count > finding.handles.size() && !finding.handles.empty() ? "..." : "") + "</code></td>";
}

std::string plainRow(const Finding& finding) {
    return "<tr><td>" + escaped(finding.subject) + "</td><td>" + howOf(finding) + "</td>" + objectsOf(finding, {}) +
           "</tr>\n";
}

// Drawing and standard side by side, a row for each property.
std::string comparedRows(const Finding& finding) {
    const std::string spanned = " rowspan=\"" + std::to_string(finding.differences.size()) + "\"";
    const std::string how = howOf(finding);
    std::string html;
    for (const Difference& difference : finding.differences) {
        html += "<tr>";
        if (&difference == &finding.differences.front())
            html += "<td" + spanned + ">" + escaped(finding.subject) + (how.empty() ? "" : "<br>" + how) + "</td>";
        for (const std::wstring* text : {&difference.property, &difference.drawing, &difference.standard})
            html += "<td>" + escaped(*text) + "</td>";
        if (&difference == &finding.differences.front()) html += objectsOf(finding, spanned);
        html += "</tr>\n";
    }
    return html;
}

// The findings of one rule, from one place of the list on, which moves after them.
std::string tableOf(const Findings& findings, std::size_t& at) {
    const Finding& first = findings[at];
    const bool isCompared = !first.differences.empty();
    std::string html = "<table class=\"findings\">\n<caption>" + markOf(kindOf(first)) + " " +
                       shown(first.rule->title) + " <code>" + escaped(first.rule->id) + "</code>";
    if (first.reason.empty()) html += "<small>" + escaped(remedyOf(*first.rule)) + "</small>";
    html += "</caption>\n" + (isCompared ? columnsOf(kCompared) : columnsOf(kPlain));
    for (; at < findings.size(); ++at) {
        const Finding& finding = findings[at];
        if (finding.rule != first.rule || finding.reason.empty() != first.reason.empty()) break;
        html += isCompared ? comparedRows(finding) : plainRow(finding);
    }
    return html + "</table>\n";
}

std::string sectionOf(const CheckResult& result, std::size_t number) {
    std::string html = "<h2 id=\"d" + std::to_string(number) + "\">" + escaped(titleOf(result)) + "</h2>\n";
    if (!result.unreadable.empty())
        return html + "<p class=\"error\">" +
               escaped(platform::translated(L"not checked: %1", platform::fromUtf8(result.unreadable))) + "</p>\n";
    html += "<p>" + escaped(standardOf(result)) + "</p>\n<p>" +
            escaped(platform::translated(L"%1; %2", summaryOf(result),
                                         countedText(result.entities, platform::untranslated(L"%1 object"),
                                                     platform::untranslated(L"%1 objects")))) +
            "</p>\n";
    for (std::size_t at = 0; at < result.findings.size();)
        html += tableOf(result.findings, at);
    for (const std::wstring& row : result.idle)
        html += "<p>" + escaped(platform::translated(L"accepted, but not found any more: %1", row)) + "</p>\n";
    return html;
}

// --- several drawings

// The worst first; those that could not be read before them.
std::vector<std::size_t> byHarm(const CheckResults& results) {
    std::vector<std::size_t> order(results.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    const auto key = [&](std::size_t i) {
        const CheckResult& result = results[i];
        return std::tuple(!result.unreadable.empty(), result.count(Severity::Error), result.count(Severity::Warning),
                          result.count(Severity::Note));
    };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return key(a) > key(b); });
    return order;
}

std::string drawingsTable(const CheckResults& results) {
    std::string html =
        tableHead(platform::untranslated(L"Drawings"),
                  head(platform::untranslated(L"Drawing")) + numberHead(platform::untranslated(L"Errors")) +
                      numberHead(platform::untranslated(L"Warnings")) + numberHead(platform::untranslated(L"Notes")) +
                      numberHead(platform::untranslated(L"Accepted")));
    for (const std::size_t i : byHarm(results)) {
        const CheckResult& result = results[i];
        html += "<tr><td><a href=\"#d" + std::to_string(i) + "\">" + escaped(result.drawing) + "</a></td>";
        if (!result.unreadable.empty())
            html += "<td colspan=\"4\" class=\"error\">" + escaped(summaryOf(result)) + "</td>";
        else
            for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note, Severity::Off})
                html += cell(result.count(severity));
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

// How often each rule is broken in all of them.
std::string rulesTable(const CheckResults& results) {
    struct Total {
        std::size_t findings = 0, drawings = 0;
        std::uint64_t objects = 0;
        const CheckResult* last = nullptr;
    };
    std::map<std::pair<int, const Rule*>, Total> totals;  // the worst first
    for (const CheckResult& result : results) {
        for (const Finding& finding : result.findings) {
            if (!finding.reason.empty()) continue;
            Total& total = totals[{-static_cast<int>(finding.severity), finding.rule}];
            ++total.findings;
            total.objects += finding.count;
            if (total.last != &result) ++total.drawings;
            total.last = &result;
        }
    }
    std::string html =
        tableHead(platform::untranslated(L"Rules"),
                  head(platform::untranslated(L"Rule")) + numberHead(platform::untranslated(L"Drawings")) +
                      numberHead(platform::untranslated(L"Findings")) + numberHead(platform::untranslated(L"Objects")));
    for (const auto& [key, total] : totals)
        html += "<tr><td>" + markOf(nameOf(static_cast<Severity>(-key.first))) + " " + shown(key.second->title) +
                " <code>" + escaped(key.second->id) + "</code></td>" + cell(total.drawings) + cell(total.findings) +
                cell(total.objects) + "</tr>\n";
    return html + "</table>\n";
}

}  // namespace

std::string htmlReport(const CheckResults& results) {
    const std::string title = escaped(platform::translated(L"Check against the standard"));
    const bool isChinese = platform::language() == platform::Language::Chinese;
    std::string html = std::string("<!DOCTYPE html>\n<html lang=\"") + (isChinese ? "zh-CN" : "en") +
                       "\">\n<head>\n<title>" + title + "</title>" + kHead + "<h1>" + title + "</h1>\n";
    if (results.size() > 1) html += drawingsTable(results) + rulesTable(results);
    for (const std::size_t i : byHarm(results))
        html += sectionOf(results[i], i);
    return html + kTail;
}

}  // namespace qrs::audit
