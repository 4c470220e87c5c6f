// The layers that a viewport freezes. Drawings from AC1015 on list their handles among the viewport's own tags; older
// ones list their names in extended data of the application ACAD: "MVIEW", { the view's numbers, { layer names } }.
#pragma once

#include <vector>

#include "host/drawing/tables.h"

namespace qrs::host {

class FrozenLayers {
  public:
    FrozenLayers(dxf::Drawing& drawing, const SymbolTables& tables, dxf::RecordId viewport);

    // In the order of the file; kNoRecord for what names no layer.
    std::vector<dxf::RecordId> layers() const;
    bool hold(dxf::RecordId layer) const;
    // Puts layers after the others; those that are listed stay as they are. False, nothing changed, where there is no
    // place for them, or when one of them has no handle to be listed by. Nothing else is to be asked afterwards.
    bool add(const std::vector<dxf::RecordId>& layers);
    void remove(const std::vector<dxf::RecordId>& layers);

  private:
    struct Entry {
        dxf::RecordId layer;
        dxf::Tag tag;
    };
    void readNames();
    void readHandles();

    dxf::Drawing& drawing_;
    const SymbolTables& tables_;
    dxf::RecordId viewport_;
    std::vector<Entry> entries_;
    bool hasPlace_ = false;
    std::uint32_t place_ = 0;  // of the next entry
    int code_;                 // that it takes
};

}  // namespace qrs::host
