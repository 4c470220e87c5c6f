// Viewports, and the layers they freeze.
#include <algorithm>

#include "dbents.h"
#include "host/drawing/entityformat.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"

using qrs::host::DatabaseState;
using qrs::host::TableKind;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;
namespace viewport = codes::viewport;

ACRX_DEFINE_DXF_MEMBERS(AcDbViewport, AcDbEntity, "VIEWPORT")

namespace {

constexpr dxf::Version kFirstByHandle = dxf::Version::R2000;

struct Frozen {
    dxf::RecordId layer;
    std::uint32_t begin;
    std::uint32_t end;
};

// The layers a viewport freezes, and where the next one is to be put.
struct FrozenList {
    std::vector<Frozen> layers;
    bool hasPlace = false;
    std::uint32_t place = 0;
    int code = viewport::kFrozenLayer;
};

// In old drawings: ACAD's extended data "MVIEW", { the view's numbers, { layer names } }.
FrozenList readNames(DatabaseState& state, dxf::RecordId viewport) {
    FrozenList list;
    list.code = codes::kXdataLayer;
    dxf::TagCursor cursor = state.drawing().tags(viewport);
    dxf::Tag tag;
    bool isView = false;
    int depth = 0;
    while (!list.hasPlace && cursor.next(tag)) {
        if (tag.code == codes::kXdataApplication) isView = false;
        if (tag.code == codes::kXdataText && dxf::trimmed(tag.value) == "MVIEW") isView = true;
        if (!isView) continue;
        if (tag.code == codes::kXdataBracket) {
            const bool opens = dxf::trimmed(tag.value) == "{";
            if (!opens && depth == 2) {
                list.hasPlace = true;
                list.place = tag.begin;
            }
            depth += opens ? 1 : -1;
        } else if (tag.code == codes::kXdataLayer && depth == 2) {
            const dxf::RecordId layer =
                state.tables().find(TableKind::Layer, qrs::host::readText(state.drawing(), tag.value));
            list.layers.push_back({layer, tag.begin, tag.end});
        }
    }
    return list;
}

bool isLayer(DatabaseState& state, dxf::RecordId record) {
    TableKind kind = TableKind::Block;
    return record != dxf::kNoRecord && state.tables().kindOf(record, kind) && kind == TableKind::Layer;
}

FrozenList readHandles(DatabaseState& state, dxf::RecordId viewport) {
    FrozenList list;
    const qrs::host::RecordFormat& format = qrs::host::entityFormatOf("VIEWPORT");
    const int rank = format.rankOf(viewport::kFrozenLayer);
    dxf::TagCursor cursor = state.drawing().tags(viewport);
    dxf::Tag tag;
    bool isOwn = true;  // some programs write no marks
    while (cursor.next(tag) && tag.code < codes::kFirstXdata) {
        if (tag.code == codes::kSubclass) isOwn = dxf::trimmed(tag.value) == "AcDbViewport";
        list.hasPlace = isOwn || (list.hasPlace && !list.layers.empty());
        if (!isOwn || tag.code == codes::kType) continue;
        if (tag.code == viewport::kFrozenLayer || tag.code == viewport::kHardFrozenLayer) {
            const dxf::RecordId layer = state.drawing().findHandle(dxf::toHandle(tag.value));
            list.layers.push_back({isLayer(state, layer) ? layer : dxf::kNoRecord, tag.begin, tag.end});
            list.code = tag.code;
            list.place = tag.end;
        } else if (list.layers.empty() &&
                   (tag.code == codes::kSubclass || (tag.code != viewport::kSheetName &&
                                                     format.rankOf(tag.code) < rank && format.rankOf(tag.code) >= 0))) {
            list.place = tag.end;
        }
    }
    return list;
}

FrozenList readFrozen(DatabaseState& state, dxf::RecordId viewport) {
    return state.drawing().version() >= kFirstByHandle ? readHandles(state, viewport) : readNames(state, viewport);
}

bool holds(const FrozenList& list, dxf::RecordId layer) {
    return std::any_of(list.layers.begin(), list.layers.end(), [&](const Frozen& one) { return one.layer == layer; });
}

std::string spelling(DatabaseState& state, int code, dxf::RecordId layer) {
    if (code == codes::kXdataLayer) return qrs::host::writeText(state.drawing(), state.tables().nameOf(layer));
    return dxf::handleText(state.drawing().record(layer).handle);
}

}  // namespace

Adesk::Int16 AcDbViewport::number() const {
    return static_cast<Adesk::Int16>(tags().integer(viewport::kNumber, -1));
}

bool AcDbViewport::isLayerFrozenInViewport(AcDbObjectId layer) const {
    DatabaseState* state = DatabaseState::of(database());
    if (!state || layer.databaseNumber() != state->number) return false;
    return holds(readFrozen(*state, record()), layer.recordNumber());
}

Acad::ErrorStatus AcDbViewport::checkLayers(const AcDbObjectIdArray& layers) const {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    for (const AcDbObjectId& id : layers)
        if (id.database() != database() || id.isErased() || !DatabaseState::isRecordOf(id, TableKind::Layer))
            return Acad::eInvalidLayer;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layers) {
    if (const Acad::ErrorStatus status = checkLayers(layers); status != Acad::eOk) return status;
    DatabaseState& state = *DatabaseState::of(database());
    const FrozenList list = readFrozen(state, record());
    if (!list.hasPlace) return Acad::eNotApplicable;
    std::vector<dxf::NewTag> added;
    std::vector<dxf::RecordId> seen;
    for (const AcDbObjectId& id : layers) {
        const dxf::RecordId layer = id.recordNumber();
        if (holds(list, layer) || std::find(seen.begin(), seen.end(), layer) != seen.end()) continue;
        if (list.code != codes::kXdataLayer && state.drawing().record(layer).handle == 0) return Acad::eNotApplicable;
        seen.push_back(layer);
        added.push_back({list.code, spelling(state, list.code, layer)});
    }
    state.drawing().insertTags(record(), list.place, added);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layers) {
    if (const Acad::ErrorStatus status = checkLayers(layers); status != Acad::eOk) return status;
    DatabaseState& state = *DatabaseState::of(database());
    const FrozenList list = readFrozen(state, record());
    // From the end, so that the places of the others hold.
    for (auto one = list.layers.rbegin(); one != list.layers.rend(); ++one) {
        const bool isWanted = std::any_of(layers.begin(), layers.end(),
                                          [&](const AcDbObjectId& id) { return id.recordNumber() == one->layer; });
        if (isWanted) state.drawing().eraseTags(record(), one->begin, one->end);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::getFrozenLayerList(AcDbObjectIdArray& layers) const {
    layers.setLogicalLength(0);
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    for (const Frozen& one : readFrozen(*state, record()).layers)
        if (one.layer != dxf::kNoRecord) layers.append(state->idOf(one.layer));
    return Acad::eOk;
}
