// What the shapes of entities are tested against: each kind of probe takes lines, arcs and areas in world coordinates.
#pragma once

#include <vector>

#include "host/pick/region.h"

namespace qrs::host::pick {

class Picture;

class Probe {
  public:
    Probe() = default;
    virtual ~Probe() = default;
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    // Shapes with coordinates that are no finite numbers are passed over.
    // p + t * d with t from t0 to t1, which may be infinite.
    void line(const Vec& p, const Vec& d, double t0, double t1);
    void segment(const Vec& a, const Vec& b) { line(a, b - a, 0.0, 1.0); }
    // center + u * cos t + v * sin t with t from t0 up to t1.
    void arc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1);
    // The inside of closed loops; their lines are not part of it.
    virtual void area(const std::vector<std::vector<Vec>>& loops) = 0;

    // False when shapes in the box need not be told in detail, because it is clear what they do.
    virtual bool wants(const Box& box) = 0;
    // True when the result stands whatever else comes.
    virtual bool isDone() const = 0;
    // How close straight pieces should keep to a curve, drawing units; 0: as is usual.
    virtual double closeness() const { return 0.0; }
    // Itself as a picture; null for what only tests shapes.
    virtual Picture* picture() { return nullptr; }

  protected:
    virtual void takeLine(const Vec& p, const Vec& d, double t0, double t1) = 0;
    virtual void takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) = 0;
};

// Whether a region meets shapes, or holds them all.
class HitProbe : public Probe {
  public:
    enum class Mode { Touch, Hold };
    HitProbe(const Region& region, Mode mode) : region_(region), mode_(mode), tolerance_(region.tolerance()) {}

    bool isHit() const { return mode_ == Mode::Touch ? touched_ : touched_ && !leftOut_; }
    void reset() { touched_ = leftOut_ = false; }

    void area(const std::vector<std::vector<Vec>>& loops) override;
    bool wants(const Box& box) override;
    bool isDone() const override { return mode_ == Mode::Touch ? touched_ : leftOut_; }
    double closeness() const override { return tolerance_ * 1e3; }

  protected:
    void takeLine(const Vec& p, const Vec& d, double t0, double t1) override;
    void takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) override;

  private:
    struct Curve {
        Vec center;
        Vec u;
        Vec v;
        double radius;
        Vec at(double t) const { return center + u * std::cos(t) + v * std::sin(t); }
    };
    void piece(const Curve& curve, double t0, double t1, int depth);

    const Region& region_;
    Mode mode_;
    double tolerance_;
    bool touched_ = false;
    bool leftOut_ = false;
};

// The box around shapes.
class BoxProbe : public Probe {
  public:
    const Box& box() const { return box_; }
    // A box in place of the shapes in it.
    void add(const Box& box);

    void area(const std::vector<std::vector<Vec>>& loops) override;
    bool wants(const Box&) override { return true; }
    bool isDone() const override { return false; }

  protected:
    void takeLine(const Vec& p, const Vec& d, double t0, double t1) override;
    void takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) override;

  private:
    Box box_;
};

}  // namespace qrs::host::pick
