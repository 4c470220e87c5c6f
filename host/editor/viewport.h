// The viewport that takes the user's input, and what is seen in it.
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "dbid.h"
#include "dbmain.h"
#include "host/drawing/spaces.h"
#include "host/pick/geometry.h"

class AcApDocument;

namespace qrs::host::ed {

// A viewport of a sheet. The layout shown last has its viewports numbered in the file; in others many programs leave
// the numbers out, and they count by their order.
struct SheetViewport {
    AcDbObjectId id;
    std::int64_t number = 0;  // as CVPORT tells it; 1 is the sheet itself
    std::int64_t place = 0;   // among those that are on, the topmost first; 0: off
    bool isSheet() const { return number == 1; }
};
std::vector<SheetViewport> viewportsOf(AcDbDatabase& database, EntitySpace sheet);

struct CurrentViewport {
    AcDbObjectId id;          // null in model space, and in a layout without viewports
    std::int64_t number = 0;  // as CVPORT tells it
};

CurrentViewport currentViewport(AcDbDatabase& database);
// By number as CVPORT has it, until the drawing is closed. False when there is no such viewport, or it is off.
bool setCurrentViewport(AcApDocument& document, std::int64_t number);
// The number of the topmost viewport of the layout that shows model space; 0 when there is none.
std::int64_t topViewport(AcDbDatabase& database);
// Whether what the user picks lies in model space: its own tab is current, or a viewport of a layout is.
bool picksModelSpace(AcDbDatabase& database);
// The sheet of the layout that is current; from model space's own tab, of the one that was current before.
EntitySpace currentSheet(AcDbDatabase& database);
// The space whose entities the user picks.
EntitySpace currentSpace(AcDbDatabase& database);

// The part of a plan that the screen shows, drawing units of the space that is picked from.
struct View {
    double centerX = 0.0;
    double centerY = 0.0;
    double height = 0.0;
};

// There is no screen; this one has the size a screen would have, in dots.
constexpr double kScreenWidth = 1600;
constexpr double kScreenHeight = 1000;

// Layout, viewports and views of a drawing, as they were changed since it was opened. Nothing of it is written.
struct ViewMemory {
    EntitySpace sheet = kShownSheet;
    std::map<std::uint64_t, EntitySpace> sheetsBefore;  // by step that changed it
    std::map<dxf::RecordId, std::int64_t> viewports;    // by sheet; none: as the drawing tells it
    // By sheet and viewport (0: the tab of model space), the present one last.
    std::map<std::pair<dxf::RecordId, std::int64_t>, std::vector<View>> views;
};

View currentView(AcApDocument& document);
// The view that shows a rectangle whole.
View viewAround(const pick::Vec& low, const pick::Vec& high);
void setView(AcApDocument& document, const View& view);
// The view before the last change. False when there is none.
bool setPreviousView(AcApDocument& document);
// How far from a picked point an entity may lie, drawing units: PICKBOX dots.
double pickBoxSize(AcApDocument& document);

}  // namespace qrs::host::ed
