// Where new records stand.
#include "host/dxf/recordorder.h"

namespace qrs::dxf {

RecordId RecordOrder::previous(RecordId id) const {
    RecordId anchor = id;
    RecordId before = kNoRecord;
    if (isNew(id)) {
        anchor = places_[id - fileCount_].anchor;
        before = places_[id - fileCount_].previous;
    } else if ((records_[id].flags & kHasNewBefore) != 0) {
        before = rows_.find(id)->second.last;
    }
    return before == kNoRecord && anchor != 0 ? anchor - 1 : before;
}

void RecordOrder::insert(RecordId id, RecordId before) {
    Place place{before, kNoRecord, kNoRecord};
    if (isNew(before)) {
        Place& following = places_[before - fileCount_];
        place = {following.anchor, following.previous, before};
        following.previous = id;
    } else {
        records_[before].flags |= kHasNewBefore;
        Row& row = rows_.try_emplace(before, Row{kNoRecord, kNoRecord}).first->second;
        place.previous = row.last;
        row.last = id;
    }
    if (place.previous != kNoRecord) {
        places_[place.previous - fileCount_].next = id;
    } else {
        rows_[place.anchor].first = id;
    }
    places_.push_back(place);
}

}  // namespace qrs::dxf
