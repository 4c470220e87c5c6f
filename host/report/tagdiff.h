// Where two records differ.
#pragma once

#include <functional>

#include "host/dxf/drawing.h"
#include "host/report/hostreport.h"

namespace qrs::host {

// Hands take the tags of which the two records do not say the same; the object's name is left to the caller.
void compareTags(const dxf::Drawing& first, dxf::RecordId a, const dxf::Drawing& second, dxf::RecordId b,
                 const std::function<void(Difference)>& take);

}  // namespace qrs::host
