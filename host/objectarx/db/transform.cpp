// Moving, turning, scaling and mirroring entities: what the numbers of each kind mean, and how they follow.
#include <cmath>
#include <map>
#include <utility>

#include "dbmain.h"
#include "gemat3d.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
namespace codes = dxf::codes;
namespace columns = dxf::codes::mtextcolumns;
using namespace dxf::codes;

namespace {

constexpr double kFullTurn = 360.0;

// What a number, or the coordinates from a code on (10 codes apart), say.
enum class Role : std::uint8_t {
    WorldPoint,
    PlanePoint,  // in the entity's own plane
    Vector,      // turned and scaled
    Direction,   // turned
    Length,
    Thickness,  // along the normal
    Angle,      // in the entity's own plane, degrees
    Factor,     // of a size that does not change
    Elevation,  // of the plane above the origin
    Shift,      // how far the picture of a dimension lies from where its block draws it
};

// usual: what is written when a tag is missing that now says something else than 0 (angles) or 1 (factors).
struct Row {
    const char* dxfName;
    int code;
    Role role;
    int anchor = 0;  // a missing tag is put after the first of this code; 0: a missing one means nothing
};

// After 101, texts carry the values of a text of several lines: MTEXT those of its columns, attributes a whole one.
constexpr const char* kColumns = "MTEXT 101";

constexpr Row kRows[] = {
    {"LINE", codes::kPoint, Role::WorldPoint},
    {"LINE", codes::kSecondPoint, Role::WorldPoint},
    {"LINE", codes::kThickness, Role::Thickness},
    {"POINT", codes::kPoint, Role::WorldPoint},
    {"POINT", codes::kThickness, Role::Thickness},
    {"POINT", codes::point::kAxisAngle, Role::Angle},
    {"RAY", codes::kPoint, Role::WorldPoint},
    {"RAY", ray::kDirection, Role::Direction},
    {"XLINE", codes::kPoint, Role::WorldPoint},
    {"XLINE", ray::kDirection, Role::Direction},
    {"3DFACE", face::kCorner, Role::WorldPoint},
    {"3DFACE", face::kSecondCorner, Role::WorldPoint},
    {"3DFACE", face::kThirdCorner, Role::WorldPoint},
    {"3DFACE", face::kFourthCorner, Role::WorldPoint},
    {"CIRCLE", codes::kPoint, Role::PlanePoint},
    {"CIRCLE", curve::kRadius, Role::Length},
    {"CIRCLE", codes::kThickness, Role::Thickness},
    {"ARC", codes::kPoint, Role::PlanePoint},
    {"ARC", curve::kRadius, Role::Length},
    {"ARC", codes::kThickness, Role::Thickness},
    {"ARC", curve::kStartAngle, Role::Angle},
    {"ARC", curve::kEndAngle, Role::Angle},
    {"ELLIPSE", codes::kPoint, Role::WorldPoint},
    {"ELLIPSE", ellipse::kMajorAxis, Role::Vector},
    {"SPLINE", spline::kControlPoint, Role::WorldPoint},
    {"SPLINE", spline::kFitPoint, Role::WorldPoint},
    {"SPLINE", spline::kStartTangent, Role::Direction},
    {"SPLINE", spline::kEndTangent, Role::Direction},
    {"LWPOLYLINE", codes::kElevation, Role::Elevation},
    {"LWPOLYLINE", codes::kPoint, Role::PlanePoint},
    {"LWPOLYLINE", codes::kThickness, Role::Thickness},
    {"LWPOLYLINE", polyline::kStartWidth, Role::Length},
    {"LWPOLYLINE", polyline::kEndWidth, Role::Length},
    {"LWPOLYLINE", polyline::kConstantWidth, Role::Length},
    {"POLYLINE", polyline::kElevation, Role::Elevation},
    {"POLYLINE", codes::kThickness, Role::Thickness},
    {"POLYLINE", polyline::kStartWidth, Role::Length},
    {"POLYLINE", polyline::kEndWidth, Role::Length},
    {"VERTEX", codes::kPoint, Role::PlanePoint},
    {"VERTEX", polyline::kStartWidth, Role::Length},
    {"VERTEX", polyline::kEndWidth, Role::Length},
    {"VERTEX", polyline::kTangent, Role::Angle},
    {"SOLID", face::kCorner, Role::PlanePoint},
    {"SOLID", face::kSecondCorner, Role::PlanePoint},
    {"SOLID", face::kThirdCorner, Role::PlanePoint},
    {"SOLID", face::kFourthCorner, Role::PlanePoint},
    {"SOLID", codes::kThickness, Role::Thickness},
    {"TRACE", face::kCorner, Role::PlanePoint},
    {"TRACE", face::kSecondCorner, Role::PlanePoint},
    {"TRACE", face::kThirdCorner, Role::PlanePoint},
    {"TRACE", face::kFourthCorner, Role::PlanePoint},
    {"TRACE", codes::kThickness, Role::Thickness},
    {"TEXT", codes::kPoint, Role::PlanePoint},
    {"TEXT", text::kAlignmentPoint, Role::PlanePoint},
    {"TEXT", text::kHeight, Role::Length},
    {"TEXT", codes::kThickness, Role::Thickness},
    {"TEXT", text::kRotation, Role::Angle, text::kHeight},
    {"ATTRIB", codes::kPoint, Role::PlanePoint},
    {"ATTRIB", text::kAlignmentPoint, Role::PlanePoint},
    {"ATTRIB", text::kHeight, Role::Length},
    {"ATTRIB", codes::kThickness, Role::Thickness},
    {"ATTRIB", text::kRotation, Role::Angle, text::kHeight},
    {"ATTDEF", codes::kPoint, Role::PlanePoint},
    {"ATTDEF", text::kAlignmentPoint, Role::PlanePoint},
    {"ATTDEF", text::kHeight, Role::Length},
    {"ATTDEF", codes::kThickness, Role::Thickness},
    {"ATTDEF", text::kRotation, Role::Angle, text::kHeight},
    {"SHAPE", codes::kPoint, Role::WorldPoint},
    {"SHAPE", text::kHeight, Role::Length},
    {"SHAPE", codes::kThickness, Role::Thickness},
    {"SHAPE", text::kRotation, Role::Angle, text::kHeight},
    {"MTEXT", codes::kPoint, Role::WorldPoint},
    {"MTEXT", mtext::kDirection, Role::Direction},
    {"MTEXT", mtext::kHeight, Role::Length},
    {"MTEXT", mtext::kReferenceWidth, Role::Length},
    {"MTEXT", mtext::kDefinedHeight, Role::Length},
    {"MTEXT", mtext::kColumnWidth, Role::Length},
    {"MTEXT", mtext::kColumnGutter, Role::Length},
    {"MTEXT", mtext::kRotation, Role::Angle, mtext::kHeight},
    {"INSERT", codes::kPoint, Role::PlanePoint},
    {"INSERT", insert::kScaleX, Role::Factor, codes::kPoint},
    {"INSERT", insert::kScaleY, Role::Factor, codes::kPoint},
    {"INSERT", insert::kScaleZ, Role::Factor, codes::kPoint},
    {"INSERT", insert::kColumnSpacing, Role::Length},
    {"INSERT", insert::kRowSpacing, Role::Length},
    {"INSERT", insert::kRotation, Role::Angle, codes::kPoint},
    {"LEADER", codes::kPoint, Role::WorldPoint},
    {"LEADER", leader::kDirection, Role::Direction},
    {"LEADER", leader::kBlockOffset, Role::Vector},
    {"LEADER", leader::kAnnotationOffset, Role::Vector},
    {"TOLERANCE", codes::kPoint, Role::WorldPoint},
    {"TOLERANCE", tolerance::kDirection, Role::Direction},
    {"IMAGE", codes::kPoint, Role::WorldPoint},
    {"IMAGE", image::kDotAcross, Role::Vector},
    {"IMAGE", image::kDotUp, Role::Vector},
    {"WIPEOUT", codes::kPoint, Role::WorldPoint},
    {"WIPEOUT", image::kDotAcross, Role::Vector},
    {"WIPEOUT", image::kDotUp, Role::Vector},
    {"DIMENSION", codes::kPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kTextPoint, Role::PlanePoint},
    {"DIMENSION", dimension::kShift, Role::Shift, dimension::kTextPoint},
    {"DIMENSION", dimension::kFirstPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kSecondPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kThirdPoint, Role::WorldPoint},
    {"DIMENSION", dimension::kArcPoint, Role::PlanePoint},
    // What new drawings write after a text once more, for its columns.
    {kColumns, columns::kDirection, Role::Direction},
    {kColumns, columns::kPosition, Role::WorldPoint},
    {kColumns, columns::kReferenceWidth, Role::Length},
    {kColumns, columns::kDefinedHeight, Role::Length},
    {kColumns, columns::kWidth, Role::Length},
    {kColumns, columns::kHeight, Role::Length},
    {kColumns, columns::kColumnWidth, Role::Length},
    {kColumns, columns::kColumnGutter, Role::Length},
    {kColumns, columns::kColumnHeight, Role::Length},
};

const Row* findRow(std::string_view dxfName, int code) {
    for (const Row& row : kRows)
        if (row.code == code && dxfName == row.dxfName) return &row;
    return nullptr;
}

bool isTranslation(const AcGeMatrix3d& matrix) {
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column)
            if (matrix(row, column) != (row == column ? 1.0 : 0.0)) return false;
    return true;
}

// A transformation as one entity's plane meets it. A mirrored plane is looked at from its other side, so that angles
// and bulges keep their sense.
struct Motion {
    Motion(const AcGeMatrix3d& matrix, const AcGeVector3d& oldNormal) : world(matrix), normal(oldNormal) {
        if (isTranslation(matrix)) {
            plane = AcGeMatrix3d::translation(AcGeMatrix3d::worldToPlane(oldNormal) * matrix.translation());
            return;
        }
        isMirrored = matrix.det() < 0.0;
        scale = matrix.scale();
        if (std::fabs(scale - 1.0) < 1e-12) scale = 1.0;
        normal = (matrix * oldNormal).normal();
        if (isMirrored) normal = -normal;
        for (unsigned axis = 0; axis < 3; ++axis)
            if (std::fabs(normal[axis]) < 1e-14) normal[axis] = 0.0;
        plane = AcGeMatrix3d::worldToPlane(normal) * matrix * AcGeMatrix3d::planeToWorld(oldNormal);
        angle = std::atan2(plane(1, 0), plane(0, 0)) * platform::kDegreesPerRadian;
        if (std::fabs(angle) < 1e-12) angle = 0.0;
    }

    AcGeMatrix3d world;
    AcGeMatrix3d plane;
    AcGeVector3d normal;  // afterwards
    double scale = 1.0;
    double angle = 0.0;  // by which the plane is turned, degrees
    bool isMirrored = false;
};

// The tags of one record, changed together and written back in one go.
class Numbers {
  public:
    Numbers(dxf::Drawing& drawing, RecordId record) : drawing_(drawing), record_(record) {
        dxf::TagCursor cursor = drawing.tags(record);
        dxf::Tag tag;
        while (cursor.next(tag) && tag.code < codes::kFirstXdata)
            tags_.push_back(tag);
    }

    std::size_t count() const { return tags_.size(); }
    int code(std::size_t i) const { return tags_[i].code; }
    std::string_view text(std::size_t i) const { return tags_[i].value; }
    double value(std::size_t i) const { return dxf::toReal(tags_[i].value); }
    std::size_t find(int wanted) const {
        std::size_t i = 0;
        while (i < tags_.size() && tags_[i].code != wanted)
            ++i;
        return i;
    }
    void set(std::size_t i, double newValue) {
        if (newValue == value(i)) return;
        edits_[i].hasValue = true;
        edits_[i].value = dxf::realText(newValue);
    }

    // The coordinates from a tag on; missing ones are 0.
    AcGePoint3d point(std::size_t i) const {
        AcGePoint3d result(value(i), 0.0, 0.0);
        for (unsigned axis = 1; axis < 3; ++axis)
            if (isAxis(i, axis)) result[axis] = value(i + axis);
        return result;
    }
    void setPoint(std::size_t i, const AcGePoint3d& to, bool isFlat) {
        set(i, to.x);
        if (isAxis(i, 1)) set(i + 1, to.y);
        if (isAxis(i, 2))
            set(i + 2, to.z);
        else if (!isFlat && isAxis(i, 1) && to.z != 0.0)
            insert(i + 1, codes::zOf(code(i)), to.z);
    }
    // The last coordinate that follows a tag.
    std::size_t lastAxis(std::size_t i) const { return isAxis(i, 2) ? i + 2 : isAxis(i, 1) ? i + 1 : i; }
    // A tag after another.
    void insert(std::size_t behind, int newCode, double newValue) {
        edits_[behind].behind.push_back({newCode, dxf::realText(newValue)});
    }
    // The last tag of the section that a tag stands in.
    std::size_t endOfSection(std::size_t i) const {
        while (i + 1 < tags_.size() && tags_[i + 1].code != codes::kSubclass)
            ++i;
        return i;
    }

    void write() {
        std::vector<dxf::TagEdit> edits;
        for (auto& [i, edit] : edits_) {
            edit.tag = tags_[i];
            edits.push_back(std::move(edit));
        }
        drawing_.editTags(record_, edits);
    }

  private:
    bool isAxis(std::size_t i, unsigned axis) const {
        return i + axis < tags_.size() &&
               tags_[i + axis].code == tags_[i].code + static_cast<int>(axis) * codes::kCoordinateStep &&
               (axis == 1 || isAxis(i, 1));
    }

    dxf::Drawing& drawing_;
    RecordId record_;
    std::vector<dxf::Tag> tags_;
    std::map<std::size_t, dxf::TagEdit> edits_;  // by number of the tag
};

AcGeVector3d normalOf(const Numbers& numbers) {
    const std::size_t i = numbers.find(codes::kNormal);
    if (i == numbers.count()) return AcGeVector3d::kZAxis;
    const AcGePoint3d tip = numbers.point(i);
    const AcGeVector3d normal(tip.x, tip.y, tip.z);
    return normal.length() > 0.0 ? normal : AcGeVector3d::kZAxis;
}

// The same angle between 0 and a full turn, where the one that was written lay there.
double turned(double angle, double by) {
    if (by == 0.0) return angle;
    const double sum = std::fmod(angle + by, kFullTurn);
    return sum < 0.0 ? sum + kFullTurn : sum;
}

class Mover {
  public:
    Mover(Numbers& numbers, const Motion& motion) : numbers_(numbers), motion_(motion) {
        if (const std::size_t i = numbers.find(codes::kElevation); i != numbers.count()) elevation_ = numbers.value(i);
    }

    void move(std::size_t i, Role role) {
        switch (role) {
            case Role::WorldPoint:
                return numbers_.setPoint(i, motion_.world * numbers_.point(i), false);
            case Role::PlanePoint:
                return movePlanePoint(i);
            case Role::Vector:
                return setVector(i, motion_.world * vector(i));
            case Role::Direction:
                return setVector(i, (motion_.world * vector(i)) * (1.0 / motion_.scale));
            case Role::Length:
                return numbers_.set(i, numbers_.value(i) * motion_.scale);
            case Role::Factor:
                return numbers_.set(i, numbers_.value(i) * factorOf(numbers_.code(i)));
            case Role::Thickness:
                return numbers_.set(i, numbers_.value(i) * motion_.scale * (motion_.isMirrored ? -1.0 : 1.0));
            case Role::Angle:
                return numbers_.set(i, turned(numbers_.value(i), motion_.angle));
            case Role::Elevation:
                return numbers_.set(i, (motion_.plane * AcGePoint3d(0.0, 0.0, numbers_.value(i))).z);
            case Role::Shift:
                return numbers_.setPoint(i, numbers_.point(i) + motion_.plane.translation(), false);
        }
    }

    // A point of which files write two coordinates lies at the entity's elevation.
    void movePlanePoint(std::size_t i) {
        AcGePoint3d point = numbers_.point(i);
        const bool isFlat = numbers_.lastAxis(i) == i + 1;
        if (isFlat) point.z = elevation_;
        numbers_.setPoint(i, motion_.plane * point, isFlat);
    }

    void setElevation(double elevation) { elevation_ = elevation; }

    // A direction in the entity's plane, of two coordinates.
    void movePlaneVector(std::size_t i) {
        const AcGeVector3d moved = motion_.plane * vector(i);
        numbers_.setPoint(i, {moved.x, moved.y, 0.0}, true);
    }

    // What a missing tag means may no longer hold.
    void addMissing(const Row& row) {
        const std::size_t anchor = numbers_.find(row.anchor);
        if (anchor == numbers_.count() || numbers_.find(row.code) != numbers_.count()) return;
        // The direction of a text says what the angle would.
        if (row.role == Role::Angle && row.dxfName == std::string_view("MTEXT") &&
            numbers_.find(mtext::kDirection) != numbers_.count())
            return;
        const std::size_t behind = numbers_.lastAxis(anchor);
        if (row.role == Role::Angle && motion_.angle != 0.0) {
            numbers_.insert(behind, row.code, turned(0.0, motion_.angle));
        } else if (row.role == Role::Factor && factorOf(row.code) != 1.0) {
            numbers_.insert(behind, row.code, factorOf(row.code));
        } else if (row.role == Role::Shift) {
            const AcGeVector3d shift = motion_.plane.translation();
            for (unsigned axis = 0; axis < 3; ++axis)
                numbers_.insert(behind, row.code + static_cast<int>(axis) * codes::kCoordinateStep, shift[axis]);
        }
    }

    void setNormal() {
        const std::size_t i = numbers_.find(codes::kNormal);
        const AcGeVector3d& to = motion_.normal;
        if (i != numbers_.count()) return setVector(i, to);
        if (to.x == 0.0 && to.y == 0.0 && to.z > 0.0) return;
        const std::size_t first = numbers_.find(codes::kPoint);
        if (first == numbers_.count()) return;
        for (unsigned axis = 0; axis < 3; ++axis)
            numbers_.insert(numbers_.endOfSection(first),
                            codes::kNormal + static_cast<int>(axis) * codes::kCoordinateStep, to[axis]);
    }

  private:
    // Seen from the other side of a mirrored plane, what stands up from it hangs down.
    double factorOf(int code) const {
        return motion_.isMirrored && code == insert::kScaleZ ? -motion_.scale : motion_.scale;
    }

    AcGeVector3d vector(std::size_t i) const {
        const AcGePoint3d tip = numbers_.point(i);
        return {tip.x, tip.y, tip.z};
    }
    void setVector(std::size_t i, const AcGeVector3d& to) { numbers_.setPoint(i, {to.x, to.y, to.z}, false); }

    Numbers& numbers_;
    const Motion& motion_;
    double elevation_ = 0.0;
};

// --- hatches: their codes mean other things from place to place

class HatchMover {
  public:
    HatchMover(Numbers& numbers, const Motion& motion) : numbers_(numbers), motion_(motion), mover_(numbers, motion) {}

    void move() {
        std::size_t i = 0;
        for (; i < numbers_.count() && numbers_.code(i) != hatch::kPathCount; ++i) {
            if (numbers_.code(i) != hatch::kElevation) continue;
            mover_.setElevation(numbers_.value(i));
            mover_.move(i, Role::Elevation);
        }
        for (; i < numbers_.count() && numbers_.code(i) != hatch::kStyle; ++i)
            movePath(i);
        for (; i < numbers_.count(); ++i)
            movePattern(i);
    }

  private:
    enum Edge : int { Polyline = 0, Line = 1, Arc = 2, Ellipse = 3, Spline = 4 };

    void movePath(std::size_t i) {
        constexpr std::int64_t kPolylineBit = 2;
        const int code = numbers_.code(i);
        if (code == hatch::kPathFlags) isPolyline_ = (dxf::toInteger(numbers_.text(i)) & kPolylineBit) != 0;
        if (code == hatch::kEdgeType)
            edge_ = isPolyline_ ? Polyline : static_cast<int>(dxf::toInteger(numbers_.text(i)));
        if (code == codes::kPoint || (code == hatch::kMajorAxis && edge_ != Ellipse)) mover_.movePlanePoint(i);
        if ((code == hatch::kMajorAxis && edge_ == Ellipse) || code == hatch::kStartTangent ||
            code == hatch::kEndTangent)
            mover_.movePlaneVector(i);
        if (edge_ != Arc) return;
        if (code == hatch::kRadius) mover_.move(i, Role::Length);
        // Angles of an arc that runs clockwise are written as those of its mirror image.
        if (code == hatch::kStartAngle || code == hatch::kEndAngle)
            numbers_.set(i, turned(numbers_.value(i), runsClockwise(i) ? -motion_.angle : motion_.angle));
    }

    bool runsClockwise(std::size_t i) const {
        while (i < numbers_.count() && numbers_.code(i) != hatch::kIsCounterclockwise &&
               numbers_.code(i) != hatch::kEdgeType)
            ++i;
        return i < numbers_.count() && numbers_.code(i) == hatch::kIsCounterclockwise &&
               dxf::toInteger(numbers_.text(i)) == 0;
    }

    void movePattern(std::size_t i) {
        switch (numbers_.code(i)) {
            case hatch::kPatternAngle:
            case hatch::kLineAngle:
                return mover_.move(i, Role::Angle);
            case hatch::kPatternScale:
            case hatch::kDash:
                return mover_.move(i, Role::Length);
            case hatch::kLineBaseX:
            case hatch::kLineOffsetX:
                return movePatternPair(i);
            case codes::kPoint:
                if (hasSeeds_) mover_.movePlanePoint(i);
                return;
            case hatch::kSeedCount:
                hasSeeds_ = true;
                return;
            default:
                return;
        }
    }

    // A pattern line's base point, and the way to the next line.
    void movePatternPair(std::size_t i) {
        if (i + 1 == numbers_.count() || numbers_.code(i + 1) != numbers_.code(i) + 1) return;
        const double x = numbers_.value(i);
        const double y = numbers_.value(i + 1);
        const AcGePoint3d base = motion_.plane * AcGePoint3d(x, y, 0.0);
        const AcGeVector3d way = motion_.plane * AcGeVector3d(x, y, 0.0);
        const bool isBase = numbers_.code(i) == hatch::kLineBaseX;
        numbers_.set(i, isBase ? base.x : way.x);
        numbers_.set(i + 1, isBase ? base.y : way.y);
    }

    Numbers& numbers_;
    const Motion& motion_;
    Mover mover_;
    bool isPolyline_ = false;
    bool hasSeeds_ = false;
    int edge_ = Polyline;
};

// --- one record

constexpr std::int64_t kSpatialPolylineBits = 8 | 16 | 64;  // three-dimensional, mesh, polyface
constexpr std::int64_t kPolyfaceBit = 128;
constexpr std::int64_t kPolyfacePointBit = 64;

std::int64_t flagsOf(const Numbers& numbers) {
    const std::size_t i = numbers.find(codes::kFlags);
    return i == numbers.count() ? 0 : dxf::toInteger(numbers.text(i));
}

// The vertices of a flat polyline lie in its plane, those of others in space.
struct Frame {
    AcGeVector3d normal;
    bool isSpatial = false;
};

void moveRecord(dxf::Drawing& drawing, RecordId record, const AcGeMatrix3d& matrix, Frame& frame) {
    const std::string dxfName(drawing.typeNameOf(record));
    Numbers numbers(drawing, record);
    const bool isVertex = dxfName == "VERTEX";
    if (!isVertex) frame = {normalOf(numbers), dxfName == "POLYLINE" && (flagsOf(numbers) & kSpatialPolylineBits) != 0};
    const Motion motion(matrix, frame.normal);
    if (dxfName == "HATCH") {
        HatchMover(numbers, motion).move();
    } else {
        Mover mover(numbers, motion);
        // A face of a polyface has no place of its own.
        const bool isFace =
            isVertex && (flagsOf(numbers) & kPolyfaceBit) != 0 && (flagsOf(numbers) & kPolyfacePointBit) == 0;
        std::string_view kind = dxfName;
        for (std::size_t i = 0; i < numbers.count() && !isFace; ++i) {
            if (numbers.code(i) == codes::kEmbedded) kind = dxfName == "MTEXT" ? kColumns : "MTEXT";
            const Row* row = findRow(kind, numbers.code(i));
            if (!row || (frame.isSpatial && row->role == Role::Elevation)) continue;
            const bool isInSpace = frame.isSpatial && row->role == Role::PlanePoint;
            mover.move(i, isInSpace ? Role::WorldPoint : row->role);
        }
        for (const Row& row : kRows)
            if (row.anchor != 0 && dxfName == row.dxfName) mover.addMissing(row);
        // A flat polyline without an elevation may need one now.
        const AcGePoint3d origin = motion.plane * AcGePoint3d();
        if (dxfName == "LWPOLYLINE" && origin.z != 0.0 && numbers.find(codes::kElevation) == numbers.count() &&
            numbers.find(codes::kFlags) != numbers.count())
            numbers.insert(numbers.find(codes::kFlags), codes::kElevation, origin.z);
    }
    if (!isVertex && dxfName != "SEQEND" && !frame.isSpatial) Mover(numbers, motion).setNormal();
    numbers.write();
}

bool isKnown(std::string_view dxfName) {
    if (dxfName == "HATCH") return true;
    for (const Row& row : kRows)
        if (dxfName == row.dxfName) return true;
    return false;
}

}  // namespace

namespace {

Acad::ErrorStatus transform(dxf::Drawing& drawing, RecordId entity, const AcGeMatrix3d& matrix) {
    const std::string_view dxfName = drawing.typeNameOf(entity);
    if (!isKnown(dxfName)) return Acad::eNotApplicable;
    if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (dxfName == "DIMENSION" && !isTranslation(matrix)) return Acad::eNotApplicable;
    Frame frame;
    moveRecord(drawing, entity, matrix, frame);
    for (RecordId sub = drawing.next(entity); sub != kNoRecord; sub = drawing.next(sub)) {
        const dxf::Record& one = drawing.record(sub);
        if ((one.flags & dxf::kSubEntity) == 0 || one.owner != entity) break;
        moveRecord(drawing, sub, matrix, frame);
    }
    return Acad::eOk;
}

}  // namespace
}  // namespace qrs::host

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& transformation) {
    using qrs::host::DatabaseState;
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    return state ? qrs::host::transform(state->drawing(), record(), transformation) : Acad::eNotInDatabase;
}
