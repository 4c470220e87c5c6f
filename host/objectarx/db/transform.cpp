// Moving, turning, scaling and mirroring entities: how their numbers follow.
#include <cmath>
#include <map>
#include <utility>

#include "dbmain.h"
#include "gemat3d.h"
#include "host/drawing/numberroles.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

constexpr double kFullTurn = 360.0;

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
        dxf::RecordWalk walk(drawing.tags(record));
        for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;)
            if (walk.part() != dxf::Part::Group) tags_.push_back(tag);
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
    void insert(std::size_t i, int newCode, double newValue) {
        edits_[i].after.push_back({newCode, dxf::realText(newValue)});
    }
    // The last tag of the section that a tag stands in.
    std::size_t endOfSection(std::size_t i) const {
        while (i + 1 < tags_.size() && tags_[i + 1].code != codes::kSubclass && tags_[i + 1].code != codes::kEmbedded)
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

    void move(std::size_t i, NumberRole role) {
        switch (role) {
            case NumberRole::WorldPoint:
                return numbers_.setPoint(i, motion_.world * numbers_.point(i), false);
            case NumberRole::PlanePoint:
                return movePlanePoint(i);
            case NumberRole::Vector:
                return setVector(i, motion_.world * vector(i));
            case NumberRole::Direction:
                return setVector(i, (motion_.world * vector(i)) * (1.0 / motion_.scale));
            case NumberRole::Length:
                return numbers_.set(i, numbers_.value(i) * motion_.scale);
            case NumberRole::Factor:
                return numbers_.set(i, numbers_.value(i) * factorOf(numbers_.code(i)));
            case NumberRole::Thickness:
                return numbers_.set(i, numbers_.value(i) * motion_.scale * (motion_.isMirrored ? -1.0 : 1.0));
            case NumberRole::Angle:
                return numbers_.set(i, turned(numbers_.value(i), motion_.angle));
            case NumberRole::Elevation:
                return numbers_.set(i, (motion_.plane * AcGePoint3d(0.0, 0.0, numbers_.value(i))).z);
            case NumberRole::Shift:
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
    void addMissing(const NumberRow& row) {
        const std::size_t anchor = numbers_.find(row.anchor);
        if (anchor == numbers_.count() || numbers_.find(row.code) != numbers_.count()) return;
        // The direction of a text says what the angle would.
        if (row.role == NumberRole::Angle && row.dxfName == std::string_view("MTEXT") &&
            numbers_.find(mtext::kDirection) != numbers_.count())
            return;
        const std::size_t last = numbers_.lastAxis(anchor);
        if (row.role == NumberRole::Angle && motion_.angle != 0.0) {
            numbers_.insert(last, row.code, turned(0.0, motion_.angle));
        } else if (row.role == NumberRole::Factor && factorOf(row.code) != 1.0) {
            numbers_.insert(last, row.code, factorOf(row.code));
        } else if (row.role == NumberRole::Shift) {
            const AcGeVector3d shift = motion_.plane.translation();
            for (unsigned axis = 0; axis < 3; ++axis)
                numbers_.insert(last, row.code + static_cast<int>(axis) * codes::kCoordinateStep, shift[axis]);
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
            mover_.move(i, NumberRole::Elevation);
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
        if (code == hatch::kRadius) mover_.move(i, NumberRole::Length);
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
                return mover_.move(i, NumberRole::Angle);
            case hatch::kPatternScale:
            case hatch::kDash:
                return mover_.move(i, NumberRole::Length);
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
            if (numbers.code(i) == codes::kEmbedded) kind = dxfName == "MTEXT" ? kTextColumns : "MTEXT";
            const NumberRow* row = findNumber(kind, numbers.code(i));
            if (!row || (frame.isSpatial && row->role == NumberRole::Elevation)) continue;
            const bool isInSpace = frame.isSpatial && row->role == NumberRole::PlanePoint;
            mover.move(i, isInSpace ? NumberRole::WorldPoint : row->role);
        }
        for (const NumberRow& row : numberRows())
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

Acad::ErrorStatus transform(dxf::Drawing& drawing, RecordId entity, const AcGeMatrix3d& matrix) {
    const std::string_view dxfName = drawing.typeNameOf(entity);
    if (dxfName != "HATCH" && !hasKnownNumbers(dxfName)) return Acad::eNotApplicable;
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
