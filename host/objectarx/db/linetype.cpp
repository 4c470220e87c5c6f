// Linetypes.
#include <cmath>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"

using qrs::host::DatabaseState;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
using qrs::platform::kRadiansPerDegree;

ACRX_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")

namespace {

constexpr int kDescriptionCode = 3;
constexpr int kAlignmentCode = 72;
constexpr int kPlainAlignment = 'A';
constexpr int kScaledToFit = 'S';
constexpr int kPatternLengthCode = 40;
constexpr int kDashCountCode = 73;
constexpr int kMostDashes = 12;

// Of one dash; all but the length are there only where the drawing can hold shapes.
constexpr int kDashCode = 49;
constexpr int kCarriedCode = 74;
constexpr int kShapeNumberCode = 75;
constexpr int kStyleCode = 340;
constexpr int kScaleCode = 46;
constexpr int kRotationCode = 50;  // degrees
constexpr int kOffsetXCode = 44;
constexpr int kOffsetYCode = 45;
constexpr int kTextCode = 9;

// Bits of what a dash carries.
constexpr int kUcsOriented = 1;
constexpr int kText = 2;
constexpr int kShape = 4;

struct Number {
    int code;
    double value;
};
constexpr Number kDefaults[] = {{kScaleCode, 1.0}, {kRotationCode, 0.0}, {kOffsetXCode, 0.0}, {kOffsetYCode, 0.0}};

std::int64_t carriedBy(const ObjectTags& dash) {
    return dash.integer(kCarriedCode, 0);
}

}  // namespace

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::Linetype).record,
                {{70, "0"},
                 {kDescriptionCode, ""},
                 {kAlignmentCode, std::to_string(kPlainAlignment)},
                 {kDashCountCode, "0"},
                 {kPatternLengthCode, "0.0"}}});
}

// --- the pattern

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(ACHAR*& text) const {
    return acutNewString(tags().text(kDescriptionCode).c_str(), text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
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

bool AcDbLinetypeTableRecord::isScaledToFit() const {
    return tags().integer(kAlignmentCode, kPlainAlignment) == kScaledToFit;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setIsScaledToFit(bool scaledToFit) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (scaledToFit != isScaledToFit()) tags().setInteger(kAlignmentCode, scaledToFit ? kScaledToFit : kPlainAlignment);
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::numDashes() const {
    return tags().count(kDashCode);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (count < 0 || count > kMostDashes) return Acad::eOutOfRange;
    ObjectTags own = tags();
    const qrs::host::RecordFormat& format = qrs::host::tableFormat(TableKind::Linetype).record;
    for (int last = numDashes() - 1; last >= count; --last) {
        // Backwards: the tag that opens the dash goes last.
        for (int rank = static_cast<int>(format.count) - 1; rank >= format.rankOf(kDashCode); --rank)
            own.group(kDashCode, last).removeAll(format.codes[rank].code);
    }
    for (int next = numDashes(); next < count; ++next) {
        ObjectTags place = next > 0 ? own.group(kDashCode, next - 1) : own;
        place.append(kDashCode, "0.0");
        if (own.canCarry(kCarriedCode)) own.group(kDashCode, next).setInteger(kCarriedCode, 0);
    }
    own.setInteger(kDashCountCode, count);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index < 0 ? 0.0 : tags().real(kDashCode, 0.0, index);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (const Acad::ErrorStatus status = checkDash(index); status != Acad::eOk) return status;
    if (!std::isfinite(length)) return Acad::eInvalidInput;
    tags().setReal(kDashCode, length, index);
    return Acad::eOk;
}

// --- what dashes carry

Acad::ErrorStatus AcDbLinetypeTableRecord::checkDash(int index) const {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    return index < 0 || index >= numDashes() ? Acad::eInvalidIndex : Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::checkShape(int index) const {
    if (const Acad::ErrorStatus status = checkDash(index); status != Acad::eOk) return status;
    return tags().canCarry(kCarriedCode) ? Acad::eOk : Acad::eNotApplicable;
}

// The tags of dash number index, a text's where it carries nothing yet; of the kind asked for unless that is 0.
ObjectTags AcDbLinetypeTableRecord::carrying(int index, int kind) {
    ObjectTags dash = tags().group(kDashCode, index);
    const std::int64_t before = carriedBy(dash);
    const std::int64_t present = before & (kText | kShape);
    const std::int64_t wanted = kind != 0 ? kind : present != 0 ? present : kText;
    if (wanted != present) dash.setInteger(kCarriedCode, (before & ~std::int64_t{kText | kShape}) | wanted);
    if (wanted == kText || !dash.has(kShapeNumberCode)) dash.setInteger(kShapeNumberCode, 0);
    if (!dash.has(kStyleCode)) dash.setText(kStyleCode, L"0");
    for (const Number& one : kDefaults)
        if (!dash.has(one.code)) dash.setReal(one.code, one.value);
    if (wanted == kShape)
        dash.removeAll(kTextCode);
    else if (!dash.has(kTextCode))
        dash.setText(kTextCode, L"");
    return dash;
}

AcDbObjectId AcDbLinetypeTableRecord::shapeStyleAt(int index) const {
    const DatabaseState* state = DatabaseState::of(database());
    const std::uint64_t handle = index < 0 ? 0 : tags().group(kDashCode, index).handle(kStyleCode);
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
    if (tags().group(kDashCode, index).handle(kStyleCode) == handle) return Acad::eOk;
    carrying(index, 0).setText(kStyleCode, text);
    return Acad::eOk;
}

int AcDbLinetypeTableRecord::shapeNumberAt(int index) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(kDashCode, index);
    return (carriedBy(dash) & kShape) != 0 ? static_cast<int>(dash.integer(kShapeNumberCode, 0)) : 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeNumberAt(int index, int shapeNumber) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (shapeNumber < 0) return Acad::eInvalidInput;
    carrying(index, kShape).setInteger(kShapeNumberCode, shapeNumber);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::textAt(int index, ACHAR*& text) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(kDashCode, index);
    return acutNewString((carriedBy(dash) & kText) != 0 ? dash.text(kTextCode).c_str() : L"", text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setTextAt(int index, const ACHAR* text) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!text) return Acad::eInvalidInput;
    carrying(index, kText).setText(kTextCode, text);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::shapeScaleAt(int index) const {
    return index < 0 ? 1.0 : tags().group(kDashCode, index).real(kScaleCode, 1.0);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeScaleAt(int index, double scale) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(scale)) return Acad::eInvalidInput;
    carrying(index, 0).setReal(kScaleCode, scale);
    return Acad::eOk;
}

AcGeVector2d AcDbLinetypeTableRecord::shapeOffsetAt(int index) const {
    const ObjectTags dash = index < 0 ? ObjectTags() : tags().group(kDashCode, index);
    return {dash.real(kOffsetXCode, 0.0), dash.real(kOffsetYCode, 0.0)};
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeOffsetAt(int index, const AcGeVector2d& offset) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(offset.x) || !std::isfinite(offset.y)) return Acad::eInvalidInput;
    ObjectTags dash = carrying(index, 0);
    dash.setReal(kOffsetXCode, offset.x);
    dash.setReal(kOffsetYCode, offset.y);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::shapeRotationAt(int index) const {
    return index < 0 ? 0.0 : tags().group(kDashCode, index).real(kRotationCode, 0.0) * kRadiansPerDegree;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeRotationAt(int index, double rotation) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    if (!std::isfinite(rotation)) return Acad::eInvalidInput;
    ObjectTags dash = carrying(index, 0);
    if (rotation != shapeRotationAt(index)) dash.setReal(kRotationCode, rotation / kRadiansPerDegree);
    return Acad::eOk;
}

bool AcDbLinetypeTableRecord::shapeIsUcsOrientedAt(int index) const {
    return index >= 0 && (carriedBy(tags().group(kDashCode, index)) & kUcsOriented) != 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setShapeIsUcsOrientedAt(int index, bool oriented) {
    if (const Acad::ErrorStatus status = checkShape(index); status != Acad::eOk) return status;
    ObjectTags dash = carrying(index, 0);
    const std::int64_t carried = carriedBy(dash);
    if (oriented != shapeIsUcsOrientedAt(index))
        dash.setInteger(kCarriedCode, oriented ? carried | kUcsOriented : carried & ~std::int64_t{kUcsOriented});
    return Acad::eOk;
}
