// The numbers of a traced run, drawn beside its nodes.
#include "dbobjptr.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_draw.h"
#include "qrs_pipeentity.h"
#include "qrs_search.h"
#include "TextStyleTool.h"
#include "tools/serialnumber.h"

using qrs::tools::decimalText;
using qrs::tools::successor;

namespace {

// Text height (millimetres on paper) and width scale where the standard says nothing.
constexpr double kNumberHeight = 3.5;
constexpr double kNumberScale = 0.8;

bool isNumberable(int kind) {
    return kind == SSearchPipeList::kWell || kind == SSearchPipeList::kEquipment || kind == SSearchPipeList::kJoint;
}

// As far to the right of the base as above it.
AcGePoint3d besides(const AcGePoint3d& base, double distance) {
    return {base.x + distance, base.y + distance, base.z};
}

}  // namespace

namespace PwxTool {

int DoSerialNumber2(SSearchPipeList* first, int number) {
    for (SSearchPipeList* element = first; element != nullptr; element = element->next) {
        if (!isNumberable(element->kind)) continue;
        if (!element->serial.IsEmpty()) return number;
        element->serial = decimalText(number);
        if (!DoDimSerialNumber(element->id, number)) return number;
        number = successor(number);
    }
    return number;
}

bool DoDimSerialNumber(AcDbObjectId node, int number) {
    AcGePoint3d base;
    {
        const AcDbObjectPointer<TDbPipeNode> opened(node, AcDb::kForRead);
        if (opened.openStatus() != Acad::eOk) return false;
        base = opened->GetPosition();
    }
    const double scale = DocGetPScale();
    const double distance = IsWell(node) ? g_nWellRadius * scale * 0.5 : scale;
    const CString layer = PipeSystemTool::GetIndependentLayerName(L"计算文字", true);
    PipeSystemTool::InitTextStyle(kOtherTextStyle);
    const XText text(decimalText(number), besides(base, distance),
                     PipeSystemTool::GetTextStyleHeight(kOtherTextStyle, kNumberHeight) * scale,
                     PipeSystemTool::GetTextStyleScale(kOtherTextStyle, kNumberScale), layer,
                     PipeSystemTool::GetTextStyleName(kOtherTextStyle));
    // A text that the drawing does not take leaves the node numbered.
    QdDraw(text, kTextBottomLeft);
    return true;
}

}  // namespace PwxTool
