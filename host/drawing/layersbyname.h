// The layer that the name in an entity means. Asked of every entity of large drawings, so each name is looked up once.
#pragma once

#include <vector>

#include "host/drawing/tables.h"

namespace qrs::host {

class LayersByName {
  public:
    LayersByName(const dxf::Drawing& drawing, const SymbolTables& tables) : drawing_(drawing), tables_(tables) {}

    // kNoRecord when the drawing does not have the layer.
    dxf::RecordId of(dxf::RecordId entity) { return find(drawing_.record(entity).layer); }
    dxf::RecordId find(dxf::NameId name);
    // Looks up every name, so that several threads can ask until the drawing is changed.
    void findAll();

  private:
    const dxf::Drawing& drawing_;
    const SymbolTables& tables_;
    std::vector<dxf::RecordId> layers_;  // by name, as of age_
    unsigned age_ = 0;
};

}  // namespace qrs::host
