// Finding entities by their places.
#include "host/editor/picking.h"

#include <algorithm>

#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/editor/documents.h"
#include "host/editor/session.h"
#include "host/editor/viewport.h"
#include "host/objectarx/db/access.h"

namespace qrs::host::ed {

namespace {

// The layers as they are seen in the viewport that is current.
pick::LayerStates layersOf(AcDbDatabase& database) {
    pick::LayerStates states(DatabaseAccess::drawing(database), &DatabaseAccess::tables(database));
    const AcDbObjectPointer<AcDbViewport> viewport(currentViewport(database).id, AcDb::kForRead);
    AcDbObjectIdArray frozen;
    if (viewport.openStatus() != Acad::eOk || viewport->getFrozenLayerList(frozen) != Acad::eOk) return states;
    for (const AcDbObjectId& id : frozen) {
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        const ACHAR* name = nullptr;
        if (layer.openStatus() == Acad::eOk && layer->getName(name) == Acad::eOk) states.freeze(name);
    }
    return states;
}

std::vector<dxf::RecordId> papersOf(AcDbDatabase& database, EntitySpace space) {
    std::vector<dxf::RecordId> papers;
    if (space == kModelSpace) return papers;
    for (const SheetViewport& viewport : viewportsOf(database, space))
        if (viewport.isSheet()) papers.push_back(DatabaseAccess::recordOf(viewport.id));
    return papers;
}

std::wstring locate(const std::wstring& path) {
    const Session* session = Session::current();
    return session ? session->findInFolders(path) : std::wstring();
}

}  // namespace

Picker::Picker(AcApDocument& document)
    : document_(document),
      database_(*document.database()),
      drawing_(DatabaseAccess::drawing(database_)),
      space_(currentSpace(database_)),
      spaceHead_(spaceHead()),
      papers_(papersOf(database_, space_)),
      layers_(layersOf(database_)),
      scene_(drawing_, layers_, document.state().references, &locate) {}

bool Picker::isInSpace(dxf::RecordId id) const {
    return id != dxf::kNoRecord && liesInSpace(drawing_, space_, id) &&
           std::find(papers_.begin(), papers_.end(), id) == papers_.end();
}

bool Picker::isReachable(dxf::RecordId id) const {
    return isInSpace(id) && !layers_.isFrozen(id) && !(drawing_.record(id).flags & dxf::kInvisible);
}

template <typename Take>
void Picker::forEachReachable(Take&& take) const {
    forEachEntityOfSpace(drawing_, space_, [&](dxf::RecordId id) {
        if (isReachable(id)) take(id);
    });
}

std::vector<dxf::RecordId> Picker::reachable() const {
    std::vector<dxf::RecordId> ids;
    forEachReachable([&](dxf::RecordId id) { ids.push_back(id); });
    return ids;
}

dxf::RecordId Picker::last() const {
    dxf::RecordId last = dxf::kNoRecord;
    forEachReachable([&](dxf::RecordId id) { last = id; });
    return last;
}

// Damaged drawings have several sections of a name, of which the first counts.
dxf::RecordId Picker::spaceHead() const {
    return space_.head != dxf::kNoRecord ? space_.head : drawing_.findSection("ENTITIES");
}

bool Picker::isHit(dxf::RecordId id, pick::HitProbe& probe) {
    return drawing_.record(id).owner == spaceHead_ && !drawing_.isErased(id) && isReachable(id) &&
           scene_.hits(id, probe);
}

std::vector<dxf::RecordId> Picker::candidatesFor(const pick::Region& region) const {
    std::vector<dxf::RecordId> candidates;
    if (!document_.state().bounds.find(drawing_, region, candidates)) return reachable();
    // New records have the last numbers, wherever they stand.
    const bool areOfFile = candidates.empty() || !(drawing_.record(candidates.back()).flags & dxf::kNew);
    if (areOfFile || candidates.size() < 2) return candidates;
    std::vector<dxf::RecordId> ordered;
    forEachReachable([&](dxf::RecordId id) {
        if (std::binary_search(candidates.begin(), candidates.end(), id)) ordered.push_back(id);
    });
    return ordered;
}

std::vector<dxf::RecordId> Picker::find(const pick::Region& region, pick::HitProbe::Mode mode) {
    std::vector<dxf::RecordId> found = candidatesFor(region);
    pick::HitProbe probe(region, mode);
    found.erase(std::remove_if(found.begin(), found.end(), [&](dxf::RecordId id) { return !isHit(id, probe); }),
                found.end());
    return found;
}

std::vector<dxf::RecordId> Picker::allAt(const pick::Vec& point) {
    std::vector<dxf::RecordId> found =
        find(pick::Region::around(point, pickBoxSize(document_)), pick::HitProbe::Mode::Touch);
    if (found.size() > 1) drawOrder().sort(found);
    return found;
}

// From the top downwards, so that what lies below the answer costs nothing.
dxf::RecordId Picker::topmostAt(const pick::Vec& point) {
    const pick::Region region = pick::Region::around(point, pickBoxSize(document_));
    pick::HitProbe probe(region, pick::HitProbe::Mode::Touch);
    const auto isMet = [&](dxf::RecordId id) { return isHit(id, probe); };
    // New records have the last numbers, wherever they stand.
    const std::size_t count = drawing_.recordCount();
    const bool areOfFile = count == 0 || !(drawing_.record(static_cast<dxf::RecordId>(count - 1)).flags & dxf::kNew);
    dxf::RecordId last = dxf::kNoRecord;
    const pick::DrawOrder order = drawOrder();
    if (areOfFile && !order.isChanged() && document_.state().bounds.findLast(drawing_, region, isMet, last))
        return last;
    std::vector<dxf::RecordId> candidates = candidatesFor(region);
    order.sort(candidates);
    const auto top = std::find_if(candidates.rbegin(), candidates.rend(), isMet);
    return top == candidates.rend() ? dxf::kNoRecord : *top;
}

bool Picker::nestedAt(const pick::Vec& point, dxf::RecordId containing, pick::Nested& found) {
    const pick::Region region = pick::Region::around(point, pickBoxSize(document_));
    if (containing != dxf::kNoRecord) return isReachable(containing) && scene_.findNested(containing, region, found);
    const dxf::RecordId top = topmostAt(point);
    return top != dxf::kNoRecord && scene_.findNested(top, region, found);
}

pick::Box Picker::extents() {
    pick::Box all;
    forEachReachable([&](dxf::RecordId id) {
        const pick::Box box = scene_.extents(id);
        if (!box.isBounded()) return;
        all.add(box.low);
        all.add(box.high);
    });
    return all;
}

pick::DrawOrder Picker::drawOrder() const {
    const BlockIndex blocks(drawing_);
    const Block* space = space_.head == dxf::kNoRecord ? blocks.bySpace(space_.kind) : blocks.byHead(space_.head);
    return pick::DrawOrder(drawing_, space);
}

}  // namespace qrs::host::ed
