// A new, empty drawing.
#pragma once

#include <memory>

#include "host/dxf/drawing.h"

namespace qrs::host {

// A drawing of version AC1027, metric, with layer "0" and an empty model and paper space. Never null.
std::unique_ptr<dxf::Drawing> newDrawing();

}  // namespace qrs::host
