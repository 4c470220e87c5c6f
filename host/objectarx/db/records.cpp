// Text styles, registered applications, dimension styles.
#include <cmath>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/objectarx/db/state.h"

using qrs::host::ObjectTags;
using qrs::host::TableKind;

ACRX_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE")
ACRX_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID")
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, "DIMSTYLE")

namespace {

constexpr int kFontCode = 3;
constexpr int kBigFontCode = 4;
constexpr int kHeightCode = 40;
constexpr int kWidthFactorCode = 41;
constexpr int kObliqueCode = 50;  // degrees
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;

Acad::ErrorStatus textOf(const ObjectTags& tags, int code, ACHAR*& text) {
    return acutNewString(tags.text(code).c_str(), text);
}

}  // namespace

// --- text styles

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::TextStyle).record,
                {{70, "0"},
                 {kHeightCode, "0.0"},
                 {kWidthFactorCode, "1.0"},
                 {kObliqueCode, "0.0"},
                 {71, "0"},
                 {42, "2.5"},
                 {kFontCode, "txt"},
                 {kBigFontCode, ""}}});
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
    return textOf(tags(), kFontCode, name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!name) return Acad::eInvalidInput;
    tags().setText(kFontCode, name);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
    return textOf(tags(), kBigFontCode, name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!name) return Acad::eInvalidInput;
    tags().setText(kBigFontCode, name);
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::textSize() const {
    return tags().real(kHeightCode, 0.0);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(size) || size < 0.0) return Acad::eInvalidInput;
    tags().setReal(kHeightCode, size);
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::xScale() const {
    return tags().real(kWidthFactorCode, 1.0);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double factor) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(factor) || factor <= 0.0) return Acad::eInvalidInput;
    tags().setReal(kWidthFactorCode, factor);
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::obliquingAngle() const {
    return tags().real(kObliqueCode, 0.0) * kRadiansPerDegree;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    if (angle != obliquingAngle()) tags().setReal(kObliqueCode, angle / kRadiansPerDegree);
    return Acad::eOk;
}

// --- registered applications

AcDbRegAppTableRecord::AcDbRegAppTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::RegApp).record, {{70, "0"}}});
}
