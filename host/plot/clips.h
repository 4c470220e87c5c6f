// The edges that block references are cut off at.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "host/drawing/blocks.h"
#include "host/pick/entity.h"

namespace qrs::host::plot {

struct Clip {
    // In the coordinates the reference lies in; empty when it shows all of its block.
    std::vector<pick::Vec> edge;
    bool isHole = false;  // what lies within is left out
};

class Clips {
  public:
    explicit Clips(const dxf::Drawing& drawing);

    Clip clipOf(const pick::Entity& reference);

  private:
    const dxf::Drawing& drawing_;
    std::map<dxf::RecordId, dxf::RecordId> filters_;  // by reference
    std::optional<BlockIndex> blocks_;                // only where there is a filter
};

}  // namespace qrs::host::plot
