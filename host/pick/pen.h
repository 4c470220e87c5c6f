// Draws the shapes of entities for a probe, through the coordinates they are given in.
#pragma once

#include <vector>

#include "host/pick/probe.h"

namespace qrs::host::pick {

class Pen {
  public:
    Pen(Probe& probe, const Transform& toWorld) : probe_(probe), toWorld_(toWorld) {}

    // A pen for coordinates inside these.
    Pen in(const Transform& inner) const { return Pen(probe_, toWorld_.after(inner)); }
    Probe& probe() const { return probe_; }
    Picture* picture() const { return probe_.picture(); }
    const Transform& toWorld() const { return toWorld_; }

    bool wants(const Box& box) const { return probe_.wants(box.transformed(toWorld_)); }
    bool isDone() const { return probe_.isDone(); }

    void point(const Vec& at) const { segment(at, at); }
    void segment(const Vec& a, const Vec& b) const { probe_.segment(toWorld_.point(a), toWorld_.point(b)); }
    void line(const Vec& p, const Vec& d, double t0, double t1) const {
        probe_.line(toWorld_.point(p), toWorld_.vector(d), t0, t1);
    }
    // center + u * cos t + v * sin t, t from t0 up to t1.
    void arc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) const {
        probe_.arc(toWorld_.point(center), toWorld_.vector(u), toWorld_.vector(v), t0, t1);
    }
    // In a plane of constant z; a bulge is the tangent of a quarter of the angle, positive counterclockwise.
    void bulge(const Vec& a, const Vec& b, double bulge) const;
    // The lines of a polygon, and what they surround; the latter alone in a picture.
    void filled(const std::vector<Vec>& corners) const;
    void area(std::vector<std::vector<Vec>> loops) const;

  private:
    Probe& probe_;
    Transform toWorld_;
};

// Pieces of a turn around a circle that keep as close to it as a picture asks for.
int piecesOfTurn(double turn, double radius, const Pen& pen);

// The circle that an arc with a bulge lies on.
struct BulgeCircle {
    Vec center;
    double radius;
    double start;  // angle of its first point
    double turn;   // to its second point, negative clockwise
};
BulgeCircle circleOf(const Vec& a, const Vec& b, double bulge);

}  // namespace qrs::host::pick
