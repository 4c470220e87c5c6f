// PwxTool: layers of a drawing.
#include <memory>

#include "dbobjptr.h"
#include "PwxTool.h"

void PwxTool::GetAllLayerIds(AcDbDatabase* database, AcDbObjectIdArray& out) {
    out.removeAll();
    AcDbLayerTablePointer table(database, AcDb::kForRead);
    if (table.openStatus() != Acad::eOk) return;
    AcDbLayerTableIterator* newIterator = nullptr;
    if (table->newIterator(newIterator) != Acad::eOk) return;
    const std::unique_ptr<AcDbLayerTableIterator> iterator(newIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) == Acad::eOk) out.append(id);
    }
}
