// The kinds of entities that can be made: lines, circles, texts, block references.
#include <cmath>

#include "dbents.h"
#include "gemat3d.h"
#include "host/drawing/entityformat.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::DetachedTags;
using qrs::host::newString;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
using qrs::platform::kRadiansPerDegree;
namespace codes = qrs::dxf::codes;
namespace curve = codes::curve;
namespace dxf = qrs::dxf;
namespace insert = codes::insert;
namespace text = codes::text;

ACRX_DEFINE_DXF_MEMBERS(AcDbLine, AcDbEntity, "LINE")
ACRX_DEFINE_DXF_MEMBERS(AcDbCircle, AcDbEntity, "CIRCLE")
ACRX_DEFINE_DXF_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT")
ACRX_DEFINE_DXF_MEMBERS(AcDbText, AcDbEntity, "TEXT")

namespace {

constexpr double kUsualTextHeight = 2.5;

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

// A coordinate that is 0 and not written stays so.
void writePoint(ObjectTags tags, int code, const AcGePoint3d& point) {
    const bool isNew = !tags.has(code);
    for (unsigned axis = 0; axis < 3; ++axis) {
        const int axisCode = code + static_cast<int>(axis) * codes::kCoordinateStep;
        if (isNew || point[axis] != 0.0 || tags.has(axisCode)) tags.setReal(axisCode, point[axis]);
    }
}

Acad::ErrorStatus setPointTags(Acad::ErrorStatus status, const ObjectTags& tags, int code, const AcGePoint3d& point) {
    if (status != Acad::eOk) return status;
    if (!isFinite(point)) return Acad::eInvalidInput;
    writePoint(tags, code, point);
    return Acad::eOk;
}

// Flat entities write their points in the coordinates of their plane.
AcGeVector3d normalOf(const ObjectTags& tags) {
    const AcGeVector3d direction = qrs::host::readPoint(tags, codes::kNormal) - AcGePoint3d();
    return direction.length() > 0.0 ? direction.normal() : AcGeVector3d::kZAxis;
}

AcGePoint3d readFlatPoint(const ObjectTags& tags, int code) {
    const AcGePoint3d written = qrs::host::readPoint(tags, code);
    return tags.has(codes::kNormal) ? AcGeMatrix3d::planeToWorld(normalOf(tags)) * written : written;
}

Acad::ErrorStatus setFlatPoint(Acad::ErrorStatus status, const ObjectTags& tags, int code, const AcGePoint3d& point) {
    if (!tags.has(codes::kNormal)) return setPointTags(status, tags, code, point);
    return setPointTags(status, tags, code, AcGeMatrix3d::worldToPlane(normalOf(tags)) * point);
}

// usual: what a missing tag means.
Acad::ErrorStatus setRealTag(Acad::ErrorStatus status, ObjectTags tags, int code, double value, double usual) {
    if (status != Acad::eOk) return status;
    if (!std::isfinite(value)) return Acad::eInvalidInput;
    if (tags.real(code, usual) != value) tags.setReal(code, value);
    return Acad::eOk;
}

Acad::ErrorStatus setAngleTag(Acad::ErrorStatus status, const ObjectTags& tags, int code, double angle) {
    // An angle that was read and is set again stays as it is spelled.
    if (status == Acad::eOk && tags.real(code, 0.0) * kRadiansPerDegree == angle) return status;
    return setRealTag(status, tags, code, angle / kRadiansPerDegree, 0.0);
}

Acad::ErrorStatus setIntegerTag(Acad::ErrorStatus status, ObjectTags tags, int code, std::int64_t value) {
    if (status == Acad::eOk && tags.integer(code, 0) != value) tags.setInteger(code, value);
    return status;
}

// The name of a record that an entity is to name, which must lie in the entity's drawing if that has one.
Acad::ErrorStatus nameToWrite(const AcDbEntity& entity, AcDbObjectId id, TableKind kind, std::wstring& name) {
    if (id.isNull()) return Acad::eNullObjectId;
    DatabaseState* state = DatabaseState::byNumber(id.databaseNumber());
    if (!state || (entity.database() && entity.database() != &state->database)) return Acad::eWrongDatabase;
    if (!id.isValid() || id.isErased()) return Acad::eWrongObjectType;
    if (kind == TableKind::Block) {
        const qrs::host::Block* block = state->blocks().byId(id.recordNumber());
        if (!block) return Acad::eWrongObjectType;
        name = block->name;
        return Acad::eOk;
    }
    if (!DatabaseState::isRecordOf(id, kind)) return Acad::eWrongObjectType;
    name = state->tables().nameOf(id.recordNumber());
    return Acad::eOk;
}

// An entity outside a drawing names what it finds in the one it is to lie in: the working database.
AcDbObjectId namedBy(const AcDbEntity& entity, TableKind kind, const std::wstring& name) {
    DatabaseState* state = DatabaseState::ofNames(entity);
    return state ? state->idOf(state->ids().find(kind, name)) : AcDbObjectId();
}

Acad::ErrorStatus setNameTag(ObjectTags tags, int code, const std::wstring& name) {
    if (qrs::platform::compareNoCase(tags.text(code), name) != 0) tags.setText(code, name);
    return Acad::eOk;
}

}  // namespace

// --- lines

AcDbLine::AcDbLine() {
    setOwnTags([] {
        return DetachedTags{&qrs::host::entityFormatOf("LINE"),
                            {{codes::kPoint, "0.0"},
                             {codes::yOf(codes::kPoint), "0.0"},
                             {codes::zOf(codes::kPoint), "0.0"},
                             {codes::kSecondPoint, "0.0"},
                             {codes::yOf(codes::kSecondPoint), "0.0"},
                             {codes::zOf(codes::kSecondPoint), "0.0"}}};
    });
}

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : AcDbLine() {
    setStartPoint(start);
    setEndPoint(end);
}

AcGePoint3d AcDbLine::startPoint() const {
    return qrs::host::readPoint(tags(), codes::kPoint);
}

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    return setPointTags(checkWrite(), tags(), codes::kPoint, point);
}

AcGePoint3d AcDbLine::endPoint() const {
    return qrs::host::readPoint(tags(), codes::kSecondPoint);
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    return setPointTags(checkWrite(), tags(), codes::kSecondPoint, point);
}

// --- circles

AcDbCircle::AcDbCircle() {
    setOwnTags([] {
        return DetachedTags{&qrs::host::entityFormatOf("CIRCLE"),
                            {{codes::kPoint, "0.0"},
                             {codes::yOf(codes::kPoint), "0.0"},
                             {codes::zOf(codes::kPoint), "0.0"},
                             {curve::kRadius, "1.0"}}};
    });
}

AcDbCircle::AcDbCircle(const AcGePoint3d& center, double radius) : AcDbCircle() {
    setCenter(center);
    setRadius(radius);
}

AcGePoint3d AcDbCircle::center() const {
    return readFlatPoint(tags(), codes::kPoint);
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& point) {
    return setFlatPoint(checkWrite(), tags(), codes::kPoint, point);
}

double AcDbCircle::radius() const {
    return tags().real(curve::kRadius, 0.0);
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    return radius > 0.0 ? setRealTag(checkWrite(), tags(), curve::kRadius, radius, 0.0) : Acad::eInvalidInput;
}

// --- block references

AcDbBlockReference::AcDbBlockReference() {
    setOwnTags([] {
        return DetachedTags{&qrs::host::entityFormatOf("INSERT"),
                            {{codes::kName, ""},
                             {codes::kPoint, "0.0"},
                             {codes::yOf(codes::kPoint), "0.0"},
                             {codes::zOf(codes::kPoint), "0.0"}}};
    });
}

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block) : AcDbBlockReference() {
    setPosition(position);
    setBlockTableRecord(block);
}

AcDbObjectId AcDbBlockReference::blockTableRecord() const {
    return namedBy(*this, TableKind::Block, tags().text(codes::kName));
}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    std::wstring name;
    const Acad::ErrorStatus status = nameToWrite(*this, block, TableKind::Block, name);
    return status == Acad::eOk ? setNameTag(tags(), codes::kName, name) : status;
}

AcGePoint3d AcDbBlockReference::position() const {
    return readFlatPoint(tags(), codes::kPoint);
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& point) {
    return setFlatPoint(checkWrite(), tags(), codes::kPoint, point);
}

double AcDbBlockReference::rotation() const {
    return tags().real(insert::kRotation, 0.0) * kRadiansPerDegree;
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    return setAngleTag(checkWrite(), tags(), insert::kRotation, angle);
}

AcGeVector3d AcDbBlockReference::normal() const {
    return normalOf(tags());
}

AcGeScale3d AcDbBlockReference::scaleFactors() const {
    const ObjectTags own = tags();
    return {own.real(insert::kScaleX, 1.0), own.real(insert::kScaleY, 1.0), own.real(insert::kScaleZ, 1.0)};
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& factors) {
    const double values[] = {factors.sx, factors.sy, factors.sz};
    for (const double value : values)
        if (value == 0.0 || !std::isfinite(value)) return Acad::eInvalidInput;
    Acad::ErrorStatus status = checkWrite();
    for (int axis = 0; axis < 3; ++axis)
        status = setRealTag(status, tags(), insert::kScaleX + axis, values[axis], 1.0);
    return status;
}

// --- texts

AcDbText::AcDbText() {
    setOwnTags([] {
        return DetachedTags{&qrs::host::entityFormatOf("TEXT"),
                            {{codes::kPoint, "0.0"},
                             {codes::yOf(codes::kPoint), "0.0"},
                             {codes::zOf(codes::kPoint), "0.0"},
                             {text::kHeight, "2.5"},
                             {codes::kText, ""},
                             {codes::kTextStyle, "Standard"}}};
    });
}

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height, double rotation)
    : AcDbText() {
    setPosition(position);
    setTextString(text ? text : L"");
    if (!style.isNull()) setTextStyle(style);
    setHeight(height > 0.0 ? height : kUsualTextHeight);
    setRotation(rotation);
}

AcGePoint3d AcDbText::position() const {
    return readFlatPoint(tags(), codes::kPoint);
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& point) {
    return setFlatPoint(checkWrite(), tags(), codes::kPoint, point);
}

AcGePoint3d AcDbText::alignmentPoint() const {
    return readFlatPoint(tags(), text::kAlignmentPoint);
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    return setFlatPoint(checkWrite(), tags(), text::kAlignmentPoint, point);
}

AcDb::TextHorzMode AcDbText::horizontalMode() const {
    return static_cast<AcDb::TextHorzMode>(tags().integer(text::kHorizontal, AcDb::kTextLeft));
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
    if (mode < AcDb::kTextLeft || mode > AcDb::kTextFit) return Acad::eInvalidInput;
    return setIntegerTag(checkWrite(), tags(), text::kHorizontal, mode);
}

AcDb::TextVertMode AcDbText::verticalMode() const {
    return static_cast<AcDb::TextVertMode>(tags().integer(text::kVertical, AcDb::kTextBase));
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
    if (mode < AcDb::kTextBase || mode > AcDb::kTextTop) return Acad::eInvalidInput;
    return setIntegerTag(checkWrite(), tags(), text::kVertical, mode);
}

double AcDbText::height() const {
    return tags().real(text::kHeight, 0.0);
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
    return height > 0.0 ? setRealTag(checkWrite(), tags(), text::kHeight, height, 0.0) : Acad::eInvalidInput;
}

double AcDbText::widthFactor() const {
    return tags().real(text::kWidthFactor, 1.0);
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    return factor > 0.0 ? setRealTag(checkWrite(), tags(), text::kWidthFactor, factor, 1.0) : Acad::eInvalidInput;
}

double AcDbText::rotation() const {
    return tags().real(text::kRotation, 0.0) * kRadiansPerDegree;
}

Acad::ErrorStatus AcDbText::setRotation(double angle) {
    return setAngleTag(checkWrite(), tags(), text::kRotation, angle);
}

AcDbObjectId AcDbText::textStyle() const {
    return namedBy(*this, TableKind::TextStyle, tags().text(codes::kTextStyle, L"Standard"));
}

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    std::wstring name;
    const Acad::ErrorStatus status = nameToWrite(*this, style, TableKind::TextStyle, name);
    if (status != Acad::eOk || qrs::platform::compareNoCase(tags().text(codes::kTextStyle, L"Standard"), name) == 0)
        return status;
    return setNameTag(tags(), codes::kTextStyle, name);
}

ACHAR* AcDbText::textString() const {
    return newString(tags().text(codes::kText));
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (!text) return Acad::eInvalidInput;
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    tags().setText(codes::kText, text);
    return Acad::eOk;
}
