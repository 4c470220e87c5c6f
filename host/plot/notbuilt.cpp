// Where the libraries that pictures are drawn with are missing.
#include "host/platform/language.h"
#include "host/plot/hostplot.h"
#include "host/plot/plot.h"

namespace qrs::host {

namespace {

std::string message() {
    return platform::translated("plotting is not in this build");
}

}  // namespace

std::string findPlotMisuse(const PlotRequest&) {
    return message();
}

PlotFailure plotComparison(const std::filesystem::path&, const std::filesystem::path&, const PlotRequest&, PlotOutcome&,
                           platform::Error& error) {
    error.message = message();
    return PlotFailure::Misuse;
}

PlotFailure plot::plotDrawing(dxf::Drawing&, const std::filesystem::path&, pick::References&, const LocateFile&,
                              const PlotRequest&, PlotOutcome&, platform::Error& error) {
    error.message = message();
    return PlotFailure::Misuse;
}

}  // namespace qrs::host
