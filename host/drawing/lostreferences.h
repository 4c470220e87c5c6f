// Clears the references of records to others that are gone, each as dxf/references.h tells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/dxf/handlecheck.h"
#include "host/dxf/references.h"
#include "host/dxf/tagsweep.h"

namespace qrs::host {

// Records that are gone, as others name them.
class GoneRecords {
  public:
    explicit GoneRecords(const dxf::Drawing& drawing);

    // An erased record. Of one without a handle others know nothing, unless it is a layer's.
    void add(dxf::RecordId record);
    bool isEmpty() const { return count_ == 0; }
    bool hasLayers() const { return !layers_.empty(); }
    // In a damaged drawing a record may have the handle still.
    bool has(std::uint64_t handle) const {
        return handles_.has(handle) && drawing_.findHandle(handle) == dxf::kNoRecord;
    }
    // The reference names one of them.
    bool isLost(const dxf::ReferenceRule& rule, std::string_view value) const;

  private:
    const dxf::Drawing& drawing_;
    dxf::HandleSet handles_;
    std::unordered_set<std::wstring> layers_;  // names, in one case
    std::size_t count_ = 0;
};

class ReferenceCleaner {
  public:
    ReferenceCleaner(dxf::Drawing& drawing, const GoneRecords& gone)
        : drawing_(drawing), gone_(gone), sweep_(drawing.beginSweep()) {}

    // Clears what a record says of those that are gone. Nothing is touched when it says nothing.
    void clean(dxf::RecordId record);
    // Takes back the reactors by which records answered lists that have gone as a whole.
    void cleanAnswers();
    // Records that were owned by entries that have gone.
    const std::vector<dxf::RecordId>& disowned() const { return disowned_; }

  private:
    bool namesGone(dxf::RecordId record);

    dxf::Drawing& drawing_;
    const GoneRecords& gone_;
    dxf::TagSweep sweep_;
    std::unordered_map<std::uint64_t, std::unordered_set<std::uint64_t>> answers_;  // reactors to go, by handle
    std::vector<dxf::RecordId> disowned_;
};

}  // namespace qrs::host
