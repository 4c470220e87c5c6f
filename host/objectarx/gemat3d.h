// Transformations of space.
//
//     entity->transformBy(AcGeMatrix3d::translation(AcGeVector3d(10.0, 0.0, 0.0)));
#pragma once

#include "adesk.h"
#include "gepnt3d.h"
#include "gevec3d.h"

// Four rows of four numbers; the last row of a transformation is 0 0 0 1.
class QRS_HOST_PORT AcGeMatrix3d {
  public:
    // Everything stays where it is.
    AcGeMatrix3d() = default;

    static AcGeMatrix3d translation(const AcGeVector3d& by);
    // Radians, counter-clockwise seen from the tip of the axis.
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center = AcGePoint3d());
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d());
    // From the coordinates that flat entities with this normal are written in to those of the world.
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    // And back.
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);

    double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
    double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

    // The right one is done first.
    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
    AcGePoint3d operator*(const AcGePoint3d& point) const;
    AcGeVector3d operator*(const AcGeVector3d& vector) const;
    // True when it keeps all angles (mirroring included): it scales every direction by scale().
    bool isUniScaledOrtho(double tolerance = 1e-9) const;
    double scale() const;
    double det() const;
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }

    double entry[4][4] = {{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}};
};
