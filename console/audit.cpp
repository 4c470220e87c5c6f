// Turns --check, --repair and --pipes into commands of the plug-in that carries them out.
#include "console/audit.h"

#include <CLI/CLI.hpp>
#include <iterator>
#include <memory>
#include <utility>

#include "console/batchlist.h"
#include "console/options.h"
#include "console/run.h"
#include "host/platform/files.h"
#include "host/platform/process.h"
#include "host/platform/tree.h"

namespace qrs::console {

namespace {

#if defined(_WIN32)
constexpr const char* kPlugin = "qrs_audit.dll";
#else
constexpr const char* kPlugin = "qrs_audit.so";
#endif

// A form of report, the ending of files that hold one, and the word that the commands know it by.
struct Form {
    const char* name;
    const char* ending;
    const char* word;
};
constexpr Form kForms[] = {
    {"text", ".txt", "Text"}, {"json", ".json", "Json"}, {"html", ".html", "Html"}, {"csv", ".csv", "Csv"}};

// What one of the three options stands for.
struct Task {
    const char* option;
    const char* command;
    const char* forms;  // names of those it knows
};
constexpr Task kCheck = {"--check", "CHECKSTANDARD", "text json html"};

const Task* taskOf(const RawAuditOptions& raw) {
    return raw.isCheck ? &kCheck : nullptr;
}

const Form& formOf(const AuditOptions& options) {
    for (const Form& form : kForms)
        if (options.form.empty() ? options.file.extension() == form.ending : options.form == form.name) return form;
    return kForms[0];
}

std::string answerOf(const std::filesystem::path& path) {
    return path.empty() ? std::string() : std::filesystem::absolute(path).u8string();
}

// The commands with the answers to their prompts.
std::vector<std::string> linesOf(const AuditOptions& options, const std::filesystem::path& report,
                                 const std::vector<std::filesystem::path>& drawings) {
    std::vector<std::string> lines = {kCheck.command, formOf(options).word, answerOf(report), answerOf(options.rules),
                                      options.withReferences ? "Yes" : "No"};
    for (const std::filesystem::path& drawing : drawings)
        lines.push_back(answerOf(drawing));
    lines.emplace_back();
    return lines;
}

// The drawings that the command is to open by itself: those of the options, when there are several. A list on standard
// input is read here. False, with the reason in error.
bool takeDrawings(Options& options, std::vector<std::filesystem::path>& drawings, platform::Error& error) {
    if (!options.audit.takesAllDrawings() || (options.drawings.size() < 2 && !options.list)) return true;
    std::vector<BatchItem> items;
    if (!collectDrawings(options, items, error)) return false;
    for (BatchItem& item : items)
        drawings.push_back(std::move(item.drawing));
    options.drawings.clear();
    options.list.reset();
    options.drawing.clear();
    return true;
}

bool printFile(const std::filesystem::path& file, platform::Error& error) {
    std::string report;
    // Nothing was written when the command failed, which has been told.
    if (!platform::fileExists(platform::innerPath(file))) return true;
    if (!platform::readFile(file, report, error)) return false;
    if (platform::writeStandardOutput(report)) return true;
    error.message = "standard output cannot be written";
    return false;
}

}  // namespace

void describeAudit(CLI::App& app, RawAuditOptions& raw) {
    app.add_flag("--check", raw.isCheck, "Tell how far the drawings are from the standard, and run nothing else");
    app.add_option("--form", raw.form, "Form of that report: text, json, html; without it the ending of --to tells")
        ->type_name("FORM");
    app.add_option("--to", raw.file, "Write that report to this file instead of standard output")->type_name("FILE");
    app.add_option("--rules", raw.rules, "The severities of the rules of --check, a rule and a severity a line")
        ->type_name("FILE");
    app.add_flag("--references", raw.withReferences, "Check external references, too");
}

std::string findAuditMisuse(const CLI::App& app, const RawAuditOptions& raw) {
    const Task* task = taskOf(raw);
    if (task == nullptr) {
        for (const char* name : {"--form", "--to", "--rules", "--references"})
            if (app.count(name) > 0) return std::string(name) + " needs --check";
        return {};
    }
    for (const char* other :
         {"--script", "--execute", "--report", "--info", "--compare", "--no-module", "--output", "--in-place"})
        if (app.count(other) > 0) return std::string(task->option) + " excludes " + other;
    if (app.count("DRAWING") == 0 && app.count("--list") == 0) return std::string(task->option) + " needs a drawing";
    for (const char* name : {"--to", "--rules"})
        if (app.count(name) > 0 && app.get_option(name)->results().front().empty())
            return std::string(name) + " needs a name that is not empty";
    const bool isKnown = (" " + std::string(task->forms) + " ").find(" " + raw.form + " ") != std::string::npos;
    if (app.count("--form") > 0 && !isKnown)
        return "--form of " + std::string(task->option) + " is one of: " + task->forms;
    return {};
}

AuditOptions auditOptionsOf(const RawAuditOptions& raw) {
    AuditOptions options;
    options.isCheck = raw.isCheck;
    options.withReferences = raw.withReferences;
    options.form = raw.form;
    if (!raw.file.empty()) options.file = platform::nativeFromTyped(raw.file);
    if (!raw.rules.empty()) options.rules = platform::nativeFromTyped(raw.rules);
    return options;
}

ExitCode runAudit(const Options& given) {
    const auto fails = [](ExitCode code, const platform::Error& error) {
        complain(error.message);
        return code;
    };
    platform::Error error;
    Options options = given;
    std::vector<std::filesystem::path> drawings;
    if (!takeDrawings(options, drawings, error)) return fails(ExitCode::CannotRead, error);
    const auto folder = platform::PrivateFolder::make(error);
    if (!folder) return fails(ExitCode::CannotWrite, error);
    const bool isPrinted = given.audit.file.empty();
    const std::filesystem::path report = isPrinted ? folder->path() / "report" : given.audit.file;
    options.lines = linesOf(given.audit, report, drawings);
    options.plugins.emplace_back(kPlugin);
    options.isQuiet = true;
    options.audit = {};
    const ExitCode code = run(options);
    if (isPrinted && !printFile(report, error)) return fails(ExitCode::CannotWrite, error);
    return code;
}

}  // namespace qrs::console
