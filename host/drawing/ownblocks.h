// Blocks without a name of their own that belong to the entity that shows them: the pictures of dimensions and tables.
#pragma once

#include <utility>
#include <vector>

#include "host/drawing/contents.h"

namespace qrs::host {

// A block, and the entity it belonged to.
struct OwnBlock {
    std::uint32_t block;  // its id
    dxf::RecordId entity;
};
// Those of erased entities that nothing else shows or points to.
std::vector<OwnBlock> abandonedBlocks(const Contents& contents, const std::vector<dxf::RecordId>& erased);

}  // namespace qrs::host
