// Splines: one piece between two knots at a time, by de Boor's scheme.
#include <algorithm>

#include "host/pick/kinds.h"

namespace qrs::host::pick {

namespace {

constexpr int kHighestDegree = 15;

bool isSound(const SplineData& spline) {
    const std::size_t controls = spline.controls.size();
    if (spline.degree < 1 || spline.degree > kHighestDegree) return false;
    const auto degree = static_cast<std::size_t>(spline.degree);
    if (controls <= degree || spline.knots.size() != controls + degree + 1) return false;
    if (!std::is_sorted(spline.knots.begin(), spline.knots.end())) return false;
    if (spline.weights.empty()) return true;
    return spline.weights.size() == controls &&
           std::all_of(spline.weights.begin(), spline.weights.end(), [](double weight) { return weight > 0.0; });
}

// A point at t between the knots span and span + 1.
Vec at(const SplineData& spline, std::size_t span, double t) {
    struct Weighted {
        Vec p;
        double weight;
    };
    Weighted row[kHighestDegree + 1];
    const auto degree = static_cast<std::size_t>(spline.degree);
    for (std::size_t i = 0; i <= degree; ++i) {
        const std::size_t control = span - degree + i;
        const double weight = spline.weights.empty() ? 1.0 : spline.weights[control];
        row[i] = {spline.controls[control] * weight, weight};
    }
    for (std::size_t level = 1; level <= degree; ++level)
        for (std::size_t i = degree; i >= level; --i) {
            const double low = spline.knots[span - degree + i];
            const double high = spline.knots[span + 1 + i - level];
            const double share = high > low ? (t - low) / (high - low) : 0.0;
            row[i] = {row[i - 1].p * (1.0 - share) + row[i].p * share,
                      row[i - 1].weight * (1.0 - share) + row[i].weight * share};
        }
    return row[degree].p * (1.0 / row[degree].weight);
}

// Calls use(span, control points' box) for each piece that has a length.
template <typename Use>
void forEachPiece(const SplineData& spline, Use&& use) {
    if (!isSound(spline)) return;
    const auto degree = static_cast<std::size_t>(spline.degree);
    for (std::size_t span = degree; span < spline.controls.size(); ++span) {
        if (!(spline.knots[span] < spline.knots[span + 1])) continue;
        Box box;
        for (std::size_t i = span - degree; i <= span; ++i)
            box.add(spline.controls[i]);
        use(span, box);
    }
}

// Straight pieces of one span that lies in a box: a chord is off by the second derivative, and that by the distances of
// the control points.
int piecesOf(int degree, const Box& box, double closeness) {
    constexpr double kMost = 4096;
    if (degree == 1) return 1;
    const double usual = 16.0 * std::min(degree, 8);
    if (!(closeness > 0.0)) return static_cast<int>(usual);
    const double needed = std::sqrt(degree * (degree - 1) * lengthOf(box.high - box.low) / (2 * closeness));
    return static_cast<int>(std::clamp(std::isfinite(needed) ? needed : kMost, usual, kMost));
}

}  // namespace

void drawSplineCurve(const SplineData& spline, const Pen& pen) {
    forEachPiece(spline, [&](std::size_t span, const Box& box) {
        if (!pen.wants(box)) return;
        const int pieces = piecesOf(spline.degree, box.transformed(pen.toWorld()), pen.probe().closeness());
        const double from = spline.knots[span];
        const double length = spline.knots[span + 1] - from;
        Vec last = at(spline, span, from);
        for (int i = 1; i <= pieces && !pen.isDone(); ++i) {
            const Vec next = at(spline, span, from + length * i / pieces);
            pen.segment(last, next);
            last = next;
        }
    });
}

void appendSplinePoints(const SplineData& spline, std::vector<Vec>& points) {
    forEachPiece(spline, [&](std::size_t span, const Box& box) {
        const int pieces = piecesOf(spline.degree, box, 0.0);
        const double from = spline.knots[span];
        const double length = spline.knots[span + 1] - from;
        for (int i = 0; i <= pieces; ++i)
            points.push_back(at(spline, span, from + length * i / pieces));
    });
}

}  // namespace qrs::host::pick
