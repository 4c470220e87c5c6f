// Finds records by handle.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

// Open addressing over record numbers; the handles themselves stay in the records. Built when it is worth it, then kept
// up.
class HandleIndex {
  public:
    bool isBuilt() const { return !slots_.empty(); }
    void build(const RecordStore& records);
    // Tells it of a record that is new or got another handle.
    void add(const RecordStore& records, RecordId id);
    // The living record with the handle, of several that share it the first; kNoRecord when none has it.
    RecordId find(const RecordStore& records, std::uint64_t handle) const;
    // The same without the index, for the few who ask before it is worth building. False when it is.
    bool findWithout(const RecordStore& records, std::uint64_t handle, RecordId& found);

  private:
    static constexpr unsigned kFew = 4;

    std::size_t home(std::uint64_t handle) const;
    std::size_t after(std::size_t slot) const { return slot + 1 == slots_.size() ? 0 : slot + 1; }
    void place(const RecordStore& records, RecordId id);

    std::vector<RecordId> slots_;
    std::size_t used_ = 0;
    unsigned foundWithout_ = 0;  // how often
    // Records whose handle another one in the table has already.
    std::unordered_multimap<std::uint64_t, RecordId> duplicates_;
};

}  // namespace qrs::dxf
