// The viewport that takes the user's input, and what is seen in it.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "dbid.h"
#include "dbmain.h"
#include "host/pick/geometry.h"

class AcApDocument;

namespace qrs::host::ed {

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

// The part of a plan that the screen shows, drawing units of the space that is picked from.
struct View {
    double centerX = 0.0;
    double centerY = 0.0;
    double height = 0.0;
};

// There is no screen; this one has the size a screen would have, in dots.
constexpr double kScreenWidth = 1600;
constexpr double kScreenHeight = 1000;

// The views and the viewport of a drawing, as they were changed since it was opened. Nothing of it is written.
struct ViewMemory {
    std::int64_t viewport = 0;                        // 0: as the drawing tells it
    std::map<std::int64_t, std::vector<View>> views;  // by viewport (0: the tab of model space), the present one last
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
