// Which records of a drawing changed last, so that what was gathered from it need not be gathered anew as a whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

class ChangeLog {
  public:
    using Mark = std::uint64_t;

    void note(RecordId id) {
        if (ids_.size() == kMost) {
            dropped_ += ids_.size();
            ids_.clear();
        }
        ids_.push_back(id);
    }
    // Stands for what has changed up to now.
    Mark mark() const { return dropped_ + ids_.size(); }
    // The records that changed, were erased, came back or are new since a mark, some of them several times. False when
    // they are too many to be remembered.
    bool since(Mark mark, std::vector<RecordId>& ids) const {
        if (mark < dropped_) return false;
        ids.assign(ids_.begin() + static_cast<std::ptrdiff_t>(mark - dropped_), ids_.end());
        return true;
    }

  private:
    static constexpr std::size_t kMost = 65536;
    std::vector<RecordId> ids_;
    Mark dropped_ = 0;
};

}  // namespace qrs::dxf
