// Boxes around the entities of a drawing's spaces, so that a pick looks at few of many.
//
//     std::vector<dxf::RecordId> candidates;
//     if (bounds.find(drawing, region, candidates)) ... only those can meet the region ...
//
// They are read from the records without a look at layers or at what is exact, side by side by two threads, from the
// last record down as far as an answer needs. A box is sure to hold its entity, and may be larger; polylines of few
// straight pieces have one for each. What has changed in the drawing since is read again.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "host/dxf/drawing.h"
#include "host/pick/extent.h"
#include "host/pick/region.h"

namespace qrs::host::pick {

class Bounds {
  public:
    // The main entities that may meet a region, erased ones among them, in the order of their numbers. False, nothing
    // told, for a region that has no box. A drawing must outlive the object or be the last it was asked for.
    bool find(const dxf::Drawing& drawing, const Region& region, std::vector<dxf::RecordId>& candidates);
    // The one with the greatest number of those that pass a test; kNoRecord when none does. False as above.
    bool findLast(const dxf::Drawing& drawing, const Region& region, const std::function<bool(dxf::RecordId)>& passes,
                  dxf::RecordId& last);

  private:
    class Reader;
    // A straight line is one of the diagonals of its box, which tells more than the box.
    enum Form { kWhole, kRising, kFalling, kForms };
    struct Item {
        FlatBox box;
        dxf::RecordId id;
    };
    using Items = std::array<std::vector<Item>, kForms>;

    // False for a region that has no box.
    bool begin(const dxf::Drawing& drawing, const Region& region, FlatBox& wanted);
    void gather(const FlatBox& wanted, dxf::RecordId end, std::vector<dxf::RecordId>& candidates) const;
    void follow(const dxf::Drawing& drawing);
    void readDown(dxf::RecordId count);
    bool readAgain(std::vector<dxf::RecordId> changed);
    void settle(Reader& reader);
    static bool isNear(const Item& item, Form form, const FlatBox& wanted);

    const dxf::Drawing* drawing_ = nullptr;
    dxf::ChangeLog::Mark mark_ = 0;
    dxf::RecordId lowest_ = 0;  // from here on the records have been read
    std::vector<Items> items_;  // what each reader has found
};

}  // namespace qrs::host::pick
