// Arcs given by bulges, polygons and areas.
#include "host/pick/pen.h"

#include <algorithm>
#include <utility>

namespace qrs::host::pick {

BulgeCircle circleOf(const Vec& a, const Vec& b, double bulge) {
    const Vec chord = b - a;
    const double side = (1.0 / bulge - bulge) / 4.0;
    const Vec center = (a + b) * 0.5 + Vec{-chord.y, chord.x, 0.0} * side;
    const Vec radius = a - center;
    return {center, std::hypot(radius.x, radius.y), std::atan2(radius.y, radius.x), 4.0 * std::atan(bulge)};
}

int piecesOfTurn(double turn, double radius, const Pen& pen) {
    constexpr double kLeast = 32;  // of a whole turn
    constexpr double kMost = 1024;
    const double closeness = pen.picture() ? pen.probe().closeness() : 0.0;
    const double shown = radius * scaleOf(pen.toWorld());
    double wanted = kLeast;
    if (closeness > 0.0 && shown > closeness && std::isfinite(shown))
        wanted = std::clamp(2 * kPi / (2 * std::acos(1.0 - closeness / shown)), kLeast, kMost);
    return std::max(1, static_cast<int>(std::ceil(std::min(std::fabs(turn) / (2 * kPi), 1.0) * wanted)));
}

void Pen::bulge(const Vec& a, const Vec& b, double bulge) const {
    constexpr double kStraight = 1e-9;
    if (!(std::fabs(bulge) > kStraight) || (a.x == b.x && a.y == b.y)) return segment(a, b);
    const BulgeCircle circle = circleOf(a, b, bulge);
    const double end = circle.start + circle.turn;
    arc(circle.center, Vec{circle.radius, 0, 0}, Vec{0, circle.radius, 0}, std::min(circle.start, end),
        std::max(circle.start, end));
}

void Pen::filled(const std::vector<Vec>& corners) const {
    for (std::size_t i = 0; i < corners.size() && !picture(); ++i)
        segment(corners[i], corners[(i + 1) % corners.size()]);
    area({corners});
}

void Pen::area(std::vector<std::vector<Vec>> loops) const {
    for (std::vector<Vec>& loop : loops)
        for (Vec& corner : loop)
            corner = toWorld_.point(corner);
    probe_.area(loops);
}

}  // namespace qrs::host::pick
