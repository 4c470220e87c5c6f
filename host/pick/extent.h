// Boxes seen from above: exact ones that grow by numbers, and small ones that are sure to hold them.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/pick/geometry.h"

namespace qrs::host::pick {

// Seen from above; empty until something is added.
struct FlatBox {
    float lowX = std::numeric_limits<float>::infinity();
    float lowY = std::numeric_limits<float>::infinity();
    float highX = -std::numeric_limits<float>::infinity();
    float highY = -std::numeric_limits<float>::infinity();
};

constexpr FlatBox kEverywhere{-std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};

struct Extent {
    double lowX = std::numeric_limits<double>::infinity();
    double lowY = std::numeric_limits<double>::infinity();
    double highX = -std::numeric_limits<double>::infinity();
    double highY = -std::numeric_limits<double>::infinity();

    bool isEmpty() const { return !(lowX <= highX); }
    void addX(double x) {
        lowX = std::min(lowX, x);
        highX = std::max(highX, x);
    }
    void addY(double y) {
        lowY = std::min(lowY, y);
        highY = std::max(highY, y);
    }
    void add(const Extent& other, double grownBy) {
        if (other.isEmpty()) return;
        addX(other.lowX - grownBy), addX(other.highX + grownBy);
        addY(other.lowY - grownBy), addY(other.highY + grownBy);
    }
};

// Turns points around the origin by degrees, and then moves them.
class Turned {
  public:
    Turned(double degrees, double byX, double byY) : byX_(byX), byY_(byY) {
        if (degrees == 0.0) return;
        cos_ = std::cos(degrees * kRadiansPerDegree);
        sin_ = std::sin(degrees * kRadiansPerDegree);
    }
    void addTo(Extent& extent, double x, double y) const {
        // Large numbers that nearly cancel leave an error of their own size.
        const double margin = 1e-12 * (std::fabs(x) + std::fabs(y) + std::fabs(byX_) + std::fabs(byY_));
        const double turnedX = x * cos_ - y * sin_ + byX_;
        const double turnedY = x * sin_ + y * cos_ + byY_;
        extent.add({turnedX, turnedY, turnedX, turnedY}, margin);
    }

  private:
    double byX_;
    double byY_;
    double cos_ = 1.0;
    double sin_ = 0.0;
};

// Wider than the numbers by more than rounding can make of them.
inline FlatBox flat(const Extent& extent) {
    if (extent.isEmpty()) return {};
    const double greatest =
        std::max({std::fabs(extent.lowX), std::fabs(extent.lowY), std::fabs(extent.highX), std::fabs(extent.highY)});
    if (!(greatest < 1e30)) return kEverywhere;
    const double margin = greatest * 4e-7 + 1e-30;
    return {static_cast<float>(extent.lowX - margin), static_cast<float>(extent.lowY - margin),
            static_cast<float>(extent.highX + margin), static_cast<float>(extent.highY + margin)};
}

inline FlatBox flat(const Box& box) {
    if (box.isEmpty()) return {};
    if (!std::isfinite(box.low.x + box.low.y + box.high.x + box.high.y)) return kEverywhere;
    return flat(Extent{box.low.x, box.low.y, box.high.x, box.high.y});
}

}  // namespace qrs::host::pick
