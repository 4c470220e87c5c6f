// Scale factors along the three axes.
#pragma once

class AcGeScale3d {
  public:
    AcGeScale3d() = default;
    explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}

    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};
