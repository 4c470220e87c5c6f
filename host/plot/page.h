// Sheets of paper, and what a layout says of its own.
#pragma once

#include <optional>
#include <string>

#include "host/dxf/drawing.h"
#include "host/pick/geometry.h"

namespace qrs::host::plot {

struct Paper {
    double width = 0.0;  // millimetres
    double height = 0.0;
};

// "A3", "A3-portrait", "420x297". Nothing for what is none.
std::optional<Paper> paperNamed(const std::wstring& name);
bool isFit(const std::wstring& name);
// With the longer side lying as that of what it shall hold.
Paper turnedFor(const Paper& paper, const pick::Box& extents);

// The plot settings of a layout.
struct PageSetup {
    enum class Area { Display = 0, Extents = 1, Limits = 2, View = 3, Window = 4, Layout = 5 };
    Paper paper;        // as it lies; 0: none
    double left = 0.0;  // margins, millimetres
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
    Area area = Area::Layout;
    pick::Box window;
    double scale = 0.0;               // millimetres for a drawing unit; 0: as large as fits
    double millimetresPerUnit = 1.0;  // of the paper's units: 25.4 for inches
};

// Of the object that describes a layout by its block's record; nothing where there is none.
std::optional<PageSetup> readPageSetup(const dxf::Drawing& drawing, std::uint64_t block);

}  // namespace qrs::host::plot
