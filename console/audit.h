// --check, --repair and --pipes: runs of the plug-in that checks drawings against the standard.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace qrs::console {

struct Options;
enum class ExitCode : int;

struct AuditOptions {
    bool isCheck = false;
    std::string repair;  // a file of mappings, or "auto"; empty: none
    bool isPipes = false;
    bool isDryRun = false;
    bool withReferences = false;
    std::string form;            // text, json, html, csv; empty: by the ending of the report's name, else text
    std::filesystem::path file;  // of the report; empty: standard output
    std::filesystem::path rules;

    bool isWanted() const { return isCheck || isPipes || !repair.empty(); }
    // Whether one run takes all the drawings, and one report tells of them.
    bool takesAllDrawings() const { return isCheck || isPipes; }
};

// The options as the command line gives them.
struct RawAuditOptions {
    bool isCheck = false, isPipes = false, isDryRun = false, withReferences = false;
    std::string repair, form, file, rules;
};
void describeAudit(CLI::App& app, RawAuditOptions& raw);
// What is wrong with them, or nothing; drawings: how many the command line names.
std::string findAuditMisuse(const CLI::App& app, const RawAuditOptions& raw, std::size_t drawings);
AuditOptions auditOptionsOf(const RawAuditOptions& raw);

// Opens the drawings, has them checked, repaired or told about, and prints the report alone.
ExitCode runAudit(const Options& given);

}  // namespace qrs::console
