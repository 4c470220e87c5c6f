// PwxTool: block references that show external references.
#include "adscodes.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "tools/picking.h"

namespace PwxTool {

bool IsExternalBlock(AcDbObjectId object) {
    const AcDbObjectPointer<AcDbBlockReference> reference(object, AcDb::kForRead);
    if (reference.openStatus() != Acad::eOk) return false;
    const AcDbBlockTableRecordPointer block(reference->blockTableRecord(), AcDb::kForRead);
    return block.openStatus() == Acad::eOk && block->isFromExternalReference();
}

bool IsExternalBlock(const TEntitySet& object) {
    return IsExternalBlock(qrs::tools::idOf(object));
}

int SelectEntityFromExternalBlock(const CString& prompt, const TEntitySet& reference, AcDbObjectId& layer) {
    for (;;) {
        const int answer = SelectNestedEntity(prompt.GetString(), reference, layer);
        if (answer == RTERROR && qrs::tools::pickMissed()) {
            QrsExport::PrintRefusal(L"\n没有选中外部参照上的图元！");
        } else if (answer != RTNORM) {
            return answer;
        } else if (layer.isNull()) {
            QrsExport::PrintRefusal(L"\n图元所在的图层没有定义！");
        } else {
            return RTNORM;
        }
    }
}

}  // namespace PwxTool
