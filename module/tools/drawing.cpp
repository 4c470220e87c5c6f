// Walks the blocks of the working drawing.
#include "tools/drawing.h"

#include <memory>

#include "dbapserv.h"
#include "dbobjptr.h"

namespace qrs::tools {

AcDbDatabase* workingDatabase() {
    return acdbHostApplicationServices()->workingDatabase();
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
    const AcDbBlockTablePointer table(workingDatabase(), AcDb::kForRead);
    if (table.openStatus() == Acad::eOk) table->getAt(ACDB_MODEL_SPACE, modelSpace);
    return entitiesOf(modelSpace, wanted);
}

}  // namespace qrs::tools
