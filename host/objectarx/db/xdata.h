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

// Adds the tags of a value; false when it is none that tags can hold (an object's name among them). Texts are UTF-8 for
// no drawing.
bool appendValueTags(const dxf::Drawing* drawing, const resbuf& link, std::vector<dxf::NewTag>& tags);

// The same code with the same value, however it is spelled.
bool sameValue(const dxf::Drawing& drawing, const dxf::NewTag& a, const dxf::NewTag& b);

}  // namespace qrs::host
