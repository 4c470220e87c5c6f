// What the editor asks of a viewport.
#include "dbents.h"
#include "host/drawing/frozenlayers.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"

using qrs::host::DatabaseState;
using qrs::host::FrozenLayers;
using qrs::host::TableKind;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbViewport, AcDbEntity, "VIEWPORT")

namespace {

FrozenLayers frozenBy(const AcDbViewport& viewport) {
    DatabaseState& state = *DatabaseState::of(viewport.database());
    return {state.drawing(), state.tables(), viewport.objectId().recordNumber()};
}

std::vector<dxf::RecordId> recordsOf(const AcDbObjectIdArray& ids) {
    std::vector<dxf::RecordId> records;
    for (const AcDbObjectId& id : ids)
        records.push_back(id.recordNumber());
    return records;
}

}  // namespace

Adesk::Int16 AcDbViewport::number() const {
    return static_cast<Adesk::Int16>(tags().integer(dxf::codes::viewport::kNumber, -1));
}

bool AcDbViewport::isLayerFrozenInViewport(AcDbObjectId layer) const {
    const bool isHere = database() && layer.databaseNumber() == objectId().databaseNumber();
    return isHere && frozenBy(*this).hold(layer.recordNumber());
}

Acad::ErrorStatus AcDbViewport::checkLayers(const AcDbObjectIdArray& layers) const {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!database()) return Acad::eNotInDatabase;
    for (const AcDbObjectId& id : layers)
        if (id.database() != database() || id.isErased() || !DatabaseState::isRecordOf(id, TableKind::Layer))
            return Acad::eInvalidLayer;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layers) {
    if (const Acad::ErrorStatus status = checkLayers(layers); status != Acad::eOk) return status;
    return frozenBy(*this).add(recordsOf(layers)) ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layers) {
    if (const Acad::ErrorStatus status = checkLayers(layers); status != Acad::eOk) return status;
    frozenBy(*this).remove(recordsOf(layers));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::getFrozenLayerList(AcDbObjectIdArray& layers) const {
    layers.setLogicalLength(0);
    const DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    for (const dxf::RecordId layer : frozenBy(*this).layers())
        if (layer != dxf::kNoRecord) layers.append(state->idOf(layer));
    return Acad::eOk;
}
