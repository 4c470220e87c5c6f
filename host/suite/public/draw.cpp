// Drawing texts, and the sizes that depend on the plot scale.
#include "qrs_draw.h"

#include <cmath>

#include "acedads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "qrs_kernal.h"

int g_nWellRadius = 4;

double DocGetPScale() {
    resbuf value{};
    const bool isKnown = acedGetVar(L"DIMSCALE", &value) == RTNORM && value.restype == RTREAL;
    return isKnown && std::isfinite(value.resval.rreal) && value.resval.rreal > 0.0 ? value.resval.rreal : 1.0;
}

namespace {

struct AlignRow {
    int align;
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
};

const AlignRow kAlignRows[] = {
    {kTextTopLeft, AcDb::kTextLeft, AcDb::kTextTop},
    {kTextTopCenter, AcDb::kTextCenter, AcDb::kTextTop},
    {kTextTopRight, AcDb::kTextRight, AcDb::kTextTop},
    {kTextMiddleLeft, AcDb::kTextLeft, AcDb::kTextVertMid},
    {kTextMiddleCenter, AcDb::kTextCenter, AcDb::kTextVertMid},
    {kTextMiddleRight, AcDb::kTextRight, AcDb::kTextVertMid},
    {kTextBottomLeft, AcDb::kTextLeft, AcDb::kTextBottom},
    {kTextBottomCenter, AcDb::kTextCenter, AcDb::kTextBottom},
    {kTextBottomRight, AcDb::kTextRight, AcDb::kTextBottom},
};

// Texts that are not left on their base line lie by the point of alignment; the other one is worked out by the editor
// that knows the font.
void fill(AcDbText& entity, const XText& text, const AlignRow& row) {
    entity.setTextString(text.text);
    entity.setPosition(text.position);
    entity.setHeight(text.height);
    entity.setWidthFactor(text.widthScale);
    entity.setHorizontalMode(row.horizontal);
    entity.setVerticalMode(row.vertical);
    entity.setAlignmentPoint(text.position);
    if (const AcDbObjectId style = QrsExport::GetTextStyleId(text.style.GetString()); !style.isNull())
        entity.setTextStyle(style);
    if (!text.layer.IsEmpty()) entity.setLayer(text.layer);
}

}  // namespace

AcDbObjectId QdDraw(const XText& text, int align) {
    AcDbObjectId id;
    for (const AlignRow& row : kAlignRows) {
        if (row.align != align) continue;
        AcDbObjectPointer<AcDbText> entity;
        entity.create();
        fill(*entity.object(), text, row);
        AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, acdbHostApplicationServices()->workingDatabase(),
                                          AcDb::kForWrite);
        if (space.openStatus() == Acad::eOk) space->appendAcDbEntity(id, entity.object());
    }
    return id;
}
