// Points, affine transformations and boxes, as picking needs them.
#pragma once

#include <cmath>
#include <limits>

#include "host/platform/angle.h"

namespace qrs::host::pick {

using platform::kPi;
using platform::kRadiansPerDegree;

struct Vec {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vec operator+(const Vec& a, const Vec& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec operator-(const Vec& a, const Vec& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec operator*(const Vec& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
inline Vec cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double lengthOf(const Vec& a) {
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}
inline bool isFinite(const Vec& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}
// Of length 1; fallback for a vector without a direction.
inline Vec unit(const Vec& a, const Vec& fallback) {
    const double length = lengthOf(a);
    return length > 0.0 && std::isfinite(length) ? a * (1.0 / length) : fallback;
}

// The images of the axes, and where the origin goes.
struct Transform {
    Vec x{1, 0, 0};
    Vec y{0, 1, 0};
    Vec z{0, 0, 1};
    Vec offset;

    Vec vector(const Vec& v) const { return x * v.x + y * v.y + z * v.z; }
    Vec point(const Vec& v) const { return vector(v) + offset; }
    // First inner, then this.
    Transform after(const Transform& inner) const {
        return {vector(inner.x), vector(inner.y), vector(inner.z), point(inner.offset)};
    }
};

// How much larger lengths in the plane become, on the whole.
inline double scaleOf(const Transform& transform) {
    return std::sqrt(std::fabs(transform.x.x * transform.y.y - transform.x.y * transform.y.x));
}

// The plane of an entity by its extrusion direction: the axes follow from the direction alone, as drawings agree.
inline Transform planeOf(const Vec& direction) {
    constexpr double kNearlyVertical = 1.0 / 64.0;
    const Vec z = unit(direction, Vec{0, 0, 1});
    const bool vertical = std::fabs(z.x) < kNearlyVertical && std::fabs(z.y) < kNearlyVertical;
    const Vec x = unit(cross(vertical ? Vec{0, 1, 0} : Vec{0, 0, 1}, z), Vec{1, 0, 0});
    return {x, cross(z, x), z, Vec{}};
}

// Empty until something is added.
struct Box {
    static constexpr double kFar = std::numeric_limits<double>::infinity();
    Vec low{kFar, kFar, kFar};
    Vec high{-kFar, -kFar, -kFar};

    bool isEmpty() const { return !(low.x <= high.x); }
    bool isBounded() const { return !isEmpty() && isFinite(low) && isFinite(high); }
    void add(const Vec& p) {
        low = {std::fmin(low.x, p.x), std::fmin(low.y, p.y), std::fmin(low.z, p.z)};
        high = {std::fmax(high.x, p.x), std::fmax(high.y, p.y), std::fmax(high.z, p.z)};
    }
    void grow(double by) {
        low = low - Vec{by, by, by};
        high = high + Vec{by, by, by};
    }
    void addAll() {
        low = {-kFar, -kFar, -kFar};
        high = {kFar, kFar, kFar};
    }
    // The box around this one's image.
    Box transformed(const Transform& transform) const {
        Box result;
        if (isEmpty()) return result;
        if (!isBounded()) {
            result.addAll();
            return result;
        }
        for (int corner = 0; corner < 8; ++corner)
            result.add(transform.point(
                {(corner & 1) ? high.x : low.x, (corner & 2) ? high.y : low.y, (corner & 4) ? high.z : low.z}));
        return result;
    }
};

}  // namespace qrs::host::pick
