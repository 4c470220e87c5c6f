// What a drawing holds, by its meaning: the one place that knows what a change of the drawing makes wrong.
#pragma once

#include "host/drawing/blocks.h"
#include "host/drawing/classcounts.h"
#include "host/drawing/layersbyname.h"
#include "host/drawing/objectids.h"
#include "host/drawing/tables.h"

namespace qrs::host {

// All of it is looked up when first asked for and remembered. A drawing that was changed underneath (steps taken back)
// gets new contents.
class Contents {
  public:
    explicit Contents(dxf::Drawing& drawing)
        : drawing_(drawing),
          tables_(drawing),
          blocks_(drawing),
          ids_(drawing, tables_, blocks_),
          layers_(drawing, tables_),
          classes_(drawing) {}

    dxf::Drawing& drawing() const { return drawing_; }
    SymbolTables& tables() { return tables_; }
    const BlockIndex& blocks() const { return blocks_; }
    const ObjectIds& ids() const { return ids_; }
    LayersByName& layers() { return layers_; }
    ClassCounts& classes() { return classes_; }

    // A record came into the drawing, went from it, or has another name. Tables count their new records themselves.
    void came(dxf::RecordId record) { changed(record, 1); }
    void went(dxf::RecordId record) { changed(record, -1); }
    void renamed(dxf::RecordId record);

  private:
    void changed(dxf::RecordId record, int by);

    dxf::Drawing& drawing_;
    SymbolTables tables_;
    BlockIndex blocks_;
    ObjectIds ids_;
    LayersByName layers_;
    ClassCounts classes_;
};

}  // namespace qrs::host
