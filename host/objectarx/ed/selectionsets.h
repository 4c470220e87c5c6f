// The selection sets that programs hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_set>

#include "adsdef.h"
#include "dbid.h"

namespace qrs::host::ed {

// Entities in the order they came in, each once.
class SelectionSet {
  public:
    bool add(AcDbObjectId id);
    bool remove(AcDbObjectId id);
    bool has(AcDbObjectId id) const { return members_.count(id.asOldId()) != 0; }
    const AcDbObjectIdArray& ids() const { return ids_; }

  private:
    AcDbObjectIdArray ids_;
    std::unordered_set<std::int64_t> members_;
};

class SelectionSets {
  public:
    void make(const AcDbObjectIdArray& ids, ads_name name);
    // Null when the name is no set.
    SelectionSet* find(const ads_name name);
    SelectionSet* find(std::int64_t number);
    bool release(const ads_name name);
    // The drawing of that number closes: the sets with its entities become empty.
    void forget(std::uint32_t database);
    std::size_t count() const { return sets_.size(); }

  private:
    std::map<std::int64_t, SelectionSet> sets_;
    std::int64_t last_ = 0;
};

}  // namespace qrs::host::ed
