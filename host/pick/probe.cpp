// Testing shapes against a region, and finding the box around them.
#include "host/pick/probe.h"

#include <algorithm>

namespace qrs::host::pick {

void Probe::line(const Vec& p, const Vec& d, double t0, double t1) {
    if (isFinite(p) && isFinite(d)) takeLine(p, d, t0, t1);
}

void Probe::arc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) {
    if (isFinite(center) && isFinite(u) && isFinite(v) && std::isfinite(t0) && std::isfinite(t1) && t1 >= t0)
        takeArc(center, u, v, t0, std::min(t1, t0 + 2 * kPi));
}

void HitProbe::takeLine(const Vec& p, const Vec& d, double t0, double t1) {
    if (mode_ == Mode::Touch) {
        touched_ = touched_ || region_.meets(p, d, t0, t1);
        return;
    }
    touched_ = true;
    if (!std::isfinite(t0) || !std::isfinite(t1) || !region_.holds(p + d * t0, p + d * t1)) leftOut_ = true;
}

void HitProbe::area(const std::vector<std::vector<Vec>>& loops) {
    // Areas that reach the region from outside have lines that do; what is left is an area that covers it.
    if (mode_ == Mode::Hold || touched_) return;
    for (const Vec& corner : region_.corners()) {
        touched_ = touched_ || isInside(loops, corner);
        if (region_.isWindow()) return;
    }
}

bool HitProbe::wants(const Box& box) {
    if (isDone() || box.isEmpty()) return false;
    if (!region_.mayMeet(box)) {
        if (mode_ == Mode::Hold) leftOut_ = true;
        return false;
    }
    if (!region_.holdsBox(box)) return true;
    touched_ = true;
    return false;
}

void HitProbe::takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) {
    const double radius = std::sqrt(u.x * u.x + u.y * u.y + v.x * v.x + v.y * v.y);
    if (std::isfinite(radius)) piece(Curve{center, u, v, radius}, t0, t1, 0);
}

// Halves the curve until the region decides over each piece, or a piece is as good as straight.
void HitProbe::piece(const Curve& curve, double t0, double t1, int depth) {
    constexpr int kDeepest = 40;
    if (isDone()) return;
    const double turn = t1 - t0;
    if (turn <= kPi / 2) {
        const double sagitta = curve.radius * (1.0 - std::cos(turn / 2));
        const Vec from = curve.at(t0);
        const Vec to = curve.at(t1);
        if (!(sagitta > tolerance_) || depth >= kDeepest) return takeLine(from, to - from, 0.0, 1.0);
        Box box;
        box.add(from);
        box.add(to);
        box.grow(sagitta);
        // A box that the sagitta makes too wide says nothing of what the region leaves out.
        if (mode_ == Mode::Touch ? !wants(box) : region_.holdsBox(box)) {
            touched_ = touched_ || mode_ == Mode::Hold;
            return;
        }
        if (mode_ == Mode::Hold && !region_.holds(from, from)) {
            leftOut_ = true;
            return;
        }
    }
    const double middle = t0 + turn / 2;
    piece(curve, t0, middle, depth + 1);
    piece(curve, middle, t1, depth + 1);
}

void BoxProbe::add(const Box& box) {
    if (box.isEmpty()) return;
    box_.add(box.low);
    box_.add(box.high);
}

void BoxProbe::takeLine(const Vec& p, const Vec& d, double t0, double t1) {
    if (!std::isfinite(t0) || !std::isfinite(t1)) return box_.addAll();
    box_.add(p + d * t0);
    box_.add(p + d * t1);
}

void BoxProbe::takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) {
    const auto at = [&](double t) { return center + u * std::cos(t) + v * std::sin(t); };
    box_.add(at(t0));
    box_.add(at(t1));
    const double turning[] = {std::atan2(v.x, u.x), std::atan2(v.y, u.y), std::atan2(v.z, u.z)};
    for (const double first : turning)
        for (const double t : {first, first + kPi}) {
            const double turns = std::ceil((t0 - t) / (2 * kPi));
            const double inside = t + turns * 2 * kPi;
            if (inside <= t1) box_.add(at(inside));
        }
}

void BoxProbe::area(const std::vector<std::vector<Vec>>& loops) {
    for (const std::vector<Vec>& loop : loops)
        for (const Vec& corner : loop)
            if (isFinite(corner)) box_.add(corner);
}

}  // namespace qrs::host::pick
