// The selection sets that programs hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_set>
#include <utility>

#include "adsdef.h"
#include "dbid.h"

namespace qrs::host::ed {

// Entities in the order they came in, each once. Sets of whole drawings are common, so the index of the members is only
// made when somebody asks for one of them, and removing costs no search.
class SelectionSet {
  public:
    SelectionSet() = default;
    // Each id stands there once.
    explicit SelectionSet(AcDbObjectIdArray ids) : ids_(std::move(ids)) {}

    bool add(AcDbObjectId id);
    bool remove(AcDbObjectId id);
    bool has(AcDbObjectId id) const { return members().count(id.asOldId()) != 0; }
    bool isEmpty() const { return ids().isEmpty(); }
    const AcDbObjectIdArray& ids() const;

  private:
    std::unordered_set<std::int64_t>& members() const;

    mutable AcDbObjectIdArray ids_;
    mutable std::unordered_set<std::int64_t> members_;
    mutable bool indexed_ = false;
    mutable bool holdsRemoved_ = false;  // ids_ names some that are no members any more
};

class SelectionSets {
  public:
    // Each id stands there once.
    void make(AcDbObjectIdArray ids, ads_name name);
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
