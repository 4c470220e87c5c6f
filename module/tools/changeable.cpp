// Which entities a command may change, and what it tells of those it leaves.
#include "tools/changeable.h"

#include "acutads.h"

namespace qrs::tools {

bool liesOnLockedLayer(const AcDbEntity& entity) {
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isLocked();
}

void tellCount(const ACHAR* line, int count) {
    if (count != 0) acutPrintf(line, count);
}

}  // namespace qrs::tools
