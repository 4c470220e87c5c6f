// What is wrong with a plot before any drawing is read.
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/plot/hostplot.h"
#include "host/plot/page.h"
#include "host/plot/surface.h"

namespace qrs::host {

using platform::translated;

std::string findPlotMisuse(const PlotRequest& request) {
    constexpr double kFewestDots = 10;
    constexpr double kMostDots = 2400;
    if (!plot::isPictureName(request.file))
        return translated("%1: the name of a picture ends in .svg, .pdf or .png", request.file.u8string());
    if (!request.paper.empty() && !plot::isFit(request.paper) && !plot::paperNamed(request.paper))
        return translated(
            "%1 is no paper: A0 to A5, Letter, A3-portrait and the like, 420x297 (millimetres, 1 to 20000) "
            "or fit",
            platform::toUtf8(request.paper));
    if (!(request.dotsPerInch >= kFewestDots && request.dotsPerInch <= kMostDots))
        return translated("dots per inch are a number from %1 to %2", static_cast<int>(kFewestDots),
                          static_cast<int>(kMostDots));
    return {};
}

}  // namespace qrs::host
