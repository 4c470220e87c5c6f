// Which layers of a drawing can be seen.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "host/dxf/drawing.h"

namespace qrs::host::pick {

enum LayerState : int {
    kFrozenLayer = 1,
    kOffLayer = 2,
    kLayerZero = 4,  // in a block: the layer of the block reference counts
};

// The state of the layers when the object is made.
class LayerStates {
  public:
    explicit LayerStates(const dxf::Drawing& drawing);
    // A layer that is frozen in the viewport alone.
    void freeze(std::wstring_view layer);

    // LayerState bits; 0 for a layer that the table lacks.
    int of(dxf::RecordId entity) const { return ofName(drawing_.record(entity).layer); }
    int ofName(dxf::NameId layer) const;
    // -1 for a layer that the table lacks.
    int find(std::wstring_view layer) const;

    bool isFrozen(dxf::RecordId entity) const { return (of(entity) & kFrozenLayer) != 0; }
    bool isOff(dxf::RecordId entity) const { return (of(entity) & kOffLayer) != 0; }

  private:
    const dxf::Drawing& drawing_;
    std::unordered_map<std::wstring, int> states_;  // by name, folded
    mutable std::unordered_map<dxf::NameId, int> known_;
};

// The name of an entity's layer: "0" when it names none.
std::wstring layerName(const dxf::Drawing& drawing, dxf::NameId layer);

}  // namespace qrs::host::pick
