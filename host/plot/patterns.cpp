// Counts the lines of a pattern across an area, and cuts each where it meets the area's edges.
#include "host/plot/patterns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qrs::host::plot {

namespace {

using pick::PatternLines;
using pick::Transform;

constexpr double kFinest = 0.6;        // dots between two lines, or of the dashes of one together
constexpr std::size_t kMost = 400000;  // pieces of a hatch; one of more is drawn as an area

// Where line number `line` meets an edge, dots along it.
struct Crossing {
    long line;
    double at;
    bool operator<(const Crossing& other) const { return line != other.line ? line < other.line : at < other.at; }
};

// A family of parallel lines on the page.
struct Family {
    Vec base;
    Vec along;     // of length 1
    Vec across;    // of length 1
    double step;   // from line to line, across
    double shift;  // and along
    std::vector<double> dashes;
    double length = 0.0;  // of them

    double lineOf(const Vec& p) const { return ((p.x - base.x) * across.x + (p.y - base.y) * across.y) / step; }
    double placeOf(const Vec& p) const { return (p.x - base.x) * along.x + (p.y - base.y) * along.y; }
    Vec at(long line, double place) const { return base + across * (step * static_cast<double>(line)) + along * place; }
};

bool makeFamily(const PatternLines& lines, const Transform& toPage, Family& family) {
    const Vec along = toPage.vector({std::cos(lines.angle), std::sin(lines.angle), 0});
    const double scale = std::hypot(along.x, along.y);
    if (!(scale > 0.0) || !std::isfinite(scale)) return false;
    family.base = toPage.point(lines.base);
    family.along = {along.x / scale, along.y / scale, 0};
    family.across = {-family.along.y, family.along.x, 0};
    const Vec offset = toPage.vector(lines.offset);
    family.step = offset.x * family.across.x + offset.y * family.across.y;
    family.shift = offset.x * family.along.x + offset.y * family.along.y;
    for (const double dash : lines.dashes) {
        family.dashes.push_back(dash * scale);
        family.length += std::fabs(dash) * scale;
    }
    return std::fabs(family.step) > 0.0 && std::isfinite(family.step) && isFinite(family.base);
}

bool isTooFine(const Family& family) {
    return std::fabs(family.step) < kFinest;
}

// Where the lines of a family meet the edges of an area, in what can be seen of it. False when there are too many.
bool findCrossings(const Family& family, const std::vector<std::vector<Vec>>& loops, const Box& seen,
                   std::vector<Crossing>& crossings) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const Vec& corner : {seen.low, seen.high, Vec{seen.low.x, seen.high.y, 0}, Vec{seen.high.x, seen.low.y, 0}}) {
        low = std::min(low, family.lineOf(corner));
        high = std::max(high, family.lineOf(corner));
    }
    if (!(high - low < static_cast<double>(kMost)) || std::fabs(low) > 1e15 || std::fabs(high) > 1e15) return false;
    for (const std::vector<Vec>& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Vec& from = loop[i];
            const Vec& to = loop[(i + 1) % loop.size()];
            const double a = family.lineOf(from);
            const double b = family.lineOf(to);
            if (!std::isfinite(a) || !std::isfinite(b) || a == b) continue;
            const double first = std::ceil(std::max(std::min(a, b), low));
            const double last = std::min(std::max(a, b), high);
            // An end of an edge belongs to one of the two edges that meet there.
            for (double line = first; line <= last; ++line) {
                if (line == std::max(a, b)) break;
                const double share = (line - a) / (b - a);
                crossings.push_back({static_cast<long>(line), family.placeOf(from + (to - from) * share)});
                if (crossings.size() > kMost) return false;
            }
        }
    std::sort(crossings.begin(), crossings.end());
    return true;
}

// The dashes of a line between two places on it. False when there are too many.
bool drawDashes(Canvas& canvas, const Family& family, long line, double from, double to, const Stroke& stroke,
                std::size_t& pieces) {
    const auto draw = [&](double a, double b) { canvas.line(family.at(line, a), family.at(line, b), stroke); };
    double low = 0.0;
    double high = 1.0;
    const Vec start = family.at(line, from);
    const Vec d = family.along * (to - from);
    if (!clipLine(canvas.visible(), start, d, low, high)) return true;
    const double length = to - from;
    to = from + length * high;
    from += length * low;
    if (family.dashes.empty() || family.length < kFinest) {
        draw(from, to);
        return ++pieces <= kMost && !canvas.isSpent();
    }
    const double origin = family.shift * static_cast<double>(line);
    const double first = std::floor((from - origin) / family.length);
    for (double begin = origin + first * family.length; begin < to; begin += family.length) {
        double at = begin;
        for (const double dash : family.dashes) {
            const double next = at + std::fabs(dash);
            if (dash >= 0.0 && next >= from && at <= to) {
                draw(std::max(at, from), std::min(next, to));
                if (++pieces > kMost || canvas.isSpent()) return false;
            }
            at = next;
        }
        if (begin + family.length <= begin) break;
    }
    return true;
}

}  // namespace

bool fillWithPattern(Canvas& canvas, const pick::Filling& filling, const Transform& toPage, const Stroke& stroke) {
    std::vector<std::vector<Vec>> loops;
    Box box;
    for (const std::vector<Vec>& loop : filling.loops) {
        std::vector<Vec>& placed = loops.emplace_back();
        for (const Vec& corner : loop) {
            placed.push_back(toPage.point(corner));
            if (isFinite(placed.back())) box.add(placed.back());
        }
    }
    if (box.isEmpty() || !canvas.isVisible(box)) return true;
    Box seen;
    seen.add({std::max(box.low.x, canvas.visible().low.x), std::max(box.low.y, canvas.visible().low.y), 0});
    seen.add({std::min(box.high.x, canvas.visible().high.x), std::min(box.high.y, canvas.visible().high.y), 0});
    std::size_t pieces = 0;
    for (const PatternLines& lines : filling.lines) {
        Family family;
        if (canvas.isSpent()) return true;
        if (!makeFamily(lines, toPage, family)) continue;
        std::vector<Crossing> crossings;
        bool fits = !isTooFine(family) && findCrossings(family, loops, seen, crossings);
        canvas.spend(static_cast<double>(crossings.size()) / 4);
        for (std::size_t i = 0; fits && i + 1 < crossings.size();) {
            if (crossings[i].line != crossings[i + 1].line) {
                ++i;
                continue;
            }
            fits = drawDashes(canvas, family, crossings[i].line, crossings[i].at, crossings[i + 1].at, stroke, pieces);
            i += 2;
        }
        if (fits) continue;
        canvas.fill(loops, stroke.color);
        return false;
    }
    return true;
}

}  // namespace qrs::host::plot
