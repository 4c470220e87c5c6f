// Walks the entities of a drawing one by one, what belongs to a main entity included.
#include "acdbads.h"
#include "dbapserv.h"
#include "host/objectarx/db/state.h"

namespace dxf = qrs::dxf;

namespace {

// The first entity from a record on, within what that record lies in; kNoRecord when there is none.
dxf::RecordId entityFrom(const dxf::Drawing& drawing, dxf::RecordId id) {
    if (id == dxf::kNoRecord || drawing.record(id).kind != dxf::RecordKind::Entity) return dxf::kNoRecord;
    return id;
}

}  // namespace

int acdbEntNext(const ads_name entity, ads_name next) {
    if (!next) return RTERROR;
    // Both may be the same name.
    const bool isFirst = !entity || ads_name_nil(entity);
    AcDbObjectId given;
    const bool isKnown = isFirst || acdbGetObjectId(given, entity) == Acad::eOk;
    ads_name_clear(next);
    if (!isKnown) return RTERROR;
    const AcDbDatabase* database = isFirst ? acdbHostApplicationServices()->workingDatabase() : given.database();
    const qrs::host::DatabaseState* state = qrs::host::DatabaseState::of(database);
    if (!state) return RTERROR;
    const dxf::Drawing& drawing = state->drawing();
    const dxf::RecordId before =
        given.isNull() ? drawing.findSection("ENTITIES") : state->ids().recordOf(given.recordNumber());
    if (before == dxf::kNoRecord) return RTERROR;
    const dxf::RecordId found = entityFrom(drawing, drawing.next(before));
    if (found == dxf::kNoRecord) return RTERROR;
    return acdbGetAdsName(next, state->idOf(found)) == Acad::eOk ? RTNORM : RTERROR;
}
