// What plots of one drawing and of two have in common.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/plot/sheet.h"

namespace qrs::host::plot {

struct Page {
    Paper paper;
    pick::Transform toPaper;  // from the layout's coordinates to millimetres from the lower left corner
};

// extents: of what shall be on it; they count where neither the layout nor the request says otherwise.
Page pageFor(const pick::Box& extents, bool isModel, const std::optional<PageSetup>& setup, const std::wstring& paper);
pick::Transform toDots(const Page& page, double dotsPerMillimetre);

const Layout* findLayout(const std::vector<Layout>& layouts, const std::wstring& name);
// The message that there is none of a name.
std::string noLayout(const std::vector<Layout>& layouts, const std::wstring& name);
// The one that the drawing shows when it is opened.
std::wstring shownLayout(const dxf::Drawing& drawing, const std::vector<Layout>& layouts);
// Tells that the picture would be written over a drawing.
PlotFailure refuseOver(const std::filesystem::path& drawing, platform::Error& error);
void tellNotes(const Notes& notes, pick::References& references, PlotOutcome& outcome);

}  // namespace qrs::host::plot
