// The layouts of a drawing: the tabs that show its model and its sheets.
#pragma once

#include <string>
#include <vector>

#include "host/drawing/blocks.h"

namespace qrs::host {

struct Layout {
    std::wstring name;   // "Model" for the model; empty for a sheet that the file does not name
    const Block* block;  // holds its entities
    int tab = 0;         // place in the row of tabs
};

// The model, then the sheets in the order of their objects. A file without such objects (old formats) has the model and
// one sheet without a name. Blocks live as long as the index is not changed.
std::vector<Layout> layoutsOf(const dxf::Drawing& drawing, const BlockIndex& blocks);

}  // namespace qrs::host
