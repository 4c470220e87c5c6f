// The part of the drawing's plane that a pick, a window or a fence covers. Heights do not count: views are plan views.
#pragma once

#include <vector>

#include "host/pick/geometry.h"

namespace qrs::host::pick {

class Region {
  public:
    // The rectangle with two opposite corners.
    static Region window(const Vec& corner, const Vec& opposite);
    // The square around a point.
    static Region around(const Vec& point, double halfSize);
    // A closed polygon, which may cross itself: inside is what an odd number of its edges surround.
    static Region polygon(std::vector<Vec> corners);
    // An open line.
    static Region fence(std::vector<Vec> points);

    const std::vector<Vec>& corners() const { return corners_; }
    const Box& bounds() const { return bounds_; }
    bool isWindow() const { return kind_ == Kind::Window; }
    // Far smaller than anything that could be told apart in it.
    double tolerance() const;

    // Whether a box (seen from above) may meet it; whether it lies inside for sure.
    bool mayMeet(const Box& box) const;
    bool holdsBox(const Box& box) const;
    // Whether a point p + t * d with t from t0 to t1 (which may be infinite) lies in it.
    bool meets(const Vec& p, const Vec& d, double t0, double t1) const;
    // Whether the line between two points lies in it whole.
    bool holds(const Vec& a, const Vec& b) const;

  private:
    enum class Kind { Window, Polygon, Fence };
    Region(Kind kind, std::vector<Vec> corners);
    bool contains(const Vec& p) const;
    bool crossesEdge(const Vec& p, const Vec& d, double t0, double t1) const;

    Kind kind_;
    std::vector<Vec> corners_;
    Box bounds_;
};

// Whether a point lies inside closed loops, by counting crossings.
bool isInside(const std::vector<std::vector<Vec>>& loops, const Vec& p);

}  // namespace qrs::host::pick
