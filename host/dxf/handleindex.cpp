// The index by handle.
#include "host/dxf/handleindex.h"

namespace qrs::dxf {

std::size_t HandleIndex::home(std::uint64_t handle) const {
    const std::uint64_t hash = (handle * 0x9E3779B97F4A7C15u) >> 32;
    return static_cast<std::size_t>((hash * slots_.size()) >> 32);
}

void HandleIndex::build(const RecordStore& records) {
    std::size_t count = 0;
    for (RecordId id = 0; id < records.size(); ++id)
        count += records[id].handle != 0;
    // Three quarters full: a table of the next power of two would cost a large drawing several megabytes for nothing.
    const std::size_t size = count + count / 3 + 64;
    slots_.assign(size, kNoRecord);
    duplicates_.clear();
    used_ = 0;
    for (RecordId id = 0; id < records.size(); ++id) {
        if (records[id].handle != 0) place(records, id);
    }
}

void HandleIndex::place(const RecordStore& records, RecordId id) {
    const std::uint64_t handle = records[id].handle;
    std::size_t slot = home(handle);
    for (; slots_[slot] != kNoRecord; slot = after(slot)) {
        if (slots_[slot] == id) return;
        // There are drawings in which all entities have one handle; a row of a million equal ones is never walked.
        if (records[slots_[slot]].handle == handle) {
            duplicates_.emplace(handle, id);
            return;
        }
    }
    slots_[slot] = id;
    ++used_;
}

void HandleIndex::add(const RecordStore& records, RecordId id) {
    if (!isBuilt() || records[id].handle == 0) return;
    // A place once taken is never given back, so a record that changes its handle again and again must not fill the
    // table: it is made anew from the records then.
    if (used_ + 1 > slots_.size() - slots_.size() / 8) return build(records);
    place(records, id);
}

bool HandleIndex::findWithout(const RecordStore& records, std::uint64_t handle, RecordId& found) {
    if (isBuilt() || foundWithout_ == kFew) return false;
    ++foundWithout_;
    found = kNoRecord;
    for (RecordId id = 0; handle != 0 && found == kNoRecord && id < records.size(); ++id)
        if (records[id].handle == handle && (records[id].flags & kErased) == 0) found = id;
    return true;
}

RecordId HandleIndex::find(const RecordStore& records, std::uint64_t handle) const {
    if (handle == 0) return kNoRecord;
    const auto isIt = [&](RecordId id) { return records[id].handle == handle && (records[id].flags & kErased) == 0; };
    for (std::size_t slot = home(handle); slots_[slot] != kNoRecord; slot = after(slot)) {
        if (isIt(slots_[slot])) return slots_[slot];
    }
    RecordId found = kNoRecord;
    const auto [first, last] = duplicates_.equal_range(handle);
    for (auto other = first; other != last; ++other) {
        if (isIt(other->second) && other->second < found) found = other->second;
    }
    return found;
}

}  // namespace qrs::dxf
