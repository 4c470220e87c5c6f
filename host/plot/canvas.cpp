// Cuts lines at the edge of what can be seen and gathers them into paths.
#include "host/plot/canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/plot/drawcalls.h"
#include "host/plot/thinlines.h"

namespace qrs::host::plot {

namespace {

using pick::isFinite;
using pick::kPi;

constexpr double kMargin = 200.0;      // dots around what can be seen: no line is wider
constexpr double kSame = 1e-6;         // dots
constexpr double kClose = 0.05;        // dots a straight piece may keep from its curve
constexpr double kThin = 1.6;          // dots
constexpr int kMostPieces = 400;       // of a path: longer ones take the library long
constexpr double kFarthest = 1000000;  // dots that the library can count

// What is spent, in pieces of thin lines.
constexpr double kThinPiece = 0.5;
constexpr double kDiagonal = 30.0;     // of a line as long as the diagonal of the page
constexpr double kLibraryPiece = 2.5;  // of what the library draws
constexpr double kWholePage = 3000.0;  // of an area
constexpr double kCurveStep = 0.3;

bool clipAxis(double low, double high, double p, double d, double& t0, double& t1) {
    if (d == 0.0) return p >= low && p <= high;
    const double a = (low - p) / d;
    const double b = (high - p) / d;
    t0 = std::max(t0, std::min(a, b));
    t1 = std::min(t1, std::max(a, b));
    return t0 <= t1;
}

// Cuts a polygon at one side of a box: keep(p) > 0 inside.
template <typename Keep>
std::vector<Vec> cut(const std::vector<Vec>& loop, Keep&& keep) {
    std::vector<Vec> result;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Vec& from = loop[i];
        const Vec& to = loop[(i + 1) % loop.size()];
        const double a = keep(from);
        const double b = keep(to);
        if (a >= 0) result.push_back(from);
        if ((a >= 0) != (b >= 0)) result.push_back(from + (to - from) * (a / (a - b)));
    }
    return result;
}

std::vector<Vec> cutToBox(std::vector<Vec> loop, const Box& box) {
    loop = cut(loop, [&](const Vec& p) { return p.x - box.low.x; });
    loop = cut(loop, [&](const Vec& p) { return box.high.x - p.x; });
    loop = cut(loop, [&](const Vec& p) { return p.y - box.low.y; });
    return cut(loop, [&](const Vec& p) { return box.high.y - p.y; });
}

bool isUpright(const std::vector<Vec>& loop) {
    if (loop.size() != 4) return false;
    for (std::size_t i = 0; i < 4; ++i) {
        const Vec d = loop[(i + 1) % 4] - loop[i];
        if (std::fabs(d.x) > kSame && std::fabs(d.y) > kSame) return false;
    }
    return true;
}

Box flat(Box box) {
    box.low.z = box.high.z = 0.0;
    return box;
}

}  // namespace

bool clipLine(const Box& box, const Vec& p, const Vec& d, double& t0, double& t1) {
    return clipAxis(box.low.x, box.high.x, p.x, d.x, t0, t1) && clipAxis(box.low.y, box.high.y, p.y, d.y, t0, t1);
}

struct Canvas::Outer {
    Box visible;
    Box clip;
    bool isSlanted;
};

Canvas::Canvas(cairo_t* context, double width, double height)
    : context_(context),
      thin_(std::make_unique<ThinLines>(calls().cairo_get_target(context))),
      diagonal_(std::max(1.0, std::hypot(width, height))) {
    clip_.add({0, 0, 0});
    clip_.add({std::ceil(width), std::ceil(height), 0});
    visible_.add({-kMargin, -kMargin, 0});
    visible_.add({width + kMargin, height + kMargin, 0});
}

Canvas::~Canvas() {
    flush();
}

// Round ends and corners do not show in them.
bool Canvas::isThin(const Stroke& stroke) const {
    return thin_->canDraw() && !isSlanted_ && !stroke.isBand && stroke.width <= kThin && stroke.color.alpha == 255;
}

void Canvas::setColor(const Color& color) {
    calls().cairo_set_source_rgba(context_, color.red / 255.0, color.green / 255.0, color.blue / 255.0,
                                  color.alpha / 255.0);
}

void Canvas::flush() {
    if (pieces_ == 0) return;
    pieces_ = 0;
    const bool isRound = !stroke_.isBand && stroke_.width > kThin;
    calls().cairo_set_line_cap(context_, isRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    calls().cairo_set_line_join(context_, isRound          ? CAIRO_LINE_JOIN_ROUND
                                          : stroke_.isBand ? CAIRO_LINE_JOIN_MITER
                                                           : CAIRO_LINE_JOIN_BEVEL);
    calls().cairo_set_line_width(context_, stroke_.width);
    setColor(stroke_.color);
    calls().cairo_stroke(context_);
    isTouched_ = true;
}

cairo_t* Canvas::context() {
    flush();
    isTouched_ = true;
    return context_;
}

void Canvas::begin(const Stroke& stroke) {
    // What shines through must not count twice where pieces meet, nor once where entities cross.
    if (pieces_ > kMostPieces || !(stroke == stroke_) || stroke.color.alpha != 255) flush();
    stroke_ = stroke;
}

void Canvas::moveTo(const Vec& at) {
    if (pieces_ > 0 && std::fabs(at.x - at_.x) < kSame && std::fabs(at.y - at_.y) < kSame) return;
    calls().cairo_move_to(context_, at.x, at.y);
    at_ = at;
}

void Canvas::lineTo(const Vec& at) {
    calls().cairo_line_to(context_, at.x, at.y);
    spend(kLibraryPiece);
    at_ = at;
    ++pieces_;
}

void Canvas::line(const Vec& from, const Vec& to, const Stroke& stroke) {
    double t0 = 0.0;
    double t1 = 1.0;
    const Vec d = to - from;
    if (isSpent() || !clipLine(visible_, from, d, t0, t1)) return;
    if (isThin(stroke)) {
        spend(kThinPiece + kDiagonal * (t1 - t0) * std::hypot(d.x, d.y) / diagonal_);
        flush();
        if (std::exchange(isTouched_, false)) calls().cairo_surface_flush(calls().cairo_get_target(context_));
        return thin_->line(from + d * t0, from + d * t1, stroke.color, stroke.width);
    }
    begin(stroke);
    moveTo(t0 > 0.0 ? from + d * t0 : from);
    Vec end = t1 < 1.0 ? from + d * t1 : to;
    // A point shall be seen.
    if (std::fabs(end.x - at_.x) < kSame && std::fabs(end.y - at_.y) < kSame) end.x += 0.1;
    lineTo(end);
}

void Canvas::path(const std::vector<Vec>& points, bool isClosed, const Stroke& stroke) {
    Box box;
    bool isSound = points.size() > 1;
    for (const Vec& point : points) {
        box.add(point);
        isSound = isSound && std::fabs(point.x) < kFarthest && std::fabs(point.y) < kFarthest;
    }
    if (!isSound || isThin(stroke)) {
        for (std::size_t i = 1; i < points.size(); ++i)
            line(points[i - 1], points[i], stroke);
        if (isClosed && points.size() > 2) line(points.back(), points.front(), stroke);
        return;
    }
    if (isSpent() || !isVisible(box)) return;
    flush();
    begin(stroke);
    calls().cairo_move_to(context_, points[0].x, points[0].y);
    for (std::size_t i = 1; i < points.size(); ++i)
        lineTo(points[i]);
    if (isClosed) calls().cairo_close_path(context_);
    flush();
}

// Pieces that cannot be seen are not looked into.
void Canvas::curvedPiece(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, int depth) {
    constexpr int kDeepest = 44;
    if (isSpent()) return;
    spend(kCurveStep);
    const auto at = [&](double t) { return center + u * std::cos(t) + v * std::sin(t); };
    const double turn = t1 - t0;
    const Vec from = at(t0);
    const Vec to = at(t1);
    if (turn <= kPi / 2) {
        const double radius = std::hypot(std::hypot(u.x, u.y), std::hypot(v.x, v.y));
        const double sagitta = radius * (1.0 - std::cos(turn / 2));
        Box box;
        box.add(from);
        box.add(to);
        box.grow(sagitta);
        if (!isVisible(flat(box))) return;
        if (sagitta <= kClose || depth >= kDeepest) return line(from, to, stroke_);
    }
    const double middle = t0 + turn / 2;
    curvedPiece(center, u, v, t0, middle, depth + 1);
    curvedPiece(center, u, v, middle, t1, depth + 1);
}

void Canvas::arc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, const Stroke& stroke) {
    const Vec reach{std::fabs(u.x) + std::fabs(v.x), std::fabs(u.y) + std::fabs(v.y), 0};
    Box box;
    box.add(center - reach);
    box.add(center + reach);
    if (isSpent() || !isFinite(box.low) || !isFinite(box.high) || !isVisible(flat(box))) return;
    const bool isHuge = reach.x > kFarthest / 4 || reach.y > kFarthest / 4;
    if (isThin(stroke) && !isHuge) return thinArc(center, u, v, t0, t1, stroke);
    begin(stroke);
    if (isHuge || std::fabs(center.x) > kFarthest / 4 || std::fabs(center.y) > kFarthest / 4)
        return curvedPiece(center, u, v, t0, t1, 0);
    // Arcs run one way; where the path before ends at this one's end, it is gone along backwards.
    const auto at = [&](double t) { return center + u * std::cos(t) + v * std::sin(t); };
    const Vec end = at(t1);
    const bool isBackwards = pieces_ > 0 && std::hypot(end.x - at_.x, end.y - at_.y) < kSame;
    if (isBackwards) std::swap(t0, t1);
    moveTo(at(t0));
    const int count = std::max(1, static_cast<int>(std::ceil(std::fabs(t1 - t0) / (kPi / 2) - 1e-9)));
    const double step = (t1 - t0) / count;
    const double pull = 4.0 / 3.0 * std::tan(step / 4);
    const auto slope = [&](double t) { return v * std::cos(t) - u * std::sin(t); };
    for (int i = 0; i < count; ++i) {
        const double from = t0 + step * i;
        const Vec next = at(from + step);
        const Vec a = at(from) + slope(from) * pull;
        const Vec b = next - slope(from + step) * pull;
        calls().cairo_curve_to(context_, a.x, a.y, b.x, b.y, next.x, next.y);
        at_ = next;
        pieces_ += 4;
        spend(4 * kLibraryPiece);
    }
}

void Canvas::thinArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, const Stroke& stroke) {
    const double radius = std::max(std::hypot(u.x, u.y), std::hypot(v.x, v.y));
    const double turn = radius > 2 * kClose ? 2 * std::acos(1.0 - kClose / radius) : kPi / 2;
    const int pieces = std::max(2, static_cast<int>(std::ceil((t1 - t0) / turn)));
    const auto at = [&](double t) { return center + u * std::cos(t) + v * std::sin(t); };
    Vec last = at(t0);
    for (int i = 1; i <= pieces; ++i) {
        const Vec next = at(t0 + (t1 - t0) * i / pieces);
        line(last, next, stroke);
        last = next;
    }
}

// How much of what can be seen lies in a box.
double Canvas::shareOfPage(const Box& box) const {
    const auto share = [](double low, double high, double first, double last) {
        return (std::min(high, last) - std::max(low, first)) / (last - first);
    };
    return share(box.low.x, box.high.x, visible_.low.x, visible_.high.x) *
           share(box.low.y, box.high.y, visible_.low.y, visible_.high.y);
}

void Canvas::tracePolygon(const std::vector<Vec>& loop) {
    for (std::size_t i = 0; i < loop.size(); ++i)
        i == 0 ? calls().cairo_move_to(context_, loop[i].x, loop[i].y)
               : calls().cairo_line_to(context_, loop[i].x, loop[i].y);
    if (!loop.empty()) calls().cairo_close_path(context_);
}

void Canvas::fill(const std::vector<std::vector<Vec>>& loops, const Color& color) {
    flush();
    bool isEmpty = true;
    for (const std::vector<Vec>& loop : loops) {
        Box box;
        bool isSound = loop.size() > 2;
        for (const Vec& corner : loop) {
            isSound = isSound && isFinite(corner);
            box.add(corner);
        }
        if (!isSound || isSpent() || !isVisible(box)) continue;
        spend(static_cast<double>(loop.size()) + kWholePage * shareOfPage(box));
        isEmpty = false;
        const bool isFar = box.high.x - box.low.x > kFarthest || box.high.y - box.low.y > kFarthest;
        tracePolygon(isFar ? cutToBox(loop, visible_) : loop);
    }
    if (isEmpty) return;
    setColor(color);
    calls().cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
    calls().cairo_fill(context_);
    isTouched_ = true;
}

void Canvas::pushClip(const std::vector<std::vector<Vec>>& loops) {
    flush();
    calls().cairo_save(context_);
    Box all;
    calls().cairo_new_path(context_);
    for (const std::vector<Vec>& loop : loops) {
        const std::vector<Vec> seen = cutToBox(loop, visible_);
        for (const Vec& corner : seen)
            all.add(corner);
        tracePolygon(seen);
    }
    calls().cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
    calls().cairo_clip(context_);
    outer_.push_back({visible_, clip_, isSlanted_});
    isSlanted_ = isSlanted_ || loops.size() != 1 || !isUpright(loops.front());
    clip_.low = {std::max(clip_.low.x, all.low.x), std::max(clip_.low.y, all.low.y), 0};
    clip_.high = {std::min(clip_.high.x, all.high.x), std::min(clip_.high.y, all.high.y), 0};
    thin_->setClip(clip_);
    if (all.isEmpty()) all.add({-2 * kMargin, -2 * kMargin, 0});
    visible_ = all;
    visible_.grow(kMargin);
    visible_ = flat(visible_);
}

void Canvas::popClip() {
    flush();
    calls().cairo_restore(context_);
    visible_ = outer_.back().visible;
    clip_ = outer_.back().clip;
    isSlanted_ = outer_.back().isSlanted;
    thin_->setClip(clip_);
    outer_.pop_back();
}

}  // namespace qrs::host::plot
