// Which layers of a drawing can be seen.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "host/drawing/tables.h"

namespace qrs::host::pick {

enum LayerState : int {
    kFrozenLayer = 1,
    kOffLayer = 2,
    kLayerZero = 4,       // in a block: the layer of the block reference counts
    kUnplottedLayer = 8,  // it can be seen, but is never printed
};

// The states of layers, each read from the table when it is first asked for: picks ask for few of many. The drawing
// must not change as long as the object lives.
class LayerStates {
  public:
    // tables: those of the drawing, which know its layers by name; null: the names are gathered here when needed.
    explicit LayerStates(const dxf::Drawing& drawing, const SymbolTables* tables = nullptr)
        : drawing_(drawing), tables_(tables) {}
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
    dxf::RecordId recordOf(std::wstring_view layer) const;

    const dxf::Drawing& drawing_;
    const SymbolTables* tables_;
    std::unordered_set<std::wstring> frozen_;                                         // in the viewport alone; folded
    mutable std::optional<std::unordered_map<std::wstring, dxf::RecordId>> records_;  // by name, folded
    mutable std::unordered_map<dxf::NameId, int> known_;
};

// The name of an entity's layer: "0" when it names none.
std::wstring layerName(const dxf::Drawing& drawing, dxf::NameId layer);

}  // namespace qrs::host::pick
