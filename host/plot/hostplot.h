// Drawings as pictures: a layout in a file of the kind that its name tells, SVG, PDF or PNG.
//
//     qrs::host::PlotRequest request;
//     request.file = "house.pdf";
//     request.paper = L"A1";
//     if (!qrs::host::findPlotMisuse(request).empty()) ...
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "host/platform/error.h"
#include "host/platform/port.h"

namespace qrs::host {

struct PlotRequest {
    std::filesystem::path file;
    std::wstring layout;  // its tab; empty: the one that is current
    // "A3", "A3-portrait", "420x297" (millimetres), "fit" (as large as what is drawn, one drawing unit a millimetre);
    // empty: the layout's own, for the model A3.
    std::wstring paper;
    double dotsPerInch = 150;  // of a PNG
    bool isBlack = false;      // all colours black
};

// What is wrong with a request whatever the drawing is, in one line; empty when nothing is.
QRS_HOST_PORT std::string findPlotMisuse(const PlotRequest& request);

// What a plot did, beside the file.
struct PlotOutcome {
    std::size_t entities = 0;  // of the layout, and of the model where its viewports show it
    double width = 0;          // of the page, millimetres
    double height = 0;
    std::wstring layout;
    std::vector<std::wstring> notes;  // what could not be drawn as it is, a line each
};

// Finds a file by a path as drawings hold it (inner form); empty when there is none.
using LocateFile = std::function<std::wstring(const std::wstring&)>;

// Two drawing files in one picture: what only the first has is red, what only the second has is green, what has changed
// is both, the rest grey. failed: whether a file could not be read, or the picture not be written.
enum class PlotFailure { None, Misuse, CannotRead, CannotWrite };
QRS_HOST_PORT PlotFailure plotComparison(const std::filesystem::path& first, const std::filesystem::path& second,
                                         const PlotRequest& request, PlotOutcome& outcome, platform::Error& error);

}  // namespace qrs::host
