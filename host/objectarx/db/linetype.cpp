// Linetypes.
#include <cmath>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"

using qrs::host::DatabaseState;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
using qrs::platform::kRadiansPerDegree;

namespace linetype = qrs::dxf::codes::linetype;

ACRX_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")

namespace {

constexpr int kPlainAlignment = 'A';
constexpr int kScaledToFit = 'S';
constexpr int kMostDashes = 12;

// Bits of what a dash carries.
constexpr int kUcsOriented = 1;
constexpr int kText = 2;
constexpr int kShape = 4;

struct Number {
    int code;
    double value;
};
constexpr Number kDefaults[] = {
    {linetype::kScale, 1.0}, {linetype::kRotation, 0.0}, {linetype::kOffsetX, 0.0}, {linetype::kOffsetY, 0.0}};

std::int64_t carriedBy(const ObjectTags& dash) {
    return dash.integer(linetype::kCarried, 0);
}

}  // namespace

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::Linetype).record,
                {{qrs::dxf::codes::kFlags, "0"},
                 {linetype::kDescription, ""},
                 {linetype::kAlignment, std::to_string(kPlainAlignment)},
                 {linetype::kDashCount, "0"},
                 {linetype::kPatternLength, "0.0"}}});
}

// --- the pattern

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(ACHAR*& text) const {
    return acutNewString(tags().text(linetype::kDescription).c_str(), text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!text) return Acad::eInvalidInput;
    tags().setText(linetype::kDescription, text);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::patternLength() const {
    return tags().real(linetype::kPatternLength, 0.0);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(length) || length < 0.0) return Acad::eInvalidInput;
    tags().setReal(linetype::kPatternLength, length);
    return Acad::eOk;
}

bool AcDbLinetypeTableRecord::isScaledToFit() const {
    return tags().integer(linetype::kAlignment, kPlainAlignment) == kScaledToFit;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setIsScaledToFit(bool scaledToFit) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (scaledToFit != isScaledToFit())
        tags().setInteger(linetype::kAlignment, scaledToFit ? kScaledToFit : kPlainAlignment);
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::numDashes() const {
    return tags().count(linetype::kDash);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (count < 0 || count > kMostDashes) return Acad::eOutOfRange;
    ObjectTags own = tags();
    const qrs::host::RecordFormat& format = qrs::host::tableFormat(TableKind::Linetype).record;
    for (int last = numDashes() - 1; last >= count; --last) {
        // Backwards: the tag that opens the dash goes last.
        for (int rank = static_cast<int>(format.count) - 1; rank >= format.rankOf(linetype::kDash); --rank)
            own.group(linetype::kDash, last).removeAll(format.codes[rank].code);
    }
    for (int next = numDashes(); next < count; ++next) {
        ObjectTags place = next > 0 ? own.group(linetype::kDash, next - 1) : own;
        place.append(linetype::kDash, "0.0");
        if (own.canCarry(linetype::kCarried)) own.group(linetype::kDash, next).setInteger(linetype::kCarried, 0);
    }
    own.setInteger(linetype::kDashCount, count);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index < 0 ? 0.0 : tags().real(linetype::kDash, 0.0, index);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (const Acad::ErrorStatus status = checkDash(index); status != Acad::eOk) return status;
    if (!std::isfinite(length)) return Acad::eInvalidInput;
    tags().setReal(linetype::kDash, length, index);
    return Acad::eOk;
}

// --- what dashes carry

Acad::ErrorStatus AcDbLinetypeTableRecord::checkDash(int index) const {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    return index < 0 || index >= numDashes() ? Acad::eInvalidIndex : Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::checkShape(int index) const {
    if (const Acad::ErrorStatus status = checkDash(index); status != Acad::eOk) return status;
    return tags().canCarry(linetype::kCarried) ? Acad::eOk : Acad::eNotApplicable;
}

// The tags of dash number index, a text's where it carries nothing yet; of the kind asked for unless that is 0.
ObjectTags AcDbLinetypeTableRecord::carrying(int index, int kind) {
    ObjectTags dash = tags().group(linetype::kDash, index);
    const std::int64_t before = carriedBy(dash);
    const std::int64_t present = before & (kText | kShape);
    const std::int64_t wanted = kind != 0 ? kind : present != 0 ? present : kText;
    if (wanted != present) dash.setInteger(linetype::kCarried, (before & ~std::int64_t{kText | kShape}) | wanted);
    if (wanted == kText || !dash.has(linetype::kShapeNumber)) dash.setInteger(linetype::kShapeNumber, 0);
    if (!dash.has(linetype::kStyle)) dash.setText(linetype::kStyle, L"0");
    for (const Number& one : kDefaults)
        if (!dash.has(one.code)) dash.setReal(one.code, one.value);
    if (wanted == kShape)
        dash.removeAll(linetype::kText);
    else if (!dash.has(linetype::kText))
        dash.setText(linetype::kText, L"");
    return dash;
}

AcDbObjectId AcDbLinetypeTableRecord::shapeStyleAt(int index) const {
    const DatabaseState* state = DatabaseState::of(database());
    const std::uint64_t handle = index < 0 ? 0 : tags().group(linetype::kDash, index).handle(linetype::kStyle);
    return state && handle != 0 ? state->idOf(state->drawing().findHandle(handle)) : AcDbObjectId();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeStyleAt(int index, AcDbObjectId style) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (style.isNull()) return Acad::eNullObjectId;
    if (database() && style.database() != database()) return Acad::eWrongDatabase;
    if (!DatabaseState::isRecordOf(style, TableKind::TextStyle)) return Acad::eWrongObjectType;
    const AcDbHandle handle = style.handle();
    ACHAR text[17];
    if (handle.isNull() || !handle.getIntoAsciiBuffer(text)) return Acad::eNullHandle;
    if (tags().group(linetype::kDash, index).handle(linetype::kStyle) == handle) return Acad::eOk;
    carrying(index, 0).setText(linetype::kStyle, text);
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::shapeNumberAt(int index) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(linetype::kDash, index);
    return (carriedBy(dash) & kShape) != 0 ? static_cast<int>(dash.integer(linetype::kShapeNumber, 0)) : 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeNumberAt(int index, int shapeNumber) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (shapeNumber < 0) return Acad::eInvalidInput;
    carrying(index, kShape).setInteger(linetype::kShapeNumber, shapeNumber);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::textAt(int index, ACHAR*& text) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(linetype::kDash, index);
    return acutNewString((carriedBy(dash) & kText) != 0 ? dash.text(linetype::kText).c_str() : L"", text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setTextAt(int index, const ACHAR* text) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!text) return Acad::eInvalidInput;
    carrying(index, kText).setText(linetype::kText, text);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::shapeScaleAt(int index) const {
    return index < 0 ? 1.0 : tags().group(linetype::kDash, index).real(linetype::kScale, 1.0);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeScaleAt(int index, double scale) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(scale)) return Acad::eInvalidInput;
    carrying(index, 0).setReal(linetype::kScale, scale);
    return Acad::eOk;
}

AcGeVector2d AcDbLinetypeTableRecord::shapeOffsetAt(int index) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(linetype::kDash, index);
    return {dash.real(linetype::kOffsetX, 0.0), dash.real(linetype::kOffsetY, 0.0)};
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeOffsetAt(int index, const AcGeVector2d& offset) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(offset.x) || !std::isfinite(offset.y)) return Acad::eInvalidInput;
    ObjectTags dash = carrying(index, 0);
    dash.setReal(linetype::kOffsetX, offset.x);
    dash.setReal(linetype::kOffsetY, offset.y);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::shapeRotationAt(int index) const {
    return index < 0 ? 0.0 : tags().group(linetype::kDash, index).real(linetype::kRotation, 0.0) * kRadiansPerDegree;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeRotationAt(int index, double rotation) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(rotation)) return Acad::eInvalidInput;
    ObjectTags dash = carrying(index, 0);
    if (rotation != shapeRotationAt(index)) dash.setReal(linetype::kRotation, rotation / kRadiansPerDegree);
    return Acad::eOk;
}

bool AcDbLinetypeTableRecord::shapeIsUcsOrientedAt(int index) const {
    return index >= 0 && (carriedBy(tags().group(linetype::kDash, index)) & kUcsOriented) != 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeIsUcsOrientedAt(int index, bool oriented) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    ObjectTags dash = carrying(index, 0);
    const std::int64_t carried = carriedBy(dash);
    if (oriented != shapeIsUcsOrientedAt(index))
        dash.setInteger(linetype::kCarried, oriented ? carried | kUcsOriented : carried & ~std::int64_t{kUcsOriented});
    return Acad::eOk;
}
