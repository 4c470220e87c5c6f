// Where two records differ.
#pragma once

#include <cstdint>
#include <functional>

#include "host/dxf/drawing.h"
#include "host/report/hostreport.h"

namespace qrs::host {

// A number for what a record says: the same for records that say the same, whatever comments, spellings of numbers and
// code pages.
std::uint64_t contentOf(const dxf::Drawing& drawing, dxf::RecordId record);

// Hands take the tags of which the two records do not say the same; the object's name is left to the caller.
void compareTags(const dxf::Drawing& first, dxf::RecordId a, const dxf::Drawing& second, dxf::RecordId b,
                 const std::function<void(Difference)>& take);

}  // namespace qrs::host
