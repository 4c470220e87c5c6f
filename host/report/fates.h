// What became of each record of a drawing in another one, for pictures of the difference.
#pragma once

#include <cstdint>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

enum class Fate : std::uint8_t {
    Same,
    Redrawn,  // nothing differs but tags with the codes of a picture that an entity carries
    Changed,  // an entity also when one of its own parts has changed
    Alone,    // the other drawing has none
};

// By record. Records are told apart as compareDrawings does.
struct Fates {
    std::vector<Fate> first;
    std::vector<Fate> second;
    // The same record in the other drawing; kNoRecord where that has none.
    std::vector<dxf::RecordId> firstThere;
    std::vector<dxf::RecordId> secondThere;
};
Fates compareRecords(const dxf::Drawing& first, const dxf::Drawing& second);

}  // namespace qrs::host
