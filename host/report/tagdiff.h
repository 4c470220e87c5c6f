// Where two records differ.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/dxf/tagsweep.h"
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

class TagComparison {
  public:
    TagComparison(const dxf::Drawing& first, const dxf::Drawing& second);

    // By their bytes, where these mean the same in both drawings: nearly all that say the same.
    bool areSame(dxf::RecordId a, dxf::RecordId b) const {
        return isAlike_ && first_.storedBytes(a) == second_.storedBytes(b);
    }
    // A new difference, whose values are still empty.
    using Add = std::function<Difference&(Difference::Kind, int code)>;
    // Adds the tags of which the two records do not say the same.
    void compare(dxf::RecordId a, dxf::RecordId b, const Add& add);

  private:
    bool compareOneTag(dxf::RecordId a, dxf::RecordId b, const Add& add);

    const dxf::Drawing& first_;
    const dxf::Drawing& second_;
    bool isAlike_;  // the same bytes say the same in both
    dxf::StoredSweep ours_;
    dxf::StoredSweep theirs_;
};

}  // namespace qrs::host
