// The shapes of lines, arcs, points, leaders and the like.
#include "host/pick/kinds.h"

namespace qrs::host::pick {

namespace {

double radians(double degrees) {
    return degrees * (kPi / 180.0);
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
    const std::optional<Vec> start = entity.point(10);
    const std::optional<Vec> end = entity.point(11);
    if (start && end) pen.segment(*start, *end);
}

void drawCircle(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(10);
    const double radius = entity.real(40, 0.0);
    if (!center || !(radius > 0.0)) return;
    pen.in(planeOf(entity.normal())).arc(*center, {radius, 0, 0}, {0, radius, 0}, 0.0, 2 * kPi);
}

void drawArc(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(10);
    const double radius = entity.real(40, 0.0);
    if (!center || !(radius > 0.0) || !entity.has(50) || !entity.has(51)) return;
    const double start = std::fmod(radians(entity.real(50, 0.0)), 2 * kPi);
    const double turn = sweep(start, radians(entity.real(51, 0.0)));
    pen.in(planeOf(entity.normal())).arc(*center, {radius, 0, 0}, {0, radius, 0}, start, start + turn);
}

void drawEllipse(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> center = entity.point(10);
    const std::optional<Vec> major = entity.point(11);
    const double ratio = entity.real(40, 0.0);
    if (!center || !major || !(ratio > 0.0) || !(lengthOf(*major) > 0.0)) return;
    const double start = std::fmod(entity.real(41, 0.0), 2 * kPi);
    const double turn = sweep(start, entity.real(42, 2 * kPi));
    const Vec minor = cross(unit(entity.normal(), {0, 0, 1}), *major) * ratio;
    pen.arc(*center, *major, minor, start, start + turn);
}

void drawPoint(const Entity& entity, const Pen& pen) {
    if (const std::optional<Vec> at = entity.point(10)) pen.point(*at);
}

void drawRay(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> from = entity.point(10);
    const std::optional<Vec> direction = entity.point(11);
    if (from && direction && lengthOf(*direction) > 0.0) pen.line(*from, *direction, 0.0, Box::kFar);
}

void drawEndlessLine(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> through = entity.point(10);
    const std::optional<Vec> direction = entity.point(11);
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
        } else if (field.code == code + 10 && !points.empty() && number) {
            points.back().y = *number;
            whole = true;
        } else if (field.code == code + 20 && !points.empty() && number) {
            points.back().z = *number;
        }
    }
    if (!points.empty() && !whole) points.pop_back();
    return points;
}

// Leaders drawn as splines are taken as straight from point to point.
void drawLeader(const Entity& entity, const Pen& pen) {
    const std::vector<Vec> points = pointsOf(entity, 10);
    for (std::size_t i = 1; i < points.size(); ++i)
        pen.segment(points[i - 1], points[i]);
}

// Each element runs at an offset along the miter of each point.
void drawMultiline(const Entity& entity, const Pen& pen) {
    const std::vector<Vec> points = pointsOf(entity, 11);
    const std::vector<Vec> miters = pointsOf(entity, 13);
    std::vector<std::vector<double>> offsets;  // by point
    bool first = false;                        // the next 41 is the first one of an element
    for (const Entity::Field& field : entity.fields()) {
        if (field.code == 11) offsets.emplace_back();
        if (field.code == 74) first = true;
        if (field.code != 41 || !first || offsets.empty()) continue;
        offsets.back().push_back(finiteOf(field.value).value_or(0.0));
        first = false;
    }
    if (points.size() != miters.size() || points.size() != offsets.size()) return;
    const bool closed = (entity.integer(71, 0) & 2) != 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const std::size_t k = (i + 1) % points.size();
        if (k == 0 && !closed) break;
        for (std::size_t element = 0; element < offsets[i].size() && element < offsets[k].size(); ++element)
            pen.segment(points[i] + miters[i] * offsets[i][element], points[k] + miters[k] * offsets[k][element]);
    }
}

void drawSpline(const Entity& entity, const Pen& pen) {
    SplineData spline;
    spline.degree = static_cast<int>(entity.integer(71, 0));
    for (const Entity::Field& field : entity.fields()) {
        if (field.code != 40 && field.code != 41) continue;
        const std::optional<double> number = finiteOf(field.value);
        if (!number) return;
        (field.code == 40 ? spline.knots : spline.weights).push_back(*number);
    }
    spline.controls = pointsOf(entity, 10);
    if (!spline.controls.empty()) return drawSplineCurve(spline, pen);
    // Known by the points it goes through alone: straight between them.
    const std::vector<Vec> through = pointsOf(entity, 11);
    for (std::size_t i = 1; i < through.size(); ++i)
        pen.segment(through[i - 1], through[i]);
}

}  // namespace qrs::host::pick
