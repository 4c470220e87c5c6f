// Which object a copy was made from.
#pragma once

#include <map>

#include "dbid.h"

class AcDbIdMapping {
  public:
    // The copy of an object; false, value null, when it was not copied.
    bool compute(AcDbObjectId key, AcDbObjectId& value) const {
        const auto found = copies_.find(key);
        value = found == copies_.end() ? AcDbObjectId() : found->second;
        return found != copies_.end();
    }
    void assign(AcDbObjectId key, AcDbObjectId value) { copies_[key] = value; }

  private:
    std::map<AcDbObjectId, AcDbObjectId> copies_;
};
