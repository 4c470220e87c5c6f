// Lines and areas on a page, in dots from its upper left corner: nothing that lies outside is drawn, so that
// coordinates of any size and lines without end do no harm.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "host/pick/geometry.h"

namespace qrs::host::plot {

using pick::Box;
using pick::Vec;

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    bool operator==(const Color& other) const {
        return red == other.red && green == other.green && blue == other.blue && alpha == other.alpha;
    }
};

struct Stroke {
    Color color;
    double width = 1.0;   // dots
    bool isBand = false;  // with corners and flat ends, as wide polylines have

    bool operator==(const Stroke& other) const {
        return color == other.color && width == other.width && isBand == other.isBand;
    }
};

// The part of p + t * d, t from t0 to t1, that lies in a box of the plane; t0 and t1 may be infinite. False when none
// does.
bool clipLine(const Box& box, const Vec& p, const Vec& d, double& t0, double& t1);

class ThinLines;

class Canvas {
  public:
    Canvas(cairo_t* context, double width, double height);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // What can be seen, with a margin for the width of lines.
    const Box& visible() const { return visible_; }
    bool isVisible(const Box& box) const {
        return box.low.x <= visible_.high.x && box.high.x >= visible_.low.x && box.low.y <= visible_.high.y &&
               box.high.y >= visible_.low.y;
    }

    void line(const Vec& from, const Vec& to, const Stroke& stroke);
    void path(const std::vector<Vec>& points, bool isClosed, const Stroke& stroke);
    // center + u * cos t + v * sin t, t from t0 up to t1.
    void arc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, const Stroke& stroke);
    // What lies in an odd number of the loops.
    void fill(const std::vector<std::vector<Vec>>& loops, const Color& color);
    // Nothing outside of the loops is drawn until the clip is left.
    void pushClip(const std::vector<std::vector<Vec>>& loops);
    void popClip();

    // Files made to hurt ask for more than can ever be drawn. How much may be, in pieces of lines of about a
    // microsecond, grows with the files whose entities are drawn, each counted once; what comes after it was spent is
    // left out.
    void allow(const void* file, std::uint64_t size) {
        if (file != lastFile_ && files_.insert(lastFile_ = file).second) left_ += static_cast<double>(size);
    }
    void spend(double pieces) { left_ -= pieces; }
    bool isSpent() const { return left_ <= 0.0; }

    // For what is drawn otherwise: all lines so far are there.
    cairo_t* context();
    void setColor(const Color& color);
    void flush();

  private:
    void begin(const Stroke& stroke);
    bool isThin(const Stroke& stroke) const;
    void thinArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, const Stroke& stroke);
    void moveTo(const Vec& at);
    void lineTo(const Vec& at);
    void curvedPiece(const Vec& center, const Vec& u, const Vec& v, double t0, double t1, int depth);
    double shareOfPage(const Box& box) const;
    void tracePolygon(const std::vector<Vec>& loop);

    cairo_t* context_;
    Box visible_;
    struct Outer;
    std::vector<Outer> outer_;  // what was before each clip
    std::unique_ptr<ThinLines> thin_;
    Box clip_;                // dots
    bool isSlanted_ = false;  // the clip is no upright rectangle
    bool isTouched_ = true;   // the library may hold drawing back
    Stroke stroke_;
    Vec at_;          // end of the path so far
    int pieces_ = 0;  // in it
    double diagonal_;
    double left_ = 600000.0;  // to be spent
    std::set<const void*> files_;
    const void* lastFile_ = nullptr;
};

}  // namespace qrs::host::plot
