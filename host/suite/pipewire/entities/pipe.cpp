// Pipes, their nodes and attachments.
#include <algorithm>
#include <cmath>
#include <set>

#include "dbobjptr.h"
#include "dbsymtb.h"
#include "entities/fieldrow.h"
#include "entities/pipecodes.h"
#include "qrs_pipeentity.h"
#include "qrs_pipewire.h"

using qrs::suite::bitOf;
using qrs::suite::FieldRow;
using qrs::suite::isSame;
using qrs::suite::readRows;
using qrs::suite::row;
using qrs::suite::writeRows;
namespace pipecodes = qrs::suite::pipecodes;

ACRX_DEFINE_MEMBERS(TDbPipePrototype, AcDbEntity)
ACRX_DXF_DEFINE_MEMBERS(TDbPipe, TDbPipePrototype, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, QRS_PIPE,
                        "qrs_pipewire")
ACRX_DXF_DEFINE_MEMBERS(TDbPipeNode, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, QRS_PIPENODE,
                        "qrs_pipewire")
ACRX_DXF_DEFINE_MEMBERS(TDbPipeAttachment, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        QRS_PIPEATTACHMENT, "qrs_pipewire")

namespace {

constexpr const ACHAR* kPrototypeMark = L"TDbPipePrototype";
constexpr const ACHAR* kPipeMark = L"TDbPipe";
constexpr const ACHAR* kNodeMark = L"TDbPipeNode";
constexpr const ACHAR* kAttachmentMark = L"TDbPipeAttachment";

using Prototype = TDbPipePrototype::Values;
const FieldRow<Prototype> kPrototypeRows[] = {
    row<Prototype, &Prototype::systemName>(pipecodes::kSystemName),
    {pipecodes::kSystemType, [](Prototype& values, const resbuf& item) { values.sysType = item.resval.rlong; },
     [](const Prototype& values, AcDbDxfFiler& filer, Adesk::Int16 code) { filer.writeInt32(code, values.sysType); },
     [](const Prototype& values) { return values.sysType == 0; }},
    row<Prototype, &Prototype::attachments>(pipecodes::kAttachment),
};

using Pipe = TDbPipe::Values;

// A number or point of the curve.
template <auto Member>
constexpr FieldRow<Pipe> curveRow(Adesk::Int16 code, bool (*isImplied)(const Pipe& values), bool isInNew = true) {
    return {code, [](Pipe& values, const resbuf& item) { qrs::suite::take(values.curve.*Member, item); },
            [](const Pipe& values, AcDbDxfFiler& filer, Adesk::Int16 itsCode) {
                qrs::suite::put(filer, itsCode, values.curve.*Member);
            },
            isImplied, isInNew};
}

template <class Values>
constexpr FieldRow<Values> leftOutOfNew(FieldRow<Values> row) {
    row.isInNew = false;
    return row;
}

const FieldRow<Pipe> kPipeRows[] = {
    {pipecodes::kKind, [](Pipe& values, const resbuf& item) { values.curve.kind = item.resval.rint; },
     [](const Pipe& values, AcDbDxfFiler& filer, Adesk::Int16 code) {
         filer.writeInt16(code, static_cast<Adesk::Int16>(values.curve.kind));
     },
     [](const Pipe& values) { return values.curve.kind == TPipeCurve::kLine; }},
    curveRow<&TPipeCurve::start>(pipecodes::kStart,
                                 [](const Pipe& values) { return isSame(values.curve.start, AcGePoint3d()); }),
    // A curve whose end is missing ends where it starts.
    curveRow<&TPipeCurve::end>(pipecodes::kEnd,
                               [](const Pipe& values) { return isSame(values.curve.end, values.curve.start); }),
    curveRow<&TPipeCurve::bulge>(
        pipecodes::kBulge, [](const Pipe& values) { return values.curve.bulge == 0.0; }, false),
    leftOutOfNew(row<Pipe, &Pipe::lineWidth>(pipecodes::kLineWidth)),
    row<Pipe, &Pipe::dimLayer>(pipecodes::kDimLayer),
    row<Pipe, &Pipe::arrowLayer>(pipecodes::kArrowLayer),
    row<Pipe, &Pipe::startNode>(pipecodes::kStartNode),
    row<Pipe, &Pipe::endNode>(pipecodes::kEndNode),
};

template <class Values>
constexpr FieldRow<Values> sizeRow() {
    return leftOutOfNew(row<Values, &Values::size>(pipecodes::kSize));
}

template <class Values>
constexpr FieldRow<Values> kindRow() {
    return {pipecodes::kKind, [](Values& values, const resbuf& item) { values.kind = item.resval.rint; },
            [](const Values& values, AcDbDxfFiler& filer, Adesk::Int16 code) {
                filer.writeInt16(code, static_cast<Adesk::Int16>(values.kind));
            },
            [](const Values& values) { return values.kind == 0; }, false};
}

const FieldRow<TDbPipeNode::Values> kNodeRows[] = {
    row<TDbPipeNode::Values, &TDbPipeNode::Values::position>(pipecodes::kPosition), sizeRow<TDbPipeNode::Values>(),
    kindRow<TDbPipeNode::Values>()};

using Attachment = TDbPipeAttachment::Values;
const FieldRow<Attachment> kAttachmentRows[] = {
    leftOutOfNew(row<Attachment, &Attachment::text>(pipecodes::kText)),
    row<Attachment, &Attachment::position>(pipecodes::kPosition), sizeRow<Attachment>(),
    leftOutOfNew(row<Attachment, &Attachment::rotation>(pipecodes::kRotation)), kindRow<Attachment>()};

// Whether the file, or its maker, says where the object is.
template <class Values, std::size_t Count>
bool isPlaced(const Values& values, const FieldRow<Values> (&rows)[Count]) {
    return !values.named || (*values.named & bitOf(rows, pipecodes::kStart)) != 0;
}

bool isSize(double size) {
    return std::isfinite(size) && size >= 0.0;
}

bool fitsInt16(int value) {
    return value >= INT16_MIN && value <= INT16_MAX;
}

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

// Drawing units. Pipes drawn by hand are seldom exactly upright.
constexpr double kUprightWithin = 0.1;

double dot(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double distanceToSegment(const TPipeCurve& line, const AcGePoint3d& point) {
    const auto minus = [](const AcGePoint3d& a, const AcGePoint3d& b) {
        return AcGePoint3d(a.x - b.x, a.y - b.y, a.z - b.z);
    };
    const AcGePoint3d along = minus(line.end, line.start);
    const double square = dot(along, along);
    const double part = square > 0.0 ? dot(minus(point, line.start), along) / square : 0.0;
    const double t = std::min(std::max(part, 0.0), 1.0);
    return point.distanceTo({line.start.x + t * along.x, line.start.y + t * along.y, line.start.z + t * along.z});
}

double distanceToEnds(const TPipeCurve& curve, const AcGePoint3d& point) {
    return std::min(point.distanceTo(curve.start), point.distanceTo(curve.end));
}

// The arc lies at the height of its start.
double distanceToArc(const TPipeCurve& arc, const AcGePoint3d& point) {
    const double dx = arc.end.x - arc.start.x;
    const double dy = arc.end.y - arc.start.y;
    const double bulge = arc.bulge;
    // From the chord's middle to the centre, as a part of the chord.
    const double away = (1.0 - bulge * bulge) / (4.0 * bulge);
    const AcGePoint3d centre(arc.start.x + dx / 2.0 - dy * away, arc.start.y + dy / 2.0 + dx * away, arc.start.z);
    const double px = point.x - centre.x;
    const double py = point.y - centre.y;
    const auto angleFromStart = [&](double x, double y) {
        const double sx = arc.start.x - centre.x;
        const double sy = arc.start.y - centre.y;
        const double angle = std::atan2(sx * y - sy * x, sx * x + sy * y) * (bulge < 0.0 ? -1.0 : 1.0);
        constexpr double kRound = 6.283185307179586;
        return angle < 0.0 ? angle + kRound : angle;
    };
    if (angleFromStart(px, py) > 4.0 * std::atan(std::fabs(bulge))) return distanceToEnds(arc, point);
    const double radius = std::hypot(arc.start.x - centre.x, arc.start.y - centre.y);
    return std::hypot(std::hypot(px, py) - radius, point.z - arc.start.z);
}

bool isAlive(AcDbObjectId id, const AcRxClass* rxClass) {
    const AcRxClass* itsClass = id.isValid() && !id.isErased() ? id.objectClass() : nullptr;
    return itsClass && itsClass->isDerivedFrom(rxClass);
}

// The id when it is an object of the class, else null.
AcDbObjectId aliveOrNull(AcDbObjectId id, const AcRxClass* rxClass) {
    return isAlive(id, rxClass) ? id : AcDbObjectId();
}

// Gives a value of an open entity another content.
template <class Value>
Acad::ErrorStatus change(AcDbObject& object, Value& value, const Value& content) {
    if (!object.isWriteEnabled()) return Acad::eNotOpenForWrite;
    object.assertWriteEnabled();
    value = content;
    return Acad::eOk;
}

Acad::ErrorStatus changeId(AcDbObject& object, AcDbObjectId& value, AcDbObjectId content, const AcRxClass* rxClass,
                           Acad::ErrorStatus otherwise) {
    if (!content.isNull() && !isAlive(content, rxClass)) return otherwise;
    return change(object, value, content);
}

}  // namespace

// --- curves

TPipeCurve TPipeCurve::Line(const AcGePoint3d& start, const AcGePoint3d& end) {
    TPipeCurve curve;
    curve.start = start;
    curve.end = end;
    return curve;
}

TPipeCurve TPipeCurve::Arc(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) {
    TPipeCurve curve = Line(start, end);
    curve.kind = kArc;
    curve.bulge = bulge;
    return curve;
}

double TPipeCurve::Length() const {
    const double chord = start.distanceTo(end);
    if (kind != kArc || bulge == 0.0) return chord;
    const double angle = 4.0 * std::atan(std::fabs(bulge));
    return chord / (2.0 * std::sin(angle / 2.0)) * angle;
}

bool TPipeCurve::IsVertical() const {
    return IsLine() && std::fabs(end.x - start.x) < kUprightWithin && std::fabs(end.y - start.y) < kUprightWithin;
}

double TPipeCurve::DistanceTo(const AcGePoint3d& point) const {
    if (IsLine() || (kind == kArc && bulge == 0.0)) return distanceToSegment(*this, point);
    return kind == kArc ? distanceToArc(*this, point) : distanceToEnds(*this, point);
}

bool TPipeCurve::operator==(const TPipeCurve& other) const {
    const auto same = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; };
    return kind == other.kind && same(start, other.start) && same(end, other.end) && (IsLine() || bulge == other.bulge);
}

// --- what pipes share

std::wstring TDbPipePrototype::GetPipeSystemName() const {
    return CurrentPipeSystemName(GetDrawnSystemName());
}

std::wstring TDbPipePrototype::GetDrawnSystemName() const {
    assertReadEnabled();
    return values_.systemName;
}

Acad::ErrorStatus TDbPipePrototype::SetPipeSystemName(const std::wstring& name) {
    return change(*this, values_.systemName, name);
}

int TDbPipePrototype::GetPipeSysType() const {
    assertReadEnabled();
    return values_.sysType;
}

Acad::ErrorStatus TDbPipePrototype::SetPipeSysType(int sysType) {
    return change(*this, values_.sysType, sysType);
}

void TDbPipePrototype::GetAttachments(AcDbObjectIdArray& out) const {
    assertReadEnabled();
    out.removeAll();
    std::set<AcDbObjectId> seen;
    for (const AcDbObjectId& id : values_.attachments)
        if (isAlive(id, TDbPipeAttachment::desc()) && seen.insert(id).second) out.append(id);
}

Acad::ErrorStatus TDbPipePrototype::AddAttachment(AcDbObjectId attachment) {
    if (!isAlive(attachment, TDbPipeAttachment::desc())) return Acad::eWrongObjectType;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    AcDbObjectIdArray present;
    GetAttachments(present);
    if (present.contains(attachment)) return Acad::eDuplicateKey;
    assertWriteEnabled();
    values_.attachments.push_back(attachment);
    return Acad::eOk;
}

Acad::ErrorStatus TDbPipePrototype::RemoveAttachment(AcDbObjectId attachment) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    assertReadEnabled();
    std::vector<AcDbObjectId>& ids = values_.attachments;
    if (std::find(ids.begin(), ids.end(), attachment) == ids.end()) return Acad::eKeyNotFound;
    assertWriteEnabled();
    ids.erase(std::remove(ids.begin(), ids.end(), attachment), ids.end());
    return Acad::eOk;
}

Acad::ErrorStatus TDbPipePrototype::dxfInFields(AcDbDxfFiler* filer) {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    readRows(*filer, kPrototypeMark, kPrototypeRows, values_);
    return filer->filerStatus();
}

Acad::ErrorStatus TDbPipePrototype::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    writeRows(*filer, kPrototypeMark, kPrototypeRows, values_);
    return filer->filerStatus();
}

// --- pipes

TPipeCurve TDbPipe::GetCurve() const {
    assertReadEnabled();
    return values_.curve;
}

Acad::ErrorStatus TDbPipe::SetCurve(const TPipeCurve& curve) {
    if (!isFinite(curve.start) || !isFinite(curve.end) || !std::isfinite(curve.bulge)) return Acad::eInvalidInput;
    if (!fitsInt16(curve.kind)) return Acad::eInvalidInput;
    const bool hadBulge = GetCurve().bulge != 0.0;
    const Acad::ErrorStatus status = change(*this, values_.curve, curve);
    if (status != Acad::eOk || !values_.named) return status;
    // From now on it starts where it was told to, wherever that is, and a line needs no bulge.
    *values_.named |= bitOf(kPipeRows, pipecodes::kStart);
    if (hadBulge && curve.bulge == 0.0) *values_.named &= ~bitOf(kPipeRows, pipecodes::kBulge);
    return status;
}

AcDbObjectId TDbPipe::GetDimLayerId() const {
    assertReadEnabled();
    return aliveOrNull(values_.dimLayer, AcDbLayerTableRecord::desc());
}

Acad::ErrorStatus TDbPipe::SetDimLayerId(AcDbObjectId layer) {
    return changeId(*this, values_.dimLayer, layer, AcDbLayerTableRecord::desc(), Acad::eInvalidLayer);
}

AcDbObjectId TDbPipe::GetArrowLayerId() const {
    assertReadEnabled();
    return aliveOrNull(values_.arrowLayer, AcDbLayerTableRecord::desc());
}

Acad::ErrorStatus TDbPipe::SetArrowLayerId(AcDbObjectId layer) {
    return changeId(*this, values_.arrowLayer, layer, AcDbLayerTableRecord::desc(), Acad::eInvalidLayer);
}

AcDbObjectId TDbPipe::GetStartNode() const {
    assertReadEnabled();
    return aliveOrNull(values_.startNode, TDbPipeNode::desc());
}

Acad::ErrorStatus TDbPipe::SetStartNode(AcDbObjectId node) {
    return changeId(*this, values_.startNode, node, TDbPipeNode::desc(), Acad::eWrongObjectType);
}

AcDbObjectId TDbPipe::GetEndNode() const {
    assertReadEnabled();
    return aliveOrNull(values_.endNode, TDbPipeNode::desc());
}

Acad::ErrorStatus TDbPipe::SetEndNode(AcDbObjectId node) {
    return changeId(*this, values_.endNode, node, TDbPipeNode::desc(), Acad::eWrongObjectType);
}

double TDbPipe::GetLineWidth() const {
    assertReadEnabled();
    return std::max(values_.lineWidth, 0.0);
}

Acad::ErrorStatus TDbPipe::SetLineWidth(double width) {
    return isSize(width) ? change(*this, values_.lineWidth, width) : Acad::eInvalidInput;
}

bool TDbPipe::IsDamaged() const {
    assertReadEnabled();
    return isDamaged_;
}

bool TDbPipe::IsPlaced() const {
    return isPlaced(values_, kPipeRows);
}

Acad::ErrorStatus TDbPipe::dxfInFields(AcDbDxfFiler* filer) {
    if (const Acad::ErrorStatus status = TDbPipePrototype::dxfInFields(filer); status != Acad::eOk) return status;
    readRows(*filer, kPipeMark, kPipeRows, values_);
    const auto isNamed = [this](Adesk::Int16 code) { return (*values_.named & bitOf(kPipeRows, code)) != 0; };
    isDamaged_ = !isNamed(pipecodes::kStart) || !filer->atSubclassData(kPrototypeMark);
    if (!isNamed(pipecodes::kEnd)) values_.curve.end = values_.curve.start;
    return filer->filerStatus();
}

Acad::ErrorStatus TDbPipe::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const Acad::ErrorStatus status = TDbPipePrototype::dxfOutFields(filer); status != Acad::eOk) return status;
    writeRows(*filer, kPipeMark, kPipeRows, values_);
    return filer->filerStatus();
}

// --- nodes and attachments

AcGePoint3d TDbPipeNode::GetPosition() const {
    assertReadEnabled();
    return values_.position;
}

Acad::ErrorStatus TDbPipeNode::SetPosition(const AcGePoint3d& position) {
    if (!isFinite(position)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = change(*this, values_.position, position);
    if (status == Acad::eOk && values_.named) *values_.named |= bitOf(kNodeRows, pipecodes::kPosition);
    return status;
}

bool TDbPipeNode::IsPlaced() const {
    return isPlaced(values_, kNodeRows);
}

int TDbPipeNode::GetKind() const {
    assertReadEnabled();
    return values_.kind;
}

Acad::ErrorStatus TDbPipeNode::SetKind(int kind) {
    return fitsInt16(kind) ? change(*this, values_.kind, kind) : Acad::eInvalidInput;
}

double TDbPipeNode::GetSize() const {
    assertReadEnabled();
    return std::max(values_.size, 0.0);
}

Acad::ErrorStatus TDbPipeNode::SetSize(double size) {
    return isSize(size) ? change(*this, values_.size, size) : Acad::eInvalidInput;
}

Acad::ErrorStatus TDbPipeNode::dxfInFields(AcDbDxfFiler* filer) {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    readRows(*filer, kNodeMark, kNodeRows, values_);
    return filer->filerStatus();
}

Acad::ErrorStatus TDbPipeNode::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    writeRows(*filer, kNodeMark, kNodeRows, values_);
    return filer->filerStatus();
}

AcGePoint3d TDbPipeAttachment::GetPosition() const {
    assertReadEnabled();
    return values_.position;
}

Acad::ErrorStatus TDbPipeAttachment::SetPosition(const AcGePoint3d& position) {
    if (!isFinite(position)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = change(*this, values_.position, position);
    if (status == Acad::eOk && values_.named) *values_.named |= bitOf(kAttachmentRows, pipecodes::kPosition);
    return status;
}

bool TDbPipeAttachment::IsPlaced() const {
    return isPlaced(values_, kAttachmentRows);
}

int TDbPipeAttachment::GetKind() const {
    assertReadEnabled();
    return values_.kind;
}

Acad::ErrorStatus TDbPipeAttachment::SetKind(int kind) {
    return fitsInt16(kind) ? change(*this, values_.kind, kind) : Acad::eInvalidInput;
}

std::wstring TDbPipeAttachment::GetText() const {
    assertReadEnabled();
    return values_.text;
}

Acad::ErrorStatus TDbPipeAttachment::SetText(const std::wstring& text) {
    return change(*this, values_.text, text);
}

double TDbPipeAttachment::GetSize() const {
    assertReadEnabled();
    return std::max(values_.size, 0.0);
}

Acad::ErrorStatus TDbPipeAttachment::SetSize(double size) {
    return isSize(size) ? change(*this, values_.size, size) : Acad::eInvalidInput;
}

double TDbPipeAttachment::GetRotation() const {
    assertReadEnabled();
    return values_.rotation;
}

Acad::ErrorStatus TDbPipeAttachment::SetRotation(double degrees) {
    return std::isfinite(degrees) ? change(*this, values_.rotation, degrees) : Acad::eInvalidInput;
}

Acad::ErrorStatus TDbPipeAttachment::dxfInFields(AcDbDxfFiler* filer) {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    readRows(*filer, kAttachmentMark, kAttachmentRows, values_);
    return filer->filerStatus();
}

Acad::ErrorStatus TDbPipeAttachment::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    writeRows(*filer, kAttachmentMark, kAttachmentRows, values_);
    return filer->filerStatus();
}

bool IsWell(AcDbObjectId id) {
    const AcDbObjectPointer<TDbPipeNode> node(id, AcDb::kForRead);
    return node.openStatus() == Acad::eOk && node->GetKind() == TDbPipeNode::kWell;
}

namespace {

// Drawings that hold such entities are read before any module asks for them.
const bool kRegistered = [] {
    for (void (*const registerClass)() : {TDbPipe::rxInit, TDbPipeNode::rxInit, TDbPipeAttachment::rxInit})
        registerClass();
    acrxBuildClassHierarchy();
    return true;
}();

}  // namespace
