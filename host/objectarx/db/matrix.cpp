// Products of matrices, and the matrices of turns, scales and planes.
#include "gemat3d.h"

#include <cmath>

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& by) {
    AcGeMatrix3d matrix;
    for (unsigned row = 0; row < 3; ++row)
        matrix.entry[row][3] = by[row];
    return matrix;
}

namespace {

// A matrix without translation, done around a point.
AcGeMatrix3d around(const AcGeMatrix3d& matrix, const AcGePoint3d& center) {
    const AcGeVector3d offset = center - matrix * center;
    AcGeMatrix3d moved = matrix;
    for (unsigned row = 0; row < 3; ++row)
        moved(row, 3) = offset[row];
    return moved;
}

AcGeMatrix3d ofColumns(const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
    AcGeMatrix3d matrix;
    for (unsigned row = 0; row < 3; ++row) {
        matrix(row, 0) = x[row];
        matrix(row, 1) = y[row];
        matrix(row, 2) = z[row];
    }
    return matrix;
}

}  // namespace

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
    const AcGeVector3d unit = axis.normal();
    // A quarter turn is none of 89.999 degrees: what is left of rounding goes.
    const auto cleaned = [](double value) { return std::fabs(value) < 1e-15 ? 0.0 : value; };
    const double cosine = cleaned(std::cos(angle));
    const double sine = cleaned(std::sin(angle));
    const auto turned = [&](const AcGeVector3d& vector) {
        return vector * cosine + unit.crossProduct(vector) * sine + unit * (unit.dotProduct(vector) * (1.0 - cosine));
    };
    return around(ofColumns(turned(AcGeVector3d::kXAxis), turned(AcGeVector3d::kYAxis), turned(AcGeVector3d::kZAxis)),
                  center);
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& center) {
    return around(ofColumns({factor, 0.0, 0.0}, {0.0, factor, 0.0}, {0.0, 0.0, factor}), center);
}

// Drawing files fix the x axis of a plane by its normal alone; a normal close to the world's z axis takes the world's y
// axis to find it, every other one the z axis.
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    constexpr double kClose = 1.0 / 64.0;
    const AcGeVector3d z = normal.normal();
    const bool isClose = std::fabs(z.x) < kClose && std::fabs(z.y) < kClose;
    const AcGeVector3d x = (isClose ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(z).normal();
    return ofColumns(x, z.crossProduct(x).normal(), z);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    const AcGeMatrix3d turn = planeToWorld(normal);
    AcGeMatrix3d back;
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column)
            back(row, column) = turn(column, row);
    return back;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
    AcGeMatrix3d product;
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            product.entry[row][column] = 0.0;
            for (unsigned i = 0; i < 4; ++i)
                product.entry[row][column] += entry[row][i] * right.entry[i][column];
        }
    }
    return product;
}

AcGeVector3d AcGeMatrix3d::operator*(const AcGeVector3d& vector) const {
    AcGeVector3d result;
    for (unsigned row = 0; row < 3; ++row)
        result[row] = entry[row][0] * vector.x + entry[row][1] * vector.y + entry[row][2] * vector.z;
    return result;
}

AcGePoint3d AcGeMatrix3d::operator*(const AcGePoint3d& point) const {
    const AcGeVector3d turned = *this * AcGeVector3d(point.x, point.y, point.z);
    return {turned.x + entry[0][3], turned.y + entry[1][3], turned.z + entry[2][3]};
}

double AcGeMatrix3d::det() const {
    const AcGeVector3d x = *this * AcGeVector3d::kXAxis;
    const AcGeVector3d y = *this * AcGeVector3d::kYAxis;
    return x.crossProduct(y).dotProduct(*this * AcGeVector3d::kZAxis);
}

double AcGeMatrix3d::scale() const {
    return (*this * AcGeVector3d::kXAxis).length();
}

bool AcGeMatrix3d::isUniScaledOrtho(double tolerance) const {
    const AcGeVector3d axes[] = {*this * AcGeVector3d::kXAxis, *this * AcGeVector3d::kYAxis,
                                 *this * AcGeVector3d::kZAxis};
    const double size = scale();
    if (!(size > 0.0) || !std::isfinite(size)) return false;
    for (unsigned i = 0; i < 3; ++i) {
        if (std::fabs(axes[i].length() - size) > tolerance * size) return false;
        if (std::fabs(axes[i].dotProduct(axes[(i + 1) % 3])) > tolerance * size * size) return false;
    }
    return true;
}
