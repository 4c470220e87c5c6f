// Changing what records hold, and taking it back.
#include "host/dxf/contents.h"

#include <limits>
#include <utility>

#include "host/dxf/require.h"

namespace qrs::dxf {

void Contents::replace(RecordId id, std::string_view bytes) {
    require(bytes.size() <= std::numeric_limits<std::uint32_t>::max(), "a record of more than 4 GB");
    Record& one = records_[id];
    // Bytes that a step may have to give back stay where they are.
    const bool isNeeded = journal_.note(id, one);
    if (isNeeded || (one.flags & kEdited) == 0 || !arena_.replace(one.offset, one.stored, bytes))
        one.offset = arena_.keep(bytes);
    one.stored = static_cast<std::uint32_t>(bytes.size());
    one.flags |= kEdited;
    changes_.note(id);
    isModified_ = true;
}

void Contents::setErased(RecordId id, bool isErased) {
    Record& one = records_[id];
    // A step that meets a record once takes its bytes for its own from then on, so they must not be those it gives
    // back.
    if (journal_.note(id, one) && (one.flags & kEdited) != 0)
        one.offset = arena_.keep(arena_.at(one.offset, one.stored));
    one.flags = static_cast<std::uint8_t>(isErased ? one.flags | kErased : one.flags & ~kErased);
    changes_.note(id);
    isModified_ = true;
}

void Contents::noteSaved() {
    isModified_ = false;
    ++saves_;
}

void Contents::beginStep(std::wstring name, DrawingMarks marks) {
    marks.isModified = isModified_;
    marks.saves = saves_;
    journal_.begin(std::move(name), std::move(marks), static_cast<RecordId>(records_.size()));
}

// Where new records stand is known by the records of the file alone, so that part of them stays as it is.
void Contents::restore(RecordId id, const Record& before) {
    Record& one = records_[id];
    const auto flags = static_cast<std::uint8_t>((before.flags & ~kHasNewBefore) | (one.flags & kHasNewBefore));
    one = before;
    one.flags = flags;
    changes_.note(id);
}

void Contents::takeBack() {
    const Journal::Step& step = *journal_.last();
    for (RecordId id = step.recordCount; id < records_.size(); ++id) {
        Record& one = records_[id];
        one.flags = static_cast<std::uint8_t>(one.flags | kErased);
    }
    for (const Journal::Entry& entry : step.changed)
        restore(entry.id, entry.before);
    // What was saved meanwhile differs from what the drawing is now.
    isModified_ = step.marks.isModified || step.marks.saves != saves_;
    journal_.dropLast();
}

}  // namespace qrs::dxf
