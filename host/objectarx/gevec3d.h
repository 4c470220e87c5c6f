// Vectors in space.
#pragma once

#include <cmath>

#include "gepnt3d.h"

class AcGeVector3d {
  public:
    static const AcGeVector3d kIdentity;
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    AcGeVector3d() = default;
    AcGeVector3d(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}

    double operator[](unsigned index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned index) { return index == 0 ? x : index == 1 ? y : z; }

    AcGeVector3d operator+(const AcGeVector3d& other) const { return {x + other.x, y + other.y, z + other.z}; }
    AcGeVector3d operator-(const AcGeVector3d& other) const { return {x - other.x, y - other.y, z - other.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    double dotProduct(const AcGeVector3d& other) const { return x * other.x + y * other.y + z * other.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    double length() const { return std::sqrt(dotProduct(*this)); }
    // Of length 1; the null vector stays what it is.
    AcGeVector3d normal() const { return length() > 0.0 ? *this * (1.0 / length()) : *this; }

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline const AcGeVector3d AcGeVector3d::kIdentity;
inline const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
inline const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
inline const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);

inline AcGeVector3d operator-(const AcGePoint3d& end, const AcGePoint3d& begin) {
    return {end.x - begin.x, end.y - begin.y, end.z - begin.z};
}
inline AcGePoint3d operator+(const AcGePoint3d& point, const AcGeVector3d& by) {
    return {point.x + by.x, point.y + by.y, point.z + by.z};
}
inline AcGePoint3d operator-(const AcGePoint3d& point, const AcGeVector3d& by) {
    return {point.x - by.x, point.y - by.y, point.z - by.z};
}
