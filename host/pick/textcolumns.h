// Columns of texts of several lines. In drawings before R2018 what stands in the further columns is a text of its own
// for each, which only the first one knows of; programs of old show them side by side.
#pragma once

#include <unordered_set>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host::pick {

struct TextColumns {
    std::vector<double> heights;  // of each column, 0 without end; none: the text has no columns
    double width = 0.0;
    double gutter = 0.0;
    std::vector<dxf::RecordId> further;  // the texts that go on with it, in order
    bool hasFrames = false;              // polylines of the drawing frame the columns
};

TextColumns readTextColumns(const dxf::Drawing& drawing, dxf::RecordId id);

// All texts of a drawing that others go on with.
std::unordered_set<dxf::RecordId> furtherColumns(const dxf::Drawing& drawing);

}  // namespace qrs::host::pick
