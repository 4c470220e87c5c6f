// Which entities a command may change, and what it tells of those it leaves.
#include "tools/changeable.h"

#include <memory>

#include "acutads.h"
#include "layers/layerstate.h"

namespace qrs::tools {

bool liesOnLockedLayer(const AcDbEntity& entity) {
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isLocked();
}

void tellCount(const ACHAR* line, int count) {
    if (count != 0) acutPrintf(line, count);
}

AcDbObjectIdArray entitiesOf(AcDbObjectId block, const AcRxClass* wanted) {
    AcDbObjectIdArray ids;
    const AcDbBlockTableRecordPointer opened(block, AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (opened.openStatus() != Acad::eOk || opened->newIterator(made) != Acad::eOk) return ids;
    for (const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made); !walk->done(); walk->step()) {
        AcDbObjectId id;
        if (walk->getEntityId(id) != Acad::eOk) continue;
        const AcRxClass* itsClass = wanted != nullptr ? id.objectClass() : nullptr;
        if (wanted == nullptr || (itsClass != nullptr && itsClass->isDerivedFrom(wanted))) ids.append(id);
    }
    return ids;
}

AcDbObjectIdArray modelSpaceEntities(const AcRxClass* wanted) {
    AcDbObjectId modelSpace;
    const AcDbBlockTablePointer table(layers::workingDatabase(), AcDb::kForRead);
    if (table.openStatus() == Acad::eOk) table->getAt(ACDB_MODEL_SPACE, modelSpace);
    return entitiesOf(modelSpace, wanted);
}

}  // namespace qrs::tools
