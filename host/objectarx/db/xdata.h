// Values between tags of a drawing file and result buffers.
#pragma once

#include "adsdef.h"
#include "host/objectarx/db/state.h"

namespace qrs::host {

// Collects a chain of result buffers; releases it unless it is taken.
class ChainBuilder {
  public:
    explicit ChainBuilder(DatabaseState& state) : state_(state) {}
    ~ChainBuilder();
    ChainBuilder(const ChainBuilder&) = delete;
    ChainBuilder& operator=(const ChainBuilder&) = delete;

    // The tags of a point come one by one: x opens it, y and z complete it.
    void add(const dxf::Tag& tag);
    resbuf* take();

  private:
    bool completePoint(const dxf::Tag& tag);

    DatabaseState& state_;
    resbuf* first_ = nullptr;
    resbuf* last_ = nullptr;
};

}  // namespace qrs::host
