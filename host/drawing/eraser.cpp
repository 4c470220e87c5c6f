// Takes records out of a drawing so that nothing is left behind.
#include "host/drawing/eraser.h"

#include <algorithm>

#include "host/drawing/ownblocks.h"
#include "host/dxf/references.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

namespace {

// Attributes of a block reference, vertices of a polyline: they go and come with it.
std::vector<RecordId> partsOf(const dxf::Drawing& drawing, RecordId record) {
    std::vector<RecordId> parts;
    const std::uint16_t type = drawing.record(record).type;
    if (type != dxf::kTypePolyline && type != dxf::kTypeInsert) return parts;
    for (RecordId id = drawing.next(record); id != kNoRecord; id = drawing.next(id)) {
        const dxf::Record& one = drawing.record(id);
        if ((one.flags & dxf::kSubEntity) == 0 || one.owner != record) break;
        parts.push_back(id);
    }
    return parts;
}

// The handle under which a record names its owner; 0 when it names none.
std::uint64_t ownerIn(const dxf::Drawing& drawing, RecordId record) {
    dxf::ReferencePlace place(drawing.typeNameOf(record));
    dxf::Tag tag;
    for (dxf::TagCursor cursor = drawing.tags(record); cursor.next(tag) && place.place().sections() == 0;)
        if (place.pass(tag.code, tag.value) && place.isOwner()) return dxf::toHandle(tag.value);
    return 0;
}

}  // namespace

// --- at once

// Out of the drawing, and among those that leave together.
void Eraser::take(RecordId record, Records& leaving) {
    if (drawing_.isErased(record)) return;
    const Records parts = partsOf(drawing_, record);
    drawing_.eraseRecord(record);
    contents_.went(record);
    leaving.push_back(record);
    unsettled_.push_back(record);
    unsettled_.insert(unsettled_.end(), parts.begin(), parts.end());
}

// Objects alone are owned by a field that names them. One that names another owner is that one's.
void Eraser::takeOwned(RecordId record, Records& leaving) {
    if (!drawing_.mayRefer(record)) return;
    dxf::ReferencePlace place(drawing_.typeNameOf(record));
    dxf::Tag tag;
    for (dxf::TagCursor cursor = drawing_.tags(record); cursor.next(tag);) {
        if (!place.pass(tag.code, tag.value) || !dxf::isOwning(dxf::referenceOf(tag.code))) continue;
        const RecordId owned = drawing_.findHandle(dxf::toHandle(tag.value));
        if (owned == kNoRecord || drawing_.record(owned).kind != RecordKind::Object) continue;
        if (drawing_.findHandle(ownerIn(drawing_, owned)) == kNoRecord) take(owned, leaving);
    }
}

// What those that leave own leaves too, and what that owns: they follow in the same row.
void Eraser::takeOwnedFrom(std::size_t first, Records& leaving) {
    for (std::size_t i = first; i < unsettled_.size(); ++i)
        takeOwned(unsettled_[i], leaving);
}

Eraser::Records Eraser::takeObject(std::uint32_t object) {
    Records leaving;
    const std::size_t first = unsettled_.size();
    if (const Block* found = contents_.blocks().byId(object)) {
        const Block block = *found;
        const RecordId end = block.head == kNoRecord ? kNoRecord : drawing_.endOf(block.head);
        for (RecordId id = block.head; id != kNoRecord; id = id == end ? kNoRecord : drawing_.next(id))
            take(id, leaving);
    }
    take(object, leaving);
    takeOwnedFrom(first, leaving);
    return leaving;
}

void Eraser::keepWith(std::uint32_t object, const Records& leaving) {
    const bool isAlone = leaving.size() == 1 && leaving.front() == object;
    if (object >= erasedAlone_.size()) erasedAlone_.resize(drawing_.recordCount(), false);
    if (isAlone) {
        erasedAlone_[object] = true;
        return;
    }
    Records& with = erasedWith_[object];
    if (erasedAlone_[object]) with.push_back(object);
    erasedAlone_[object] = false;
    with.insert(with.end(), leaving.begin(), leaving.end());
}

void Eraser::erase(std::uint32_t object) {
    if (const Records leaving = takeObject(object); !leaving.empty()) keepWith(object, leaving);
}

bool Eraser::bringBack(std::uint32_t object) {
    const bool wasAlone = object < erasedAlone_.size() && erasedAlone_[object];
    const auto found = erasedWith_.find(object);
    if (!wasAlone && found == erasedWith_.end()) return false;
    for (const RecordId id : wasAlone ? Records{object} : found->second) {
        drawing_.eraseRecord(id, false);
        contents_.came(id);
    }
    if (wasAlone)
        erasedAlone_[object] = false;
    else
        erasedWith_.erase(found);
    return true;
}

// --- settling

bool Eraser::settle() {
    if (unsettled_.empty()) return false;
    while (!unsettled_.empty())
        settleRound();
    companions_.clear();
    return true;
}

// Without those that were brought back.
Eraser::Records Eraser::stillGone() {
    Records gone = std::move(unsettled_);
    unsettled_.clear();
    gone.erase(std::remove_if(gone.begin(), gone.end(), [&](RecordId id) { return !drawing_.isErased(id); }),
               gone.end());
    return gone;
}

// What is taken while settling adds to the row of what left.
void Eraser::settleRound() {
    unsettled_ = stillGone();
    if (unsettled_.empty()) return;
    GoneRecords gone(drawing_);
    for (const RecordId id : unsettled_)
        gone.add(id);
    Dependents dependents(drawing_);
    takeDependents(dependents, dependents.of(gone), gone);
    takeBlocks(dependents, gone);
    unsettled_.clear();

    ReferenceCleaner cleaner(drawing_, gone);
    dxf::SourceRelease passed = drawing_.beginRelease(drawing_.first());
    for (RecordId id = 0; id < drawing_.recordCount(); ++id) {
        if (drawing_.isErased(id)) continue;
        drawing_.release(passed, id);
        const bool mayNameLayers = gone.hasLayers() && (drawing_.record(id).flags & dxf::kHasXdata) != 0;
        if (mayNameLayers || drawing_.mayRefer(id)) cleaner.clean(id);
    }
    cleaner.cleanAnswers();
    Records leaving;
    for (const RecordId id : cleaner.disowned())
        take(id, leaving);
    takeOwnedFrom(0, leaving);
}

// They do not come back with what they depended on: nothing points to them any more.
void Eraser::takeDependents(Dependents& dependents, std::vector<Dependents::Dependent> losing, GoneRecords& gone) {
    while (!losing.empty()) {
        const Dependents::Dependent one = losing.back();
        losing.pop_back();
        if (!dependents.loses(one) || drawing_.isErased(one.record)) continue;
        const std::size_t first = unsettled_.size();
        Records leaving;
        take(one.record, leaving);
        takeOwnedFrom(first, leaving);
        for (std::size_t i = first; i < unsettled_.size(); ++i) {
            gone.add(unsettled_[i]);
            const auto more = dependents.of(drawing_.record(unsettled_[i]).handle);
            losing.insert(losing.end(), more.begin(), more.end());
        }
    }
}

// These come back with the entity that showed them, which would be nothing without.
void Eraser::takeBlocks(Dependents& dependents, GoneRecords& gone) {
    for (std::size_t first = 0; first < unsettled_.size();) {
        const Records entities(unsettled_.begin() + static_cast<std::ptrdiff_t>(first), unsettled_.end());
        first = unsettled_.size();
        for (const OwnBlock& own : abandonedBlocks(contents_, entities)) {
            const std::size_t begin = unsettled_.size();
            const Records leaving = takeObject(own.block);
            if (const std::uint32_t object = objectOf(own.entity); object != kNoRecord) keepWith(object, leaving);
            std::vector<Dependents::Dependent> losing;
            for (std::size_t i = begin; i < unsettled_.size(); ++i) {
                gone.add(unsettled_[i]);
                const auto more = dependents.of(drawing_.record(unsettled_[i]).handle);
                losing.insert(losing.end(), more.begin(), more.end());
            }
            takeDependents(dependents, std::move(losing), gone);
        }
    }
}

// The object with which a record left; kNoRecord for one that does not come back.
std::uint32_t Eraser::objectOf(RecordId record) {
    if (record < erasedAlone_.size() && erasedAlone_[record]) return record;
    if (companions_.empty()) {
        for (const auto& [object, with] : erasedWith_)
            for (const RecordId id : with)
                companions_.emplace(id, object);
    }
    const auto found = companions_.find(record);
    return found == companions_.end() ? kNoRecord : found->second;
}

}  // namespace qrs::host
