// The order of a drawing's records: those of the file by number, new ones where they were put.
#pragma once

#include <unordered_map>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

// New records stand in rows, each before one record of the file. Erased records keep their places.
class RecordOrder {
  public:
    explicit RecordOrder(RecordStore& records) : records_(records) {}

    // The records there are now are those of the file; others are new.
    void begin() { fileCount_ = static_cast<RecordId>(records_.size()); }
    bool isNew(RecordId id) const { return id >= fileCount_; }

    RecordId first() const { return firstOfRow(0); }  // no drawing is without records
    // kNoRecord after the last.
    RecordId next(RecordId id) const {
        if (isNew(id)) {
            const Place& place = places_[id - fileCount_];
            return place.next != kNoRecord ? place.next : place.anchor;
        }
        const RecordId following = id + 1;
        return following < fileCount_ ? firstOfRow(following) : kNoRecord;
    }
    // kNoRecord before the first.
    RecordId previous(RecordId id) const;
    // Puts the next new record, just appended to the store, before another.
    void insert(RecordId id, RecordId before);

  private:
    struct Place {
        RecordId anchor;  // the record of the file that the row stands before
        RecordId previous;
        RecordId next;
    };
    struct Row {
        RecordId first;
        RecordId last;
    };
    // The first of the new records before a record of the file, or that record itself. A flag of the record saves most
    // of them the search.
    RecordId firstOfRow(RecordId anchor) const {
        return (records_[anchor].flags & kHasNewBefore) == 0 ? anchor : rows_.find(anchor)->second.first;
    }

    RecordStore& records_;
    RecordId fileCount_ = 0;
    std::vector<Place> places_;  // of record fileCount_ + i
    std::unordered_map<RecordId, Row> rows_;
};

}  // namespace qrs::dxf
