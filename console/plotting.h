// --plot and --plot-compare: drawings as pictures.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/plot/hostplot.h"

namespace CLI {
class App;
}

namespace qrs::console {

struct Options;
enum class ExitCode : int;

struct PlotOptions {
    std::string file;                             // in UTF-8, with {name} and {layout} in it; empty: none
    std::vector<std::filesystem::path> compared;  // two, or none
    host::PlotRequest request;                    // all but the file

    bool isWanted() const { return !file.empty(); }
};

// The options as the command line gives them.
struct RawPlotOptions {
    std::string file, layout, paper, dotsPerInch;
    std::vector<std::string> compared;
    bool isBlack = false;
};
void describePlot(CLI::App& app, RawPlotOptions& raw);
// What is wrong with them, or nothing; drawings: how many the command line names.
std::string findPlotMisuse(const CLI::App& app, const RawPlotOptions& raw, std::size_t drawings);
PlotOptions plotOptionsOf(const RawPlotOptions& raw);

// Draws the drawing that is open in the file, or in one for each layout.
ExitCode plotDrawing(const Options& options);
// Draws two drawings in the file of --output.
ExitCode plotTwo(const Options& options);

}  // namespace qrs::console
