// Reads the program's command line.
#include "console/options.h"

#include <algorithm>
#include <CLI/CLI.hpp>

#include "console/converter.h"
#include "console/optionerrors.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"

namespace qrs::console {

using platform::translated;
using platform::untranslated;

namespace {

std::filesystem::path pathOf(const std::string& argument) {
    return platform::nativeFromTyped(argument);
}

// What the library understands, as it came: no lists in brackets, no conversion.
struct RawOptions {
    std::string script, output, system, settings, described, list, report, converter, keepGoing, language;
    std::string runFolder, runDrawing, runOutput;
    std::vector<std::string> drawings, lines, plugins, support, compared;
    unsigned codePage = 0;
    int backups = 1;
    double timeout = 0;
    bool inPlace = false, asJson = false, withoutModule = false, strict = false, allWarnings = false;
    RawAuditOptions audit;
    RawPlotOptions plot;
};

// An option that may be given several times, each time with exactly one value taken as it is.
CLI::Option* addRepeated(CLI::App& app, const std::string& names, std::vector<std::string>& values,
                         const std::string& description) {
    const CLI::callback_t take = [&values](const CLI::results_t& given) {
        values = given;
        return true;
    };
    return app.add_option(names, take, description)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false)
        ->type_name("TEXT");
}

constexpr int kMostBackups = 999;
constexpr const char* kKeepAll = "all";
constexpr const char* kKeepDrawings = "drawings";

// The drawings after the first: what the library calls extras. False, with the argument, when one is no drawing but an
// option that there is not.
bool takeFurtherDrawings(const CLI::App& app, std::vector<std::string>& drawings, std::string& unknown) {
    bool isMarked = false;
    for (const std::string& extra : app.remaining()) {
        if (!isMarked && extra == "--") {
            isMarked = true;
        } else if (!isMarked && extra.size() > 1 && extra.front() == '-') {
            unknown = extra;
            return false;
        } else {
            drawings.push_back(extra);
        }
    }
    return true;
}

// What a run of several drawings tells the run of one of them; not meant for users.
void addRunOptions(CLI::App& app, RawOptions& raw) {
    app.add_option("--run-folder", raw.runFolder)->group("");
    app.add_option("--run-drawing", raw.runDrawing)->group("");
    app.add_option("--run-output", raw.runOutput)->group("");
}

constexpr const char* kHelpLabels[] = {untranslated("Usage"), untranslated("Positionals"), untranslated("OPTIONS"),
                                       untranslated("Excludes")};

void describe(CLI::App& app, RawOptions& raw) {
    const auto formatter = app.get_formatter();
    for (const char* label : kHelpLabels)
        formatter->label(label, translated(label));
    app.option_defaults()->group(translated("Options"));
    app.add_option("DRAWING", raw.drawings.emplace_back(),
                   translated("Drawing to open (DXF), or several; without it a new one is made"))
        ->type_name("FILE");
    // The library would take names in brackets apart, had it all of them as one option.
    app.allow_extras();
    addRunOptions(app, raw);
    app.allow_windows_style_options(false);
    app.set_help_flag("-h,--help", translated("Print this help"));
    app.set_version_flag("--version", "qrsconsole " QRS_VERSION, translated("Print the version"));
    app.add_option("--list", raw.list,
                   translated("Open the drawings named in this file, too, one a line; - is standard input"))
        ->type_name("FILE");
    app.add_option("-s,--script", raw.script, translated("Run the commands of a script; - is standard input"))
        ->type_name("FILE");
    addRepeated(app, "-e,--execute", raw.lines, translated("Run one line before the script; repeatable"))
        ->type_name("LINE");
    CLI::Option* output = app.add_option("-o,--output", raw.output,
                                         translated("Write the drawing here at the end; DIR/ for several drawings"))
                              ->type_name("FILE");
    CLI::Option* inPlace = app.add_flag(
        "--in-place", raw.inPlace, translated("Write the drawing over itself at the end; the old one stays as .bak"));
    output->excludes(inPlace);
    app.add_option("--backup", raw.backups,
                   translated("Keep so many earlier states of a file that is written: .bak, .bak2, ..."))
        ->type_name("N");
    app.add_option("--converter", raw.converter,
                   translated("The program that turns DWG drawings to DXF and back, with {in}, {out}, {version}"))
        ->type_name("CMD");
    addRepeated(app, "-p,--plugin", raw.plugins,
                translated("Load this plug-in, too; a bare name is looked for beside the program as well; repeatable"))
        ->type_name("FILE");
    app.add_flag("--no-module", raw.withoutModule, translated("Do not load the module beside the program"));
    app.add_option("--system", raw.system, translated("The suite's system folder, and its standard for this run"))
        ->type_name("DIR");
    app.add_option("--settings", raw.settings, translated("Keep the per-user settings in this file"))
        ->type_name("FILE");
    addRepeated(app, "--support", raw.support, translated("Folder of the support search path; repeatable"))
        ->type_name("DIR");
    app.add_option("--codepage", raw.codePage, translated("ANSI code page of old files and scripts, for example 936"))
        ->type_name("N");
    app.add_option("--language", raw.language,
                   translated("Speak Chinese (zh) or English (en) instead of what the locale says"))
        ->type_name("zh|en");
    app.add_option("--timeout", raw.timeout, translated("Give up after this time"))->type_name("SECONDS");
    app.add_flag(
        "--keep-going{all}", raw.keepGoing,
        translated("Go on with the script after a command has failed, and with the next drawing after one has; "
                   "--keep-going=drawings for the latter alone"));
    app.add_flag("--strict", raw.strict, translated("Count refusals and unanswered prompts as failures"));
    app.add_flag("--warnings", raw.allWarnings,
                 translated("Print all that is damaged in a drawing, not just a line that sums it up"));
    app.add_option("--report", raw.report, translated("Add a line of JSON for each drawing to this file"))
        ->type_name("FILE");
    app.add_option("--info", raw.described, translated("Print what a drawing holds, and run nothing"))
        ->type_name("FILE");
    app.add_option("--compare", raw.compared, translated("Print where two drawings differ, and run nothing"))
        ->type_name("FILE")
        ->expected(2);
    app.add_flag("--json", raw.asJson, translated("Print the report of --info or --compare for programs"));
    describeAudit(app, raw.audit);
    describePlot(app, raw.plot);
    app.footer(
        translated(
            "Without a script the commands are typed; HELP lists them, HELP and a name tells of one, Tab completes.") +
        "\n\n" +
        translated(
            "Exit codes: 0 done, 1 a command failed, two drawings differ or a check found errors, 2 wrong usage,\n"
            "3 a file cannot be read, 4 a file cannot be written, 5 the run of one of several drawings was killed. Of "
            "several\n"
            "drawings the highest."));
}

// What is wrong with the options of a report, or nothing.
std::string findReportMisuse(const CLI::App& app, const RawOptions& raw) {
    const bool describes = app.count("--info") > 0;
    const bool compares = app.count("--compare") > 0;
    if (!describes && !compares) return raw.asJson ? translated("--json needs --info or --compare") : "";
    if (describes && compares) return translated("--info and --compare exclude each other");
    std::vector<const char*> others = {"DRAWING",  "--script", "--execute",   "--output",  "--in-place",
                                       "--plugin", "--list",   "--no-module", "--support", "--keep-going",
                                       "--strict", "--report", "--warnings",  "--backup"};
    // The report on a drawing also names the standard.
    if (compares) others.insert(others.end(), {"--system", "--settings"});
    for (const char* other : others)
        if (app.count(other) > 0)
            return translated("%1 runs nothing and excludes %2", describes ? "--info" : "--compare", other);
    const bool isNameless = describes ? raw.described.empty() : raw.compared[0].empty() || raw.compared[1].empty();
    return isNameless ? translated("the drawing's name is empty") : "";
}

// What is wrong with options that are each well-formed, or nothing.
std::string findMisuse(const CLI::App& app, const RawOptions& raw) {
    const auto isEmpty = [](const std::string& text) { return text.empty(); };
    if (std::any_of(raw.drawings.begin(), raw.drawings.end(), isEmpty))
        return translated("the drawing's name is empty");
    if (raw.drawings.empty() && app.count("--list") == 0) {
        for (const char* name : {"--output", "--in-place", "--report"})
            if (app.count(name) > 0 && app.count("--plot-compare") == 0) return translated("%1 needs a drawing", name);
    }
    for (const char* name : {"--script", "--output", "--system", "--settings", "--list", "--report", "--converter"})
        if (app.count(name) > 0 && app.get_option(name)->results().front().empty())
            return translated("%1 needs a name that is not empty", name);
    if (raw.list == "-" && raw.script == "-") return translated("--list and --script cannot both be standard input");
    if (raw.backups < 0 || raw.backups > kMostBackups)
        return translated("--backup needs a number from 0 to %1", kMostBackups);
    if (!raw.keepGoing.empty() && raw.keepGoing != kKeepAll && raw.keepGoing != kKeepDrawings)
        return translated("--keep-going takes =all or =drawings");
    if (!raw.converter.empty())
        if (const std::string misuse = findConverterMisuse(raw.converter); !misuse.empty())
            return translated("--converter: %1", misuse);
    if (std::any_of(raw.plugins.begin(), raw.plugins.end(), isEmpty))
        return translated("--plugin needs a name that is not empty");
    if (std::any_of(raw.support.begin(), raw.support.end(), isEmpty))
        return translated("--support needs a name that is not empty");
    if (app.count("--codepage") > 0 && !platform::isKnownCodePage(raw.codePage))
        return translated("--codepage: %1 is no code page this system knows", raw.codePage);
    if (app.count("--language") > 0 && !platform::languageNamed(raw.language))
        return translated("--language takes zh or en");
    // A day is far beyond any drawing; the bound keeps the clock's arithmetic safe.
    if (app.count("--timeout") > 0 && !(raw.timeout > 0 && raw.timeout <= 86400))
        return translated("--timeout needs a number of seconds above 0 and at most 86400");
    if (std::string misuse = findAuditMisuse(app, raw.audit, raw.drawings.size()); !misuse.empty()) return misuse;
    if (std::string misuse = findPlotMisuse(app, raw.plot, raw.drawings.size()); !misuse.empty()) return misuse;
    return findReportMisuse(app, raw);
}

Options optionsOf(const CLI::App& app, const RawOptions& raw) {
    const auto optionalPath = [&app](const char* name, const std::string& value) {
        return app.count(name) > 0 ? std::optional(pathOf(value)) : std::nullopt;
    };
    Options options;
    for (const std::string& drawing : raw.drawings)
        options.drawings.push_back(pathOf(drawing));
    options.list = optionalPath("--list", raw.list);
    options.report = optionalPath("--report", raw.report);
    options.lines = raw.lines;
    options.script = optionalPath("--script", raw.script);
    options.output = pathOf(raw.output);
    options.inPlace = raw.inPlace;
    options.backups = raw.backups;
    if (!raw.converter.empty()) options.converter = raw.converter;
    for (const std::string& plugin : raw.plugins)
        options.plugins.push_back(pathOf(plugin));
    options.withoutModule = raw.withoutModule;
    options.system = optionalPath("--system", raw.system);
    options.settings = optionalPath("--settings", raw.settings);
    for (const std::string& folder : raw.support)
        options.support.push_back(pathOf(folder));
    if (app.count("--codepage") > 0) options.codePage = raw.codePage;
    options.timeoutSeconds = raw.timeout;
    options.keepGoing = raw.keepGoing == kKeepAll;
    options.keepGoingDrawings = !raw.keepGoing.empty();
    options.strict = raw.strict;
    options.allWarnings = raw.allWarnings;
    options.described = pathOf(raw.described);
    for (const std::string& drawing : raw.compared)
        options.compared.push_back(pathOf(drawing));
    options.asJson = raw.asJson;
    options.audit = auditOptionsOf(raw.audit);
    options.plot = plotOptionsOf(raw.plot);
    if (!options.drawings.empty()) options.drawing = options.drawings.front();
    if (!raw.runFolder.empty()) {
        options.runFolder = pathOf(raw.runFolder);
        options.drawing = pathOf(raw.runDrawing);
        options.output = pathOf(raw.runOutput);
    }
    return options;
}

std::string onOneLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace

void chooseLanguage(const std::vector<std::string>& arguments) {
    constexpr std::string_view kOption = "--language";
    platform::setLanguage(platform::systemLanguage());
    for (std::size_t i = 1; i < arguments.size() && arguments[i] != "--"; ++i) {
        const std::string_view argument = arguments[i];
        std::string_view name;
        if (argument == kOption && i + 1 < arguments.size())
            name = arguments[i + 1];
        else if (argument.substr(0, kOption.size()) == kOption && argument.substr(kOption.size(), 1) == "=")
            name = argument.substr(kOption.size() + 1);
        if (const auto chosen = platform::languageNamed(name)) platform::setLanguage(*chosen);
    }
}

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    CLI::App app(translated("Runs the commands of a pipe-system module on a drawing."), "qrsconsole");
    RawOptions raw;
    describe(app, raw);
    // The library takes them last one first, without the program's name.
    std::vector<std::string> reversed;
    std::vector<std::string> given;
    if (!arguments.empty()) given.assign(arguments.begin() + 1, arguments.end());
    reversed.assign(given.rbegin(), given.rend());
    ParsedOptions parsed;
    try {
        app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        parsed.text = app.help();
        return parsed;
    } catch (const CLI::CallForVersion& version) {
        parsed.text = std::string(version.what()) + "\n";
        return parsed;
    } catch (const CLI::ParseError& error) {
        parsed.text = inLanguage(onOneLine(error.what()));
        parsed.code = ExitCode::WrongUsage;
        return parsed;
    }
    if (app.count("DRAWING") == 0) raw.drawings.clear();
    std::string unknown;
    parsed.text = takeFurtherDrawings(app, raw.drawings, unknown)
                      ? findMisuse(app, raw)
                      : translated("The following argument was not expected: %1", unknown);
    if (!parsed.text.empty()) {
        parsed.code = ExitCode::WrongUsage;
        return parsed;
    }
    parsed.options = optionsOf(app, raw);
    parsed.options->arguments = std::move(given);
    return parsed;
}

}  // namespace qrs::console
