// Reads the program's command line.
#include "console/options.h"

#include <algorithm>
#include <CLI/CLI.hpp>

#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace qrs::console {

namespace {

std::filesystem::path pathOf(const std::string& argument) {
    return platform::nativeFromTyped(argument);
}

// What the library understands, as it came: no lists in brackets, no conversion.
struct RawOptions {
    std::string drawing, script, output, system, settings, described;
    std::vector<std::string> lines, plugins, support, compared;
    unsigned codePage = 0;
    double timeout = 0;
    bool inPlace = false, keepGoing = false, asJson = false, withoutModule = false;
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

void describe(CLI::App& app, RawOptions& raw) {
    app.allow_windows_style_options(false);
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("--version", "qrsconsole " QRS_VERSION, "Print the version");
    app.add_option("DRAWING", raw.drawing, "Drawing to open (DXF); without it a new one is made")->type_name("FILE");
    app.add_option("-s,--script", raw.script, "Run the commands of a script; - is standard input")->type_name("FILE");
    addRepeated(app, "-e,--execute", raw.lines, "Run one line before the script; repeatable")->type_name("LINE");
    CLI::Option* output =
        app.add_option("-o,--output", raw.output, "Write the drawing here at the end")->type_name("FILE");
    CLI::Option* inPlace =
        app.add_flag("--in-place", raw.inPlace, "Write the drawing over itself at the end; the old one stays as .bak");
    output->excludes(inPlace);
    addRepeated(app, "-p,--plugin", raw.plugins,
                "Load this plug-in, too; a bare name is looked for beside the program as well; repeatable")
        ->type_name("FILE");
    app.add_flag("--no-module", raw.withoutModule, "Do not load the module beside the program");
    app.add_option("--system", raw.system, "The suite's system folder, and its standard for this run")
        ->type_name("DIR");
    app.add_option("--settings", raw.settings, "Keep the per-user settings in this file")->type_name("FILE");
    addRepeated(app, "--support", raw.support, "Folder of the support search path; repeatable")->type_name("DIR");
    app.add_option("--codepage", raw.codePage, "ANSI code page of old files and scripts, for example 936")
        ->type_name("N");
    app.add_option("--timeout", raw.timeout, "Give up after this time")->type_name("SECONDS");
    app.add_flag("--keep-going", raw.keepGoing, "Go on with the script after a command has failed");
    app.add_option("--info", raw.described, "Print what a drawing holds, and run nothing")->type_name("FILE");
    app.add_option("--compare", raw.compared, "Print where two drawings differ, and run nothing")
        ->type_name("FILE")
        ->expected(2);
    app.add_flag("--json", raw.asJson, "Print the report of --info or --compare for programs");
    app.footer(
        "Exit codes: 0 done, 1 a command failed or two drawings differ, 2 wrong usage, 3 a file cannot be read,\n"
        "4 a file cannot be written.");
}

// What is wrong with the options of a report, or nothing.
std::string findReportMisuse(const CLI::App& app, const RawOptions& raw) {
    const bool describes = app.count("--info") > 0;
    const bool compares = app.count("--compare") > 0;
    if (!describes && !compares) return raw.asJson ? "--json needs --info or --compare" : "";
    if (describes && compares) return "--info and --compare exclude each other";
    std::vector<const char*> others = {"DRAWING",  "--script",    "--execute", "--output",    "--in-place",
                                       "--plugin", "--no-module", "--support", "--keep-going"};
    // The report on a drawing also names the standard.
    if (compares) others.insert(others.end(), {"--system", "--settings"});
    for (const char* other : others)
        if (app.count(other) > 0)
            return std::string(describes ? "--info" : "--compare") + " runs nothing and excludes " + other;
    const bool isNameless = describes ? raw.described.empty() : raw.compared[0].empty() || raw.compared[1].empty();
    return isNameless ? "the drawing's name is empty" : "";
}

// What is wrong with options that are each well-formed, or nothing.
std::string findMisuse(const CLI::App& app, const RawOptions& raw) {
    if (raw.drawing.empty()) {
        if (app.count("DRAWING") > 0) return "the drawing's name is empty";
        if (app.count("--output") > 0) return "--output needs a drawing";
        if (raw.inPlace) return "--in-place needs a drawing";
    }
    for (const char* name : {"--script", "--output", "--system", "--settings"})
        if (app.count(name) > 0 && app.get_option(name)->results().front().empty())
            return std::string(name) + " needs a name that is not empty";
    const auto isEmpty = [](const std::string& text) { return text.empty(); };
    if (std::any_of(raw.plugins.begin(), raw.plugins.end(), isEmpty)) return "--plugin needs a name that is not empty";
    if (std::any_of(raw.support.begin(), raw.support.end(), isEmpty)) return "--support needs a name that is not empty";
    if (app.count("--codepage") > 0 && !platform::isKnownCodePage(raw.codePage))
        return "--codepage: " + std::to_string(raw.codePage) + " is no code page this system knows";
    // A day is far beyond any drawing; the bound keeps the clock's arithmetic safe.
    if (app.count("--timeout") > 0 && !(raw.timeout > 0 && raw.timeout <= 86400))
        return "--timeout needs a number of seconds above 0 and at most 86400";
    return findReportMisuse(app, raw);
}

Options optionsOf(const CLI::App& app, const RawOptions& raw) {
    const auto optionalPath = [&app](const char* name, const std::string& value) {
        return app.count(name) > 0 ? std::optional(pathOf(value)) : std::nullopt;
    };
    Options options;
    options.drawing = pathOf(raw.drawing);
    options.lines = raw.lines;
    options.script = optionalPath("--script", raw.script);
    options.output = pathOf(raw.output);
    options.inPlace = raw.inPlace;
    for (const std::string& plugin : raw.plugins)
        options.plugins.push_back(pathOf(plugin));
    options.withoutModule = raw.withoutModule;
    options.system = optionalPath("--system", raw.system);
    options.settings = optionalPath("--settings", raw.settings);
    for (const std::string& folder : raw.support)
        options.support.push_back(pathOf(folder));
    if (app.count("--codepage") > 0) options.codePage = raw.codePage;
    options.timeoutSeconds = raw.timeout;
    options.keepGoing = raw.keepGoing;
    options.described = pathOf(raw.described);
    for (const std::string& drawing : raw.compared)
        options.compared.push_back(pathOf(drawing));
    options.asJson = raw.asJson;
    return options;
}

std::string onOneLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    CLI::App app("Runs the commands of a pipe-system module on a drawing.", "qrsconsole");
    RawOptions raw;
    describe(app, raw);
    // The library takes them last one first, without the program's name.
    std::vector<std::string> reversed;
    if (!arguments.empty()) reversed.assign(arguments.rbegin(), arguments.rend() - 1);
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
        parsed.text = onOneLine(error.what());
        parsed.code = ExitCode::WrongUsage;
        return parsed;
    }
    parsed.text = findMisuse(app, raw);
    if (!parsed.text.empty()) {
        parsed.code = ExitCode::WrongUsage;
        return parsed;
    }
    parsed.options = optionsOf(app, raw);
    return parsed;
}

}  // namespace qrs::console
