// The shapes of lines, arcs, points, leaders and the like.
#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;
using namespace dxf::codes;

namespace {

double radians(double degrees) {
    return degrees * kRadiansPerDegree;
}

// How far a curve runs counterclockwise from one angle to another: a whole turn when they are one.
double sweep(double from, double to) {
    constexpr double kSame = 1e-12;
    double turn = std::fmod(to - from, 2 * kPi);
    if (turn < 0) turn += 2 * kPi;
    return turn <= kSame ? 2 * kPi : turn;
}

}  // namespace

void drawLine(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> start = entity.point(codes::kPoint);
    const std::optional<Vec> end = entity.point(codes::kSecondPoint);
    if (start && end) pen.segment(*start, *end);
}

void drawCircle(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(codes::kPoint);
    const double radius = entity.real(curve::kRadius, 0.0);
    if (!center || !(radius > 0.0)) return;
    pen.in(planeOf(entity.normal())).arc(*center, {radius, 0, 0}, {0, radius, 0}, 0.0, 2 * kPi);
}

void drawArc(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(codes::kPoint);
    const double radius = entity.real(curve::kRadius, 0.0);
    if (!center || !(radius > 0.0) || !entity.has(curve::kStartAngle) || !entity.has(curve::kEndAngle)) return;
    const double start = std::fmod(radians(entity.real(curve::kStartAngle, 0.0)), 2 * kPi);
    const double turn = sweep(start, radians(entity.real(curve::kEndAngle, 0.0)));
    pen.in(planeOf(entity.normal())).arc(*center, {radius, 0, 0}, {0, radius, 0}, start, start + turn);
}

void drawEllipse(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(codes::kPoint);
    const std::optional<Vec> major = entity.point(ellipse::kMajorAxis);
    const double ratio = entity.real(ellipse::kRatio, 0.0);
    if (!center || !major || !(ratio > 0.0) || !(lengthOf(*major) > 0.0)) return;
    const double start = std::fmod(entity.real(ellipse::kStartParameter, 0.0), 2 * kPi);
    const double turn = sweep(start, entity.real(ellipse::kEndParameter, 2 * kPi));
    const Vec minor = cross(unit(entity.normal(), {0, 0, 1}), *major) * ratio;
    pen.arc(*center, *major, minor, start, start + turn);
}

void drawPoint(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    if (!at) return;
    if (Picture* const picture = pen.picture())
        picture->mark(pen.toWorld().point(*at));
    else
        pen.point(*at);
}

void drawRay(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> from = entity.point(codes::kPoint);
    const std::optional<Vec> direction = entity.point(ray::kDirection);
    if (from && direction && lengthOf(*direction) > 0.0) pen.line(*from, *direction, 0.0, Box::kFar);
}

void drawEndlessLine(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> through = entity.point(codes::kPoint);
    const std::optional<Vec> direction = entity.point(ray::kDirection);
    if (through && direction && lengthOf(*direction) > 0.0) pen.line(*through, *direction, -Box::kFar, Box::kFar);
}

// Points given one after the other with one code.
static std::vector<Vec> pointsOf(const Entity& entity, int code) {
    std::vector<Vec> points;
    bool whole = false;
    for (const Entity::Field& field : entity.fields()) {
        const std::optional<double> number = finiteOf(field.value);
        if (field.code == code && number) {
            points.push_back({*number, 0, 0});
            whole = false;
        } else if (field.code == codes::yOf(code) && !points.empty() && number) {
            points.back().y = *number;
            whole = true;
        } else if (field.code == codes::zOf(code) && !points.empty() && number) {
            points.back().z = *number;
        }
    }
    if (!points.empty() && !whole) points.pop_back();
    return points;
}

// Leaders drawn as splines are taken as straight from point to point.
void drawLeader(const Entity& entity, const Pen& pen) {
    const std::vector<Vec> points = pointsOf(entity, codes::kPoint);
    for (std::size_t i = 1; i < points.size(); ++i)
        pen.segment(points[i - 1], points[i]);
    Picture* const picture = pen.picture();
    if (!picture || points.size() < 2 || entity.integer(leader::kHasHead, 1) == 0) return;
    picture->head(pen.toWorld().point(points[0]), pen.toWorld().point(points[1]), entity.text(dimension::kStyle),
                  scaleOf(pen.toWorld()));
}

// Each element runs at an offset along the miter of each point.
void drawMultiline(const Entity& entity, const Pen& pen) {
    const std::vector<Vec> points = pointsOf(entity, mline::kVertex);
    const std::vector<Vec> miters = pointsOf(entity, mline::kMiter);
    std::vector<std::vector<double>> offsets;  // by point
    bool first = false;                        // the next parameter is the first one of an element
    for (const Entity::Field& field : entity.fields()) {
        if (field.code == mline::kVertex) offsets.emplace_back();
        if (field.code == mline::kParameterCount) first = true;
        if (field.code != mline::kElementParameter || !first || offsets.empty()) continue;
        offsets.back().push_back(finiteOf(field.value).value_or(0.0));
        first = false;
    }
    if (points.size() != miters.size() || points.size() != offsets.size()) return;
    const bool closed = (entity.integer(mline::kFlags, 0) & 2) != 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const std::size_t k = (i + 1) % points.size();
        if (k == 0 && !closed) break;
        for (std::size_t element = 0; element < offsets[i].size() && element < offsets[k].size(); ++element)
            pen.segment(points[i] + miters[i] * offsets[i][element], points[k] + miters[k] * offsets[k][element]);
    }
}

void drawSpline(const Entity& entity, const Pen& pen) {
    SplineData data;
    data.degree = static_cast<int>(entity.integer(spline::kDegree, 0));
    for (const Entity::Field& field : entity.fields()) {
        if (field.code != spline::kKnot && field.code != spline::kWeight) continue;
        const std::optional<double> number = finiteOf(field.value);
        if (!number) return;
        (field.code == spline::kKnot ? data.knots : data.weights).push_back(*number);
    }
    data.controls = pointsOf(entity, spline::kControlPoint);
    constexpr int kControlCount = 73;
    // A helix has points of its own after those of its spline.
    const auto told = static_cast<std::size_t>(std::max(entity.integer(kControlCount, 0), 0L));
    if (told > 0 && data.controls.size() > told) data.controls.resize(told);
    if (!data.controls.empty()) return drawSplineCurve(data, pen);
    // Known by the points it goes through alone: straight between them.
    const std::vector<Vec> through = pointsOf(entity, spline::kFitPoint);
    for (std::size_t i = 1; i < through.size(); ++i)
        pen.segment(through[i - 1], through[i]);
}

}  // namespace qrs::host::pick
