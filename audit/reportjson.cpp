// The report for programs.
#include <nlohmann/json.hpp>

#include "host/platform/codepage.h"
#include "report.h"

namespace qrs::audit {

namespace {

// Members keep the order they are written in.
using Json = nlohmann::ordered_json;

std::string utf8(const std::wstring& text) {
    return platform::toUtf8(text);
}

Json jsonOf(const Finding& finding) {
    Json json = {{"rule", utf8(finding.rule->id)},
                 {"severity", utf8(nameOf(finding.severity))},
                 {"subject", utf8(finding.subject)}};
    if (!finding.detail.empty()) json["detail"] = utf8(finding.detail);
    json["objects"] = finding.count;
    json["handles"] = Json::array();
    for (const std::wstring& handle : finding.handles)
        json["handles"].push_back(utf8(handle));
    for (const Difference& difference : finding.differences)
        json["differences"].push_back({{"property", utf8(difference.property)},
                                       {"drawing", utf8(difference.drawing)},
                                       {"standard", utf8(difference.standard)}});
    if (!finding.reason.empty()) json["accepted"] = utf8(finding.reason);
    return json;
}

Json jsonOf(const CheckResult& result) {
    Json json = {{"drawing", utf8(result.file)}};
    if (!result.unreadable.empty()) {
        json["unreadable"] = result.unreadable;
        return json;
    }
    json["standard"] = utf8(result.standard);
    json["standardFile"] = result.standardFile.empty() ? Json(nullptr) : Json(utf8(result.standardFile));
    json["entities"] = result.entities;
    json["errors"] = result.count(Severity::Error);
    json["warnings"] = result.count(Severity::Warning);
    json["notes"] = result.count(Severity::Note);
    json["accepted"] = result.count(Severity::Off);
    json["findings"] = Json::array();
    for (const Finding& finding : result.findings)
        json["findings"].push_back(jsonOf(finding));
    json["idleAccepted"] = Json::array();
    for (const std::wstring& row : result.idle)
        json["idleAccepted"].push_back(utf8(row));
    return json;
}

}  // namespace

std::string jsonReport(const CheckResults& results) {
    Json rules = Json::object();
    for (const Rule& rule : allRules())
        rules[utf8(rule.id)] = {{"title", utf8(rule.title)}, {"remedy", utf8(rule.remedy)}};
    Json json = {{"format", 1}, {"rules", std::move(rules)}, {"drawings", Json::array()}};
    for (const CheckResult& result : results)
        json["drawings"].push_back(jsonOf(result));
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace qrs::audit
