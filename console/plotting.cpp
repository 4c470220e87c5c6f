// Turns --plot and its options into pictures.
#include "console/plotting.h"

#include <CLI/CLI.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "console/converter.h"
#include "console/options.h"
#include "console/run.h"
#include "host/commands/hostcommands.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/number.h"
#include "host/report/hostreport.h"

namespace qrs::console {

using platform::translated;

namespace {

constexpr std::string_view kName = "{name}";
constexpr std::string_view kLayout = "{layout}";

// The pattern with a drawing's and a layout's name in their places; what braces stand in those names is none.
std::string fileNameOf(std::string_view pattern, const std::string& name, const std::string& layout) {
    std::string file;
    while (!pattern.empty()) {
        const bool isName = pattern.substr(0, kName.size()) == kName;
        const bool isLayout = pattern.substr(0, kLayout.size()) == kLayout;
        file += isName ? name : isLayout ? layout : std::string(1, pattern.front());
        pattern.remove_prefix(isName ? kName.size() : isLayout ? kLayout.size() : 1);
    }
    return file;
}

// Something else in braces in the name itself, where it must have been meant to stand for a name; folders may be called
// so.
std::string unknownMark(std::string_view pattern) {
    for (std::size_t at = pattern.find_last_of("/\\") + 1; (at = pattern.find('{', at)) != std::string::npos; ++at) {
        const std::string_view mark = pattern.substr(at, pattern.find('}', at) - at + 1);
        if (mark.back() == '}' && mark != kName && mark != kLayout) return std::string(mark);
    }
    return {};
}

// Windows means a device by it, whatever stands after the dot.
bool isDevice(const std::wstring& name) {
    std::wstring start = name.substr(0, name.find(L'.'));
    start.erase(start.find_last_not_of(L' ') + 1);
    if (start.size() == 4 && std::wstring_view(L"023456789\xB9\xB2\xB3").find(start.back()) != std::wstring_view::npos)
        start.back() = L'1';
    for (const wchar_t* device : {L"CON", L"PRN", L"AUX", L"NUL", L"COM1", L"LPT1", L"CONIN$", L"CONOUT$"})
        if (platform::compareNoCase(start, device) == 0) return true;
    return false;
}

// What no name of a file can hold becomes a dash, and dots at the end, which Windows drops, or which name a folder.
std::string asFileName(const std::wstring& layout) {
    std::string name = (isDevice(layout) ? "-" : "") + platform::toUtf8(layout);
    for (char& character : name)
        if (static_cast<unsigned char>(character) < 0x20 ||
            std::string_view("/\\:*?\"<>|").find(character) != std::string_view::npos)
            character = '-';
    for (std::size_t at = name.size(); at > 0 && (name[at - 1] == '.' || name[at - 1] == ' '); --at)
        name[at - 1] = '-';
    return name;
}

// The names by which the layouts stand in names of files: two that would be the same get a number.
std::vector<std::string> fileNamesOf(const std::vector<std::wstring>& layouts) {
    std::vector<std::string> names;
    std::set<std::wstring> taken;
    for (const std::wstring& layout : layouts) {
        const std::string name = asFileName(layout);
        names.push_back(name);
        for (int number = 2; !taken.insert(platform::foldCase(platform::fromUtf8(names.back()))).second; ++number)
            names.back() = name + "-" + std::to_string(number);
    }
    return names;
}

ExitCode codeOf(host::PlotFailure failure) {
    switch (failure) {
        case host::PlotFailure::Misuse:
            return ExitCode::WrongUsage;
        case host::PlotFailure::CannotRead:
            return ExitCode::CannotRead;
        case host::PlotFailure::CannotWrite:
            return ExitCode::CannotWrite;
        case host::PlotFailure::None:
            break;
    }
    return ExitCode::Done;
}

void tellNotes(const host::PlotOutcome& outcome) {
    for (const std::wstring& note : outcome.notes)
        complain(platform::toUtf8(note));
}

}  // namespace

void describePlot(CLI::App& app, RawPlotOptions& raw) {
    app.add_option(
           "--plot", raw.file,
           translated("Draw the drawing at the end in this file: .svg, .pdf or .png; {name} in it stands for the "
                      "drawing's name, {layout} for each layout's"))
        ->type_name("FILE");
    app.add_option("--plot-compare", raw.compared,
                   translated("Draw two drawings in the file of --output: what is gone red, what is new green"))
        ->type_name("FILE")
        ->expected(2);
    app.add_option("--layout", raw.layout, translated("The layout to draw; without it the one that is current"))
        ->type_name("NAME");
    app.add_option(
           "--paper", raw.paper,
           translated("The paper to draw on: A0 to A5, 420x297 (millimetres) or fit; without it the layout's own"))
        ->type_name("PAPER");
    app.add_option("--dpi", raw.dotsPerInch, translated("Dots per inch of a PNG, 10 to 2400; 150 without it"))
        ->type_name("N");
    app.add_flag("--black", raw.isBlack, translated("Draw all colors black"));
}

std::string findPlotMisuse(const CLI::App& app, const RawPlotOptions& raw, std::size_t drawings) {
    const bool plots = app.count("--plot") > 0;
    const bool compares = app.count("--plot-compare") > 0;
    for (const char* name : {"--layout", "--paper", "--dpi", "--black"})
        if (app.count(name) > 0 && !plots && !compares) return translated("%1 needs --plot or --plot-compare", name);
    if (!plots && !compares) return {};
    for (const char* name : {"--layout", "--paper"})
        if (app.count(name) > 0 && app.get_option(name)->results().front().empty())
            return translated("%1 needs a name that is not empty", name);
    host::PlotRequest request = plotOptionsOf(raw).request;
    if (compares) {
        if (plots) return translated("--plot and --plot-compare exclude each other");
        if (app.count("--output") == 0) return translated("--plot-compare needs --output");
        for (const char* other : {"DRAWING", "--script", "--execute", "--in-place", "--list", "--report", "--info",
                                  "--compare", "--check", "--repair", "--pipes", "--plugin"})
            if (app.count(other) > 0) return translated("%1 runs nothing and excludes %2", "--plot-compare", other);
        if (raw.compared[0].empty() || raw.compared[1].empty()) return translated("the drawing's name is empty");
        request.file = platform::nativeFromTyped(app.get_option("--output")->results().front());
        return host::findPlotMisuse(request);
    }
    for (const char* other : {"--info", "--compare", "--check", "--repair", "--pipes"})
        if (app.count(other) > 0) return translated("%1 excludes %2", "--plot", other);
    if (const std::string mark = unknownMark(raw.file); !mark.empty())
        return translated("--plot: %1 in the file's name is not known; {name} and {layout} are", mark);
    request.file = platform::nativeFromTyped(raw.file);
    if (std::string misuse = host::findPlotMisuse(request); !misuse.empty()) return misuse;
    if (drawings == 0 && app.count("--list") == 0) return translated("%1 needs a drawing", "--plot");
    if ((drawings > 1 || app.count("--list") > 0) && raw.file.find(kName) == std::string::npos)
        return translated("--plot of several drawings needs {name} in the name of its file");
    return {};
}

PlotOptions plotOptionsOf(const RawPlotOptions& raw) {
    PlotOptions options;
    options.file = raw.file;
    for (const std::string& drawing : raw.compared)
        options.compared.push_back(platform::nativeFromTyped(drawing));
    options.request.layout = platform::fromUtf8(raw.layout);
    options.request.paper = platform::fromUtf8(raw.paper);
    // What is no number is none that can be drawn with.
    if (!raw.dotsPerInch.empty()) options.request.dotsPerInch = platform::parseReal(raw.dotsPerInch).value_or(0.0);
    options.request.isBlack = raw.isBlack;
    return options;
}

ExitCode plotDrawing(const Options& options) {
    const PlotOptions& plot = options.plot;
    const bool isEach = plot.file.find(kLayout) != std::string::npos && plot.request.layout.empty();
    const std::vector<std::wstring> layouts =
        isEach ? host::currentLayouts() : std::vector<std::wstring>{plot.request.layout};
    // Neither the drawing nor another picture is written over.
    std::set<std::filesystem::path> taken = {platform::fileMark(options.drawing).place};
    if (!options.output.empty()) taken.insert(platform::fileMark(options.output).place);
    ExitCode code = ExitCode::Done;
    const std::vector<std::string> names = fileNamesOf(layouts);
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        const std::string name = fileNameOf(plot.file, options.drawing.stem().u8string(), names[i]);
        host::PlotRequest request = plot.request;
        request.layout = layouts[i];
        request.file = platform::nativeFromTyped(name);
        if (!taken.insert(platform::fileMark(request.file).place).second) {
            complain(translated("%1 is the drawing or another picture of this run; it is not written over", name));
            code = ExitCode::CannotWrite;
            break;
        }
        host::PlotOutcome outcome;
        platform::Error error;
        const host::PlotFailure failure = host::plotCurrentDrawing(request, outcome, error);
        tellNotes(outcome);
        if (failure == host::PlotFailure::None) continue;
        complain(error.message);
        code = codeOf(failure);
        break;
    }
    return code;
}

ExitCode plotTwo(const Options& options) {
    host::PlotRequest request = options.plot.request;
    request.file = options.output;
    host::PlotOutcome outcome;
    platform::Error error;
    std::filesystem::path files[2];
    std::unique_ptr<ConvertedDrawing> converted[2];
    for (int i = 0; i < 2; ++i) {
        files[i] = options.plot.compared[static_cast<std::size_t>(i)];
        if (host::dwgReleaseOf(files[i]).empty()) continue;
        converted[i] = ConvertedDrawing::make(options, files[i], error);
        if (!converted[i]) {
            complain(error.message);
            return ExitCode::CannotRead;
        }
        files[i] = converted[i]->file();
    }
    const host::PlotFailure failure = host::plotComparison(files[0], files[1], request, outcome, error);
    tellNotes(outcome);
    if (failure != host::PlotFailure::None) complain(error.message);
    return codeOf(failure);
}

}  // namespace qrs::console
