// The shapes of hatches: the lines around them, and for solid ones what they cover; in a picture what fills them.
#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

// Reads the tags of a hatch in their order.
class Reader {
  public:
    explicit Reader(const Entity& entity) : fields_(entity.fields()) {}

    bool isAt(int code) const { return next_ < fields_.size() && fields_[next_].code == code; }
    // The next tag must carry the code; otherwise the hatch is damaged, and everything is 0 from here on.
    double real(int code) {
        const std::optional<double> number = isAt(code) ? finiteOf(fields_[next_].value) : std::nullopt;
        if (!number) broken_ = true;
        ++next_;
        return number.value_or(0.0);
    }
    long integer(int code) { return static_cast<long>(std::clamp(real(code), -1e9, 1e9)); }
    Vec point(int code) {
        const double x = real(code);
        return {x, real(codes::yOf(code)), 0};
    }
    double optional(int code, double fallback) { return isAt(code) ? real(code) : fallback; }
    bool skipTo(int code) {
        while (next_ < fields_.size() && fields_[next_].code != code)
            ++next_;
        return next_ < fields_.size();
    }
    bool isBroken() const { return broken_; }
    // No count can be higher than what is left.
    bool fits(long count) const { return count >= 0 && static_cast<std::size_t>(count) <= fields_.size() - next_; }

  private:
    const std::vector<Entity::Field>& fields_;
    std::size_t next_ = 0;
    bool broken_ = false;
};

using Loop = std::vector<Vec>;
enum PathFlag { kOuterPath = 1, kPolylinePath = 2, kOutermostPath = 16 };
enum FillStyle { kOddAreas = 0, kOutermostAreas = 1, kWholeArea = 2 };

void appendArc(Loop& loop, const Pen& pen, const Vec& center, const Vec& u, const Vec& v, double t0, double t1) {
    constexpr int kPieces = 32;
    const int pieces = pen.picture() ? piecesOfTurn(t1 - t0, std::max(lengthOf(u), lengthOf(v)), pen) : kPieces;
    for (int i = 0; i <= pieces; ++i) {
        const double t = t0 + (t1 - t0) * i / pieces;
        loop.push_back(center + u * std::cos(t) + v * std::sin(t));
    }
}

// Clockwise edges give their angles mirrored.
void readArcEdge(Reader& reader, bool isEllipse, const Pen& pen, Loop& loop) {
    const Vec center = reader.point(codes::kPoint);
    Vec u;
    double ratio = 1.0;
    if (isEllipse) {
        u = reader.point(hatch::kMajorAxis);
        ratio = reader.real(hatch::kRatio);
    } else {
        u = {reader.real(hatch::kRadius), 0, 0};
    }
    const double from = reader.real(hatch::kStartAngle) * kRadiansPerDegree;
    double to = reader.real(hatch::kEndAngle) * kRadiansPerDegree;
    const bool counterclockwise = reader.integer(hatch::kIsCounterclockwise) != 0;
    if (!(to > from)) to += 2 * kPi;
    if (reader.isBroken() || !(to > from)) return;
    Vec v = Vec{-u.y, u.x, 0} * ratio;
    if (!counterclockwise) v = v * -1.0;
    if (!pen.picture()) pen.arc(center, u, v, from, to);
    appendArc(loop, pen, center, u, v, from, to);
}

void readSplineEdge(Reader& reader, const Pen& pen, Loop& loop) {
    SplineData spline;
    spline.degree = static_cast<int>(reader.integer(hatch::kDegree));
    const bool rational = reader.integer(hatch::kIsRational) != 0;
    reader.integer(hatch::kIsPeriodic);
    const long knots = reader.integer(hatch::kKnotCount);
    const long controls = reader.integer(hatch::kControlCount);
    if (reader.isBroken() || !reader.fits(knots) || !reader.fits(controls)) return;
    for (long i = 0; i < knots; ++i)
        spline.knots.push_back(reader.real(hatch::kKnot));
    for (long i = 0; i < controls; ++i) {
        spline.controls.push_back(reader.point(codes::kPoint));
        const double weight = reader.optional(hatch::kWeight, 1.0);
        if (rational) spline.weights.push_back(weight);
    }
    if (reader.isBroken()) return;
    // Newer drawings tell the points it was fitted to and its end tangents.
    const auto fitted = static_cast<long>(reader.optional(hatch::kFitCount, 0.0));
    for (long i = 0; i < fitted && reader.isAt(hatch::kFitPoint); ++i)
        reader.point(hatch::kFitPoint);
    if (reader.isAt(hatch::kStartTangent)) reader.point(hatch::kStartTangent);
    if (reader.isAt(hatch::kEndTangent)) reader.point(hatch::kEndTangent);
    if (!pen.picture()) drawSplineCurve(spline, pen);
    appendSplinePoints(spline, loop);
}

void readEdges(Reader& reader, const Pen& pen, Loop& loop) {
    const long edges = reader.integer(hatch::kEdgeCount);
    for (long i = 0; i < edges && !reader.isBroken(); ++i) {
        const long type = reader.integer(hatch::kEdgeType);
        if (type == 1) {
            const Vec a = reader.point(codes::kPoint);
            const Vec b = reader.point(codes::kSecondPoint);
            if (reader.isBroken()) return;
            if (!pen.picture()) pen.segment(a, b);
            loop.insert(loop.end(), {a, b});
        } else if (type == 2 || type == 3) {
            readArcEdge(reader, type == 3, pen, loop);
        } else if (type == 4) {
            readSplineEdge(reader, pen, loop);
        } else {
            return;
        }
    }
}

void readPolyline(Reader& reader, const Pen& pen, Loop& loop) {
    struct Corner {
        Vec at;
        double bulge;
    };
    const bool hasBulges = reader.integer(hatch::kHasBulge) != 0;
    reader.integer(hatch::kIsClosed);  // paths of a hatch are closed, whatever it says
    const long count = reader.integer(hatch::kEdgeCount);
    std::vector<Corner> corners;
    for (long i = 0; i < count && !reader.isBroken(); ++i) {
        const Vec at = reader.point(codes::kPoint);
        corners.push_back({at, hasBulges ? reader.optional(hatch::kBulge, 0.0) : 0.0});
    }
    if (reader.isBroken()) return;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner& from = corners[i];
        const Corner& to = corners[(i + 1) % corners.size()];
        if (!pen.picture()) pen.bulge(from.at, to.at, from.bulge);
        loop.push_back(from.at);
        if (std::fabs(from.bulge) < 1e-9 || (from.at.x == to.at.x && from.at.y == to.at.y)) continue;
        const BulgeCircle circle = circleOf(from.at, to.at, from.bulge);
        appendArc(loop, pen, circle.center, {circle.radius, 0, 0}, {0, circle.radius, 0}, circle.start,
                  circle.start + circle.turn);
    }
}

// Each line of a pattern: angle, base, offset and dashes, as they are after the hatch's own angle and scale.
std::vector<PatternLines> patternOf(const Entity& entity) {
    constexpr std::size_t kMostDashes = 64;
    std::vector<PatternLines> lines;
    bool isPattern = false;
    for (const Entity::Field& field : entity.fields()) {
        isPattern = isPattern || field.code == hatch::kPatternLineCount;
        if (!isPattern) continue;
        const double value = finiteOf(field.value).value_or(0.0);
        if (field.code == hatch::kLineAngle) lines.emplace_back().angle = value * kRadiansPerDegree;
        if (lines.empty()) continue;
        PatternLines& line = lines.back();
        if (field.code == hatch::kLineBaseX) line.base.x = value;
        if (field.code == hatch::kLineBaseY) line.base.y = value;
        if (field.code == hatch::kLineOffsetX) line.offset.x = value;
        if (field.code == hatch::kLineOffsetY) line.offset.y = value;
        if (field.code == hatch::kDash && line.dashes.size() < kMostDashes) line.dashes.push_back(value);
    }
    return lines;
}

void drawFilling(const Entity& entity, std::vector<Loop> loops, const std::vector<long>& roles, const Pen& pen) {
    const long style = entity.integer(hatch::kStyle, kOddAreas);
    const bool hasOuter = std::any_of(roles.begin(), roles.end(), [](long role) { return (role & kOuterPath) != 0; });
    Filling filling;
    filling.isSolid = entity.integer(hatch::kIsSolid, 0) == 1;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const bool isOuter = (roles[i] & kOuterPath) != 0;
        const bool isOutermost = (roles[i] & kOutermostPath) != 0;
        const bool isLeftOut =
            hasOuter && !isOuter && (style == kWholeArea || (style == kOutermostAreas && !isOutermost));
        if (!isLeftOut) filling.loops.push_back(std::move(loops[i]));
    }
    if (entity.integer(hatch::kIsGradient, 0) == 1) {
        filling.isSolid = true;
        for (const Entity::Field& field : entity.fields())
            if (field.code == hatch::kGradientColor)
                filling.gradient.push_back(static_cast<long>(dxf::toInteger(field.value)));
    }
    if (!filling.isSolid) filling.lines = patternOf(entity);
    pen.picture()->filling(filling, pen.toWorld());
}

}  // namespace

void drawHatch(const Entity& entity, const Pen& pen) {
    const double elevation = entity.real(hatch::kElevation, 0.0);
    const Pen flat = pen.in(planeOf(entity.normal())).in(Transform{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, elevation}});
    Reader reader(entity);
    if (!reader.skipTo(hatch::kPathCount)) return;
    const long paths = reader.integer(hatch::kPathCount);
    std::vector<Loop> loops;
    std::vector<long> roles;
    for (long i = 0; i < paths && !reader.isBroken() && reader.skipTo(hatch::kPathFlags); ++i) {
        Loop& loop = loops.emplace_back();
        roles.push_back(reader.integer(hatch::kPathFlags));
        if (roles.back() & kPolylinePath)
            readPolyline(reader, flat, loop);
        else
            readEdges(reader, flat, loop);
    }
    if (pen.picture()) return drawFilling(entity, std::move(loops), roles, flat);
    const bool isSolid = entity.integer(hatch::kIsSolid, 0) == 1;
    if (isSolid && !reader.isBroken()) flat.area(std::move(loops));
}

}  // namespace qrs::host::pick
