// What can be picked in the space that is current.
#pragma once

#include <optional>
#include <vector>

#include "dbid.h"
#include "dbmain.h"
#include "host/drawing/spaces.h"
#include "host/pick/draworder.h"
#include "host/pick/layerstates.h"
#include "host/pick/scene.h"

class AcApDocument;

namespace qrs::host::ed {

// Holds for one selection: the drawing must not change meanwhile.
class Picker {
  public:
    explicit Picker(AcApDocument& document);

    // Entities of the space that is current, except the sheet of paper itself. kNoRecord is none.
    bool isInSpace(dxf::RecordId id) const;
    // Entities that a user could reach now: of the space that is current, not hidden, on no frozen layer. The sheet of
    // paper itself is none.
    bool isReachable(dxf::RecordId id) const;
    std::vector<dxf::RecordId> reachable() const;
    // The newest of them; kNoRecord when there is none.
    dxf::RecordId last() const;

    // Those that can be seen and that a region touches, or holds whole; in drawing order.
    std::vector<dxf::RecordId> find(const pick::Region& region, pick::HitProbe::Mode mode);
    // Of those the pick box around a point meets, the one drawn last; kNoRecord when there is none.
    dxf::RecordId topmostAt(const pick::Vec& point);
    std::vector<dxf::RecordId> allAt(const pick::Vec& point);
    // The innermost entity the pick box meets, inside the entity given (kNoRecord: any). False when there is none.
    bool nestedAt(const pick::Vec& point, dxf::RecordId containing, pick::Nested& found);
    // The box around everything that can be reached and has an end.
    pick::Box extents();
    pick::Box extentsOf(dxf::RecordId id) { return scene_.extents(id); }

  private:
    template <typename Take>
    void forEachReachable(Take&& take) const;
    dxf::RecordId spaceHead() const;
    bool isHit(dxf::RecordId id, pick::HitProbe& probe);
    // Those that a region may touch, and perhaps others that cannot be reached, in drawing order.
    std::vector<dxf::RecordId> candidatesFor(const pick::Region& region) const;
    pick::DrawOrder drawOrder() const;

    AcApDocument& document_;
    AcDbDatabase& database_;
    const dxf::Drawing& drawing_;
    EntitySpace space_;
    dxf::RecordId spaceHead_;
    std::vector<dxf::RecordId> papers_;  // the viewports that are the sheet of paper itself
    pick::LayerStates layers_;
    pick::Scene scene_;
};

}  // namespace qrs::host::ed
