// Taking changes of a drawing back, step by step.
#include <utility>

#include "host/dxf/drawing.h"

namespace qrs::dxf {

void Drawing::beginStep(std::wstring name) {
    DrawingMarks marks;
    marks.seed = seed_;
    marks.greatestHandle = index_.greatestHandle;
    marks.modified = modified_;
    marks.saves = saves_;
    marks.unwritable = unwritable_;
    journal_.begin(std::move(name), std::move(marks), static_cast<RecordId>(recordCount()));
}

const std::wstring* Drawing::lastStep() const {
    const Journal::Step* step = journal_.last();
    return step ? &step->name : nullptr;
}

// Where new records stand is known by the records of the file alone, so that part of them stays as it is.
void Drawing::restore(RecordId id, const Record& before) {
    Record& one = index_.records[id];
    const auto flags = static_cast<std::uint8_t>((before.flags & ~kHasNewBefore) | (one.flags & kHasNewBefore));
    one = before;
    one.flags = flags;
    if (texts_ != nullptr) texts_->forget(id);
}

bool Drawing::takeBack() {
    const Journal::Step* step = journal_.last();
    if (step == nullptr) return false;
    for (RecordId id = step->recordCount; id < recordCount(); ++id) {
        Record& one = index_.records[id];
        one.flags = static_cast<std::uint8_t>(one.flags | kErased);
    }
    for (const Journal::Entry& entry : step->changed)
        restore(entry.id, entry.before);
    seed_ = step->marks.seed;
    index_.greatestHandle = step->marks.greatestHandle;
    unwritable_ = step->marks.unwritable;
    // What was saved meanwhile differs from what the drawing is now.
    modified_ = step->marks.modified || step->marks.saves != saves_;
    handles_ = HandleIndex();
    journal_.dropLast();
    return true;
}

}  // namespace qrs::dxf
