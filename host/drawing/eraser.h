// Takes records out of a drawing so that nothing is left behind: what they own goes along, and what points to them is
// cleared.
//
// What is owned goes at once. The rest is looked for once for all that was erased (settle), because that takes going
// through the whole drawing.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/drawing/contents.h"
#include "host/drawing/dependents.h"
#include "host/drawing/lostreferences.h"

namespace qrs::host {

class Eraser {
  public:
    explicit Eraser(Contents& contents) : contents_(contents), drawing_(contents.drawing()) {}

    // Takes an object out of the drawing, a block with all it holds. Nothing happens when it is out already.
    void erase(std::uint32_t object);
    // Brings it back with what went along. What pointed to it does so again, unless that was settled meanwhile. False
    // when it was not erased by erase.
    bool bringBack(std::uint32_t object);
    // Erases what cannot be without the records that are gone, and clears what still points to them. Must come before a
    // step of undo ends and before the drawing is written. False when nothing was erased since the last time.
    bool settle();

  private:
    using Records = std::vector<dxf::RecordId>;

    void take(dxf::RecordId record, Records& leaving);
    void takeOwned(dxf::RecordId record, Records& leaving);
    void takeOwnedFrom(std::size_t first, Records& leaving);
    Records takeObject(std::uint32_t object);
    void keepWith(std::uint32_t object, const Records& leaving);

    void settleRound();
    Records stillGone();
    void takeDependents(Dependents& dependents, std::vector<Dependents::Dependent> losing, GoneRecords& gone);
    void takeBlocks(Dependents& dependents, GoneRecords& gone);
    std::uint32_t objectOf(dxf::RecordId record);

    Contents& contents_;
    dxf::Drawing& drawing_;
    // What left the drawing with an object; of those that left alone, and half a drawing may, only that they did.
    std::unordered_map<std::uint32_t, Records> erasedWith_;
    std::vector<bool> erasedAlone_;
    std::unordered_map<dxf::RecordId, std::uint32_t> companions_;  // in whose company a record left; while settling
    Records unsettled_;                                            // what left the drawing since it was settled
};

}  // namespace qrs::host
