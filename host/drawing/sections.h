// The sections of a drawing file, put into it where it lacks them.
#pragma once

#include "host/dxf/drawing.h"

namespace qrs::host {

// The head of a section by its name ("CLASSES"); a missing one is made, empty, where such sections stand.
dxf::RecordId ensureSection(dxf::Drawing& drawing, std::string_view name);

}  // namespace qrs::host
