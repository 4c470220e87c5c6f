// Tests of lines and boxes against the region of a selection.
#include "host/pick/region.h"

#include <algorithm>
#include <utility>

namespace qrs::host::pick {

namespace {

// Narrows t0..t1 to where low <= p + t * d <= high. False when nothing is left.
bool clip(double p, double d, double low, double high, double& t0, double& t1) {
    if (d == 0.0) return p >= low && p <= high;
    double enter = (low - p) / d;
    double leave = (high - p) / d;
    if (enter > leave) std::swap(enter, leave);
    t0 = std::max(t0, enter);
    t1 = std::min(t1, leave);
    return t0 <= t1;
}

int crossings(const std::vector<Vec>& loop, const Vec& p) {
    int count = 0;
    for (std::size_t i = 0, before = loop.size() - 1; i < loop.size(); before = i++) {
        const Vec& a = loop[before];
        const Vec& b = loop[i];
        if ((a.y > p.y) == (b.y > p.y)) continue;
        if (p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) ++count;
    }
    return count;
}

}  // namespace

bool isInside(const std::vector<std::vector<Vec>>& loops, const Vec& p) {
    int count = 0;
    for (const std::vector<Vec>& loop : loops)
        if (!loop.empty()) count += crossings(loop, p);
    return count % 2 != 0;
}

Region::Region(Kind kind, std::vector<Vec> corners) : kind_(kind), corners_(std::move(corners)) {
    for (const Vec& corner : corners_)
        bounds_.add(corner);
}

Region Region::window(const Vec& corner, const Vec& opposite) {
    return Region(Kind::Window,
                  {corner, Vec{opposite.x, corner.y, 0}, Vec{opposite.x, opposite.y, 0}, Vec{corner.x, opposite.y, 0}});
}

Region Region::around(const Vec& point, double halfSize) {
    const Vec half{halfSize, halfSize, 0};
    return window(point - half, point + half);
}

Region Region::polygon(std::vector<Vec> corners) {
    return Region(Kind::Polygon, std::move(corners));
}

Region Region::fence(std::vector<Vec> points) {
    return Region(Kind::Fence, std::move(points));
}

double Region::tolerance() const {
    const double size = std::max(bounds_.high.x - bounds_.low.x, bounds_.high.y - bounds_.low.y);
    const double farthest = std::max(
        {std::fabs(bounds_.low.x), std::fabs(bounds_.low.y), std::fabs(bounds_.high.x), std::fabs(bounds_.high.y)});
    return std::max(size * 1e-4, farthest * 1e-12);
}

bool Region::mayMeet(const Box& box) const {
    return box.low.x <= bounds_.high.x && box.high.x >= bounds_.low.x && box.low.y <= bounds_.high.y &&
           box.high.y >= bounds_.low.y;
}

bool Region::holdsBox(const Box& box) const {
    return kind_ == Kind::Window && box.low.x >= bounds_.low.x && box.high.x <= bounds_.high.x &&
           box.low.y >= bounds_.low.y && box.high.y <= bounds_.high.y;
}

bool Region::contains(const Vec& p) const {
    if (kind_ == Kind::Fence) return false;
    if (kind_ == Kind::Polygon) return crossings(corners_, p) % 2 != 0;
    return p.x >= bounds_.low.x && p.x <= bounds_.high.x && p.y >= bounds_.low.y && p.y <= bounds_.high.y;
}

bool Region::crossesEdge(const Vec& p, const Vec& d, double t0, double t1) const {
    const std::size_t count = kind_ == Kind::Fence ? corners_.size() - 1 : corners_.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Vec& a = corners_[i];
        const Vec e = corners_[(i + 1) % corners_.size()] - a;
        const double parallel = d.x * e.y - d.y * e.x;
        if (parallel == 0.0) continue;  // then a neighbouring edge is crossed, or the ends tell
        const double t = ((a.x - p.x) * e.y - (a.y - p.y) * e.x) / parallel;
        const double s = ((a.x - p.x) * d.y - (a.y - p.y) * d.x) / parallel;
        if (t >= t0 && t <= t1 && s >= 0.0 && s <= 1.0) return true;
    }
    return false;
}

bool Region::meets(const Vec& p, const Vec& d, double t0, double t1) const {
    if (corners_.empty()) return false;
    double from = t0;
    double to = t1;
    if (!clip(p.x, d.x, bounds_.low.x, bounds_.high.x, from, to) ||
        !clip(p.y, d.y, bounds_.low.y, bounds_.high.y, from, to))
        return false;
    if (kind_ == Kind::Window) return true;
    return contains(p + d * (std::isfinite(t0) ? t0 : from)) || crossesEdge(p, d, t0, t1);
}

bool Region::holds(const Vec& a, const Vec& b) const {
    if (!contains(a) || !contains(b)) return false;
    return kind_ == Kind::Window || !crossesEdge(a, b - a, 0.0, 1.0);
}

}  // namespace qrs::host::pick
