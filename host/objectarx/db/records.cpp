// Linetypes, text styles, registered applications, dimension styles.
#include <cmath>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/objectarx/db/state.h"

using qrs::host::ObjectTags;
using qrs::host::TableKind;

ACRX_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")
ACRX_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE")
ACRX_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID")
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, "DIMSTYLE")

namespace {

constexpr int kDescriptionCode = 3;
constexpr int kPatternLengthCode = 40;
constexpr int kDashCountCode = 73;
constexpr int kDashCode = 49;
constexpr int kDashShapeCode = 74;
constexpr int kMostDashes = 12;

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

// --- linetypes

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() {
    // 72 is the alignment, always 'A'.
    setOwnTags({&qrs::host::tableFormat(TableKind::Linetype).record,
                {{70, "0"}, {kDescriptionCode, ""}, {72, "65"}, {kDashCountCode, "0"}, {kPatternLengthCode, "0.0"}}});
}

Acad::ErrorStatus AcDbLinetypeTableRecord::asciiDescription(ACHAR*& text) const {
    return textOf(tags(), kDescriptionCode, text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setAsciiDescription(const ACHAR* text) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!text) return Acad::eInvalidInput;
    tags().setText(kDescriptionCode, text);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::patternLength() const {
    return tags().real(kPatternLengthCode, 0.0);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(length) || length < 0.0) return Acad::eInvalidInput;
    tags().setReal(kPatternLengthCode, length);
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::numDashes() const {
    return tags().count(kDashCode);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (count < 0 || count > kMostDashes) return Acad::eOutOfRange;
    if (count == numDashes()) return Acad::eOk;
    ObjectTags own = tags();
    std::vector<double> lengths;
    for (int i = 0; i < count; ++i)
        lengths.push_back(own.real(kDashCode, 0.0, i));
    own.removeAll(kDashCode);
    own.removeAll(kDashShapeCode);
    const bool hasShapes = own.canCarry(kDashShapeCode);
    int lastCode = kDashCode;
    for (const double length : lengths) {
        // 49 and 74 come in pairs, so each is put behind the tag written before it.
        own.appendBehind(lastCode, kDashCode, qrs::dxf::realText(length));
        lastCode = kDashCode;
        if (!hasShapes) continue;
        own.appendBehind(lastCode, kDashShapeCode, "0");
        lastCode = kDashShapeCode;
    }
    own.setInteger(kDashCountCode, count);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index < 0 ? 0.0 : tags().real(kDashCode, 0.0, index);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    if (!std::isfinite(length)) return Acad::eInvalidInput;
    tags().setReal(kDashCode, length, index);
    return Acad::eOk;
}

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
