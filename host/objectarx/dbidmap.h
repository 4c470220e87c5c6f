// Which object a copy was made from.
#pragma once

#include <map>

#include "dbid.h"

// An object, and its copy.
class AcDbIdPair {
  public:
    AcDbIdPair() = default;
    AcDbIdPair(const AcDbObjectId& key, const AcDbObjectId& value, bool isCloned)
        : key_(key), value_(value), isCloned_(isCloned) {}

    AcDbObjectId key() const { return key_; }
    AcDbObjectId value() const { return value_; }
    bool isCloned() const { return isCloned_; }
    void setKey(const AcDbObjectId& key) { key_ = key; }

  private:
    AcDbObjectId key_;
    AcDbObjectId value_;
    bool isCloned_ = false;
};

class AcDbIdMapping {
  public:
    // Completes the pair of the object that is its key; false, the pair untouched, when that was not copied.
    bool compute(AcDbIdPair& pair) const {
        const auto found = pairs_.find(pair.key());
        if (found == pairs_.end()) return false;
        pair = found->second;
        return true;
    }
    bool assign(const AcDbIdPair& pair) {
        pairs_[pair.key()] = pair;
        return true;
    }

  private:
    std::map<AcDbObjectId, AcDbIdPair> pairs_;
};
