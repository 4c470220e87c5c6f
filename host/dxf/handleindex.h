// Finds records by handle.
#pragma once

#include <cstdint>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

// Open addressing over record numbers; the handles themselves stay in the records. Built on first use, then kept up.
class HandleIndex {
  public:
    bool isBuilt() const { return !slots_.empty(); }
    void build(const RecordStore& records);
    // Tells it of a record that is new or got another handle.
    void add(const RecordStore& records, RecordId id);
    // The living record that came first in the file when several share the handle; kNoRecord when none has it.
    RecordId find(const RecordStore& records, std::uint64_t handle) const;

  private:
    std::size_t home(std::uint64_t handle) const;
    void place(RecordId id, std::uint64_t handle);

    std::vector<RecordId> slots_;
    std::size_t used_ = 0;
    unsigned shift_ = 0;
};

}  // namespace qrs::dxf
