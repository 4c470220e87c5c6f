// Plots a drawing that is open, for the rooms of the host.
#pragma once

#include "host/dxf/drawing.h"
#include "host/pick/references.h"
#include "host/plot/hostplot.h"

namespace qrs::host::plot {

// request.layout names a layout of the drawing. The references are read as far as they are needed. The drawing is not
// changed, nor is its own file (empty for a new one) or that of a reference that is shown written over.
PlotFailure plotDrawing(dxf::Drawing& drawing, const std::filesystem::path& own, pick::References& references,
                        const LocateFile& locate, const PlotRequest& request, PlotOutcome& outcome,
                        platform::Error& error);

}  // namespace qrs::host::plot
