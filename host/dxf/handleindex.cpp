// The index by handle.
#include "host/dxf/handleindex.h"

namespace qrs::dxf {

std::size_t HandleIndex::home(std::uint64_t handle) const {
    return static_cast<std::size_t>((handle * 0x9E3779B97F4A7C15u) >> shift_);
}

void HandleIndex::build(const RecordStore& records) {
    std::size_t count = 0;
    for (RecordId id = 0; id < records.size(); ++id)
        count += records[id].handle != 0;
    std::size_t size = 64;
    shift_ = 64 - 6;
    while (size < count + count / 2) {
        size *= 2;
        --shift_;
    }
    slots_.assign(size, kNoRecord);
    used_ = 0;
    for (RecordId id = 0; id < records.size(); ++id) {
        if (records[id].handle != 0) place(id, records[id].handle);
    }
}

void HandleIndex::place(RecordId id, std::uint64_t handle) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = home(handle);
    while (slots_[slot] != kNoRecord)
        slot = (slot + 1) & mask;
    slots_[slot] = id;
    ++used_;
}

void HandleIndex::add(const RecordStore& records, RecordId id) {
    if (!isBuilt() || records[id].handle == 0) return;
    // A place once taken is never given back, so a record that changes its handle again and again must not fill the
    // table: it is made anew from the records then.
    if ((used_ + 1) * 4 > slots_.size() * 3) return build(records);
    place(id, records[id].handle);
}

RecordId HandleIndex::find(const RecordStore& records, std::uint64_t handle) const {
    if (handle == 0) return kNoRecord;
    const std::size_t mask = slots_.size() - 1;
    RecordId found = kNoRecord;
    for (std::size_t slot = home(handle); slots_[slot] != kNoRecord; slot = (slot + 1) & mask) {
        const RecordId id = slots_[slot];
        const Record& record = records[id];
        if (record.handle == handle && (record.flags & kErased) == 0 && id < found) found = id;
    }
    return found;
}

}  // namespace qrs::dxf
