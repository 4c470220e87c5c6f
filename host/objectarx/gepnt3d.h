// Points in space.
#pragma once

#include <cmath>

class AcGePoint3d {
  public:
    AcGePoint3d() = default;
    AcGePoint3d(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}

    AcGePoint3d& set(double xValue, double yValue, double zValue) {
        x = xValue, y = yValue, z = zValue;
        return *this;
    }
    double operator[](unsigned index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned index) { return index == 0 ? x : index == 1 ? y : z; }

    double distanceTo(const AcGePoint3d& other) const {
        return std::sqrt((x - other.x) * (x - other.x) + (y - other.y) * (y - other.y) + (z - other.z) * (z - other.z));
    }
    // Equal when no further apart than the tolerance.
    bool isEqualTo(const AcGePoint3d& other, double tolerance = 1e-10) const { return distanceTo(other) <= tolerance; }
    bool operator==(const AcGePoint3d& other) const { return isEqualTo(other); }
    bool operator!=(const AcGePoint3d& other) const { return !isEqualTo(other); }

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// The coordinates as the older functions take them (ads_point).
inline double* asDblArray(AcGePoint3d& point) {
    return &point.x;
}
inline const double* asDblArray(const AcGePoint3d& point) {
    return &point.x;
}
