// Turns --check, --repair and --pipes into commands of the plug-in that carries them out.
#include "console/audit.h"

#include <CLI/CLI.hpp>
#include <iterator>
#include <memory>
#include <utility>

#include "console/batch.h"
#include "console/batchlist.h"
#include "console/options.h"
#include "console/run.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/process.h"
#include "host/platform/text.h"
#include "host/platform/tree.h"

namespace qrs::console {

using platform::translated;

namespace {

#if defined(_WIN32)
constexpr const char* kPlugin = "qrs_audit.dll";
#else
constexpr const char* kPlugin = "qrs_audit.so";
#endif

constexpr const char* kAuto = "auto";

// A form of report, the ending of files that hold one, and the word that the commands know it by.
struct Form {
    const char* name;
    const char* ending;
    const char* word;
};
constexpr Form kForms[] = {{"text", ".txt", "Text"},
                           {"json", ".json", "Json"},
                           {"html", ".html", "Html"},
                           {"html", ".htm", "Html"},
                           {"csv", ".csv", "Csv"}};

std::string answerOf(const std::filesystem::path& path) {
    return path.empty() ? std::string() : std::filesystem::absolute(path).u8string();
}

const char* answerOf(bool isSo) {
    return isSo ? "Yes" : "No";
}

// What one of the three options stands for: a command, the forms of its report, and the answers to its prompts.
struct Task {
    const char* option;
    const char* command;
    const char* forms;
    std::vector<std::string> (*answers)(const AuditOptions& options, const std::string& form,
                                        const std::string& report);
};

std::vector<std::string> checkAnswers(const AuditOptions& options, const std::string& form, const std::string& report) {
    return {form, report, answerOf(options.rules), answerOf(options.withReferences)};
}

std::vector<std::string> repairAnswers(const AuditOptions& options, const std::string&, const std::string& report) {
    const bool isAuto = options.repair == kAuto;
    return {isAuto ? "Auto" : answerOf(platform::nativeFromTyped(options.repair)), answerOf(options.isDryRun), report};
}

std::vector<std::string> pipeAnswers(const AuditOptions&, const std::string& form, const std::string& report) {
    return {form, report};
}

constexpr Task kCheck = {"--check", "CHECKSTANDARD", "text/json/html", &checkAnswers};
constexpr Task kRepair = {"--repair", "REPAIRSTANDARD", "text", &repairAnswers};
constexpr Task kPipes = {"--pipes", "PIPEREPORT", "text/csv/json", &pipeAnswers};

// Options that only some of them know.
struct Belonging {
    const char* option;
    const char* tasks;
};
constexpr Belonging kBelongings[] = {{"--form", "--check/--pipes"}, {"--to", "--check/--repair/--pipes"},
                                     {"--rules", "--check"},        {"--references", "--check"},
                                     {"--dry-run", "--repair"},     {"--output", "--repair"},
                                     {"--in-place", "--repair"},    {"--backup", "--repair"}};

// Words are parted by "/".
bool isAmong(const std::string& word, const char* words) {
    return ("/" + std::string(words) + "/").find("/" + word + "/") != std::string::npos;
}

// The form that is named, or else that of the file's ending; text without either.
const Form& formOf(const std::string& name, const std::filesystem::path& file) {
    const std::wstring ending = platform::foldCase(platform::innerPath(file.extension()));
    for (const Form& form : kForms)
        if (name.empty() ? ending == platform::foldCase(platform::fromUtf8(form.ending)) : name == form.name)
            return form;
    return kForms[0];
}

const Task& taskOf(const AuditOptions& options) {
    return options.isCheck ? kCheck : options.isPipes ? kPipes : kRepair;
}

// The command with the answers to its prompts.
std::vector<std::string> linesOf(const AuditOptions& options, const std::filesystem::path& report,
                                 const std::vector<std::filesystem::path>& drawings) {
    const Task& task = taskOf(options);
    std::vector<std::string> lines = task.answers(options, formOf(options.form, options.file).word, answerOf(report));
    lines.insert(lines.begin(), task.command);
    if (!options.takesAllDrawings()) return lines;
    for (const std::filesystem::path& drawing : drawings)
        lines.push_back(answerOf(drawing));
    lines.emplace_back();
    return lines;
}

// The drawings that the command is to open by itself, a single one, too: what cannot be read stands in the report. A
// list on standard input is read here. False, with the reason in error.
bool takeDrawings(Options& options, std::vector<std::filesystem::path>& drawings, platform::Error& error) {
    if (!options.audit.takesAllDrawings()) return true;
    std::vector<BatchItem> items;
    if (!collectDrawings(options, items, error)) return false;
    for (BatchItem& item : items)
        drawings.push_back(std::move(item.drawing));
    options.drawings.clear();
    options.list.reset();
    options.drawing.clear();
    return true;
}

// The file that the report would be written over, of those that the run reads or writes besides; empty: none.
std::filesystem::path findOverwritten(const Options& options, std::vector<std::filesystem::path> drawings) {
    const AuditOptions& audit = options.audit;
    if (audit.file.empty()) return {};
    std::vector<std::filesystem::path> others = {audit.rules, options.settings.value_or("")};
    if (options.list && *options.list != "-") others.push_back(*options.list);
    if (!audit.repair.empty() && audit.repair != kAuto) others.push_back(platform::nativeFromTyped(audit.repair));
    const bool isFolder = !options.output.empty() && isFolderName(options.output);
    others.push_back(isFolder ? options.output / options.drawing.filename() : options.output);
    drawings.push_back(options.drawing);
    for (const std::filesystem::path& drawing : drawings) {
        if (drawing.empty()) continue;
        others.push_back(drawing);
        // What was accepted lies beside each.
        others.emplace_back(drawing).concat(".accepted");
    }
    for (const std::filesystem::path& other : others)
        // Nothing lies in a file but itself.
        if (!other.empty() && platform::liesInFolder(audit.file, other)) return other;
    return {};
}

bool printFile(const std::filesystem::path& file, platform::Error& error) {
    std::string report;
    // Nothing was written when the command failed, which has been told.
    if (!platform::fileExists(platform::innerPath(file))) return true;
    if (!platform::readFile(file, report, error)) return false;
    if (platform::writeStandardOutput(report)) return true;
    error.message = translated("standard output cannot be written");
    return false;
}

}  // namespace

void describeAudit(CLI::App& app, RawAuditOptions& raw) {
    app.add_flag("--check", raw.isCheck,
                 translated("Tell how far the drawings are from the standard, and run nothing else"));
    app.add_option(
           "--repair", raw.repair,
           translated("Mend what a file of mappings says, or with auto what has one answer, and run nothing else"))
        ->type_name("MAP");
    app.add_flag("--pipes", raw.isPipes, translated("Tell what pipes the drawings hold, and run nothing else"));
    app.add_option(
           "--form", raw.form,
           translated(
               "Form of that report: text, json, html (--check), csv (--pipes); without it the ending of --to tells"))
        ->type_name("FORM");
    app.add_option("--to", raw.file, translated("Write that report to this file instead of standard output"))
        ->type_name("FILE");
    app.add_option("--rules", raw.rules,
                   translated("The severities of the rules of --check, a rule and a severity a line"))
        ->type_name("FILE");
    app.add_flag("--references", raw.withReferences, translated("Check external references, too"));
    app.add_flag("--dry-run", raw.isDryRun, translated("Only tell what --repair would change"));
}

std::string findAuditMisuse(const CLI::App& app, const RawAuditOptions& raw, std::size_t drawings) {
    const Task* task = nullptr;
    for (const Task* one : {&kCheck, &kRepair, &kPipes}) {
        if (app.count(one->option) == 0) continue;
        if (task != nullptr) return translated("%1 excludes %2", task->option, one->option);
        task = one;
    }
    for (const Belonging& one : kBelongings) {
        if (app.count(one.option) == 0 || (task != nullptr && isAmong(task->option, one.tasks))) continue;
        if (task != nullptr) return translated("%1 excludes %2", task->option, one.option);
        const bool isOurs = std::string(one.tasks) != kRepair.option || one.option == std::string("--dry-run");
        if (isOurs) return translated("%1 needs one of: %2", one.option, one.tasks);
    }
    if (task == nullptr) return {};
    for (const char* other : {"--script", "--execute", "--report", "--info", "--compare", "--no-module"})
        if (app.count(other) > 0) return translated("%1 excludes %2", task->option, other);
    if (drawings == 0 && app.count("--list") == 0) return translated("%1 needs a drawing", task->option);
    for (const char* name : {"--to", "--rules", "--repair"})
        if (app.count(name) > 0 && app.get_option(name)->results().front().empty())
            return translated("%1 needs a name that is not empty", name);
    if (app.count("--form") > 0 && !isAmong(raw.form, task->forms))
        return translated("--form of %1 is one of: %2", task->option, task->forms);
    const Form& form = formOf(raw.form, platform::nativeFromTyped(raw.file));
    if (!isAmong(form.name, task->forms))
        return translated("%1: %2 cannot make a report of this ending; its forms: %3", raw.file, task->option,
                          task->forms);
    if (task != &kRepair) return {};
    if (!raw.isDryRun && app.count("--output") == 0 && app.count("--in-place") == 0)
        return translated("--repair needs --output, --in-place or --dry-run");
    if (!raw.file.empty() && (drawings > 1 || app.count("--list") > 0))
        return translated("--to of --repair needs one drawing");
    return {};
}

AuditOptions auditOptionsOf(const RawAuditOptions& raw) {
    AuditOptions options;
    options.isCheck = raw.isCheck;
    options.isPipes = raw.isPipes;
    options.repair = raw.repair;
    options.isDryRun = raw.isDryRun;
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
    if (given.list && given.audit.takesAllDrawings() && drawings.empty()) {
        error.message = translated("no drawing was named");
        return fails(ExitCode::WrongUsage, error);
    }
    if (const std::filesystem::path other = findOverwritten(given, drawings); !other.empty()) {
        error.message = translated("--to would overwrite %1", other.u8string());
        return fails(ExitCode::WrongUsage, error);
    }
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
