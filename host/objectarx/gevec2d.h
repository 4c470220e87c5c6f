// Vectors in the plane.
#pragma once

class AcGeVector2d {
  public:
    AcGeVector2d() = default;
    AcGeVector2d(double xValue, double yValue) : x(xValue), y(yValue) {}

    AcGeVector2d& set(double xValue, double yValue) {
        x = xValue, y = yValue;
        return *this;
    }

    double x = 0.0;
    double y = 0.0;
};
