// Locked layers are asked about here, because the host itself never refuses to change an object.
#include "tools/changeable.h"

#include "acutads.h"
#include "qrs_kernal.h"

namespace qrs::tools {

bool liesOnLockedLayer(const AcDbEntity& entity) {
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isLocked();
}

void tellCount(const ACHAR* line, int count) {
    if (count != 0) acutPrintf(line, count);
}

void tellLeft(const ACHAR* line, int count) {
    if (count != 0) QrsExport::PrintRefusal(line, count);
}

}  // namespace qrs::tools
