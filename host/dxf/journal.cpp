// Remembers what records were before they changed. The last of the steps is the one at work.
#include "host/dxf/journal.h"

#include <utility>

namespace qrs::dxf {

void Journal::begin(std::wstring name, DrawingMarks marks, RecordId recordCount) {
    if (steps_.empty() || !isEmpty(steps_.back(), hasNew_)) steps_.emplace_back();
    Step& step = steps_.back();
    step.name = std::move(name);
    step.marks = std::move(marks);
    step.recordCount = recordCount;
    step.number = ++begun_;
    met_.clear();
    hasNew_ = false;
    forgetOldest();
}

void Journal::forgetOldest() {
    while (steps_.size() > 2 && remembered_ > kMostRemembered) {
        remembered_ -= steps_.front().changed.size();
        steps_.pop_front();
    }
}

bool Journal::meets(RecordId id) {
    if (id >= met_.size()) met_.resize(id + std::size_t{1} + id / 4, false);
    if (met_[id]) return false;
    met_[id] = true;
    return true;
}

bool Journal::note(RecordId id, const Record& before) {
    if (steps_.empty() || !meets(id)) return false;
    steps_.back().changed.push_back({id, before});
    ++remembered_;
    return true;
}

void Journal::noteNew(RecordId id) {
    if (steps_.empty()) return;
    meets(id);
    hasNew_ = true;
}

std::uint64_t Journal::keep() {
    if (steps_.empty()) return 0;
    steps_.back().isKept = true;
    return steps_.back().number;
}

const Journal::Step* Journal::last() const {
    if (steps_.empty()) return nullptr;
    if (!isEmpty(steps_.back(), hasNew_)) return &steps_.back();
    return steps_.size() > 1 ? &steps_[steps_.size() - 2] : nullptr;
}

void Journal::dropLast() {
    const bool isAtWork = !isEmpty(steps_.back(), hasNew_);
    if (!isAtWork) steps_.pop_back();
    remembered_ -= steps_.back().changed.size();
    // It becomes the empty step at work, so that what changes next is noted.
    steps_.back().changed.clear();
    steps_.back().isKept = false;
    met_.clear();
    hasNew_ = false;
}

}  // namespace qrs::dxf
