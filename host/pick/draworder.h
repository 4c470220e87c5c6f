// The order in which the entities of a space are drawn, where somebody has changed it.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/drawing/blocks.h"
#include "host/dxf/drawing.h"

namespace qrs::host::pick {

// Drawings keep for entities of a space handles to sort by. The drawing must not change as long as the object lives.
class DrawOrder {
  public:
    // Of a space or block; null: as the file has them.
    DrawOrder(const dxf::Drawing& drawing, const Block* space);

    bool isChanged() const { return !keys_.empty(); }
    void sort(std::vector<dxf::RecordId>& ids) const;

  private:
    std::uint64_t keyOf(dxf::RecordId id) const;

    const dxf::Drawing& drawing_;
    std::unordered_map<std::uint64_t, std::uint64_t> keys_;
};

}  // namespace qrs::host::pick
