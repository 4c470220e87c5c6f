// Where two records differ.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/report/hostreport.h"

namespace qrs::host {

// Records of one drawing and, for each, a number for what it says: the same for records that say the same, whatever
// comments, spellings of numbers and code pages.
struct Sayings {
    const dxf::Drawing& drawing;
    const std::vector<dxf::RecordId>& records;
    std::vector<std::uint64_t> numbers;
};
// Records that equal those at the same places of a like list, which may be null, need not be read once more.
Sayings sayingsOf(const dxf::Drawing& drawing, const std::vector<dxf::RecordId>& records, const Sayings* like);

// Hands take the tags of which the two records do not say the same; the object's name is left to the caller.
void compareTags(const dxf::Drawing& first, dxf::RecordId a, const dxf::Drawing& second, dxf::RecordId b,
                 const std::function<void(Difference)>& take);

}  // namespace qrs::host
