// Where the dashes of a linetype lie along a line.
#pragma once

#include <functional>

#include "host/plot/linetypes.h"

namespace qrs::host::plot {

// The dashes along a line of a length. A pattern that begins with a dash ends with one, too: both take what is left.
class DashRow {
  public:
    // scale: dots for a drawing unit. lengthInDots: of the line.
    DashRow(const Linetype& linetype, double scale, double lengthInDots);

    // False: too short for the pattern, or the pattern too fine to be seen: a line without gaps.
    bool isBroken() const { return isBroken_; }

    // Between two distances from the beginning: each dash, a dot with both ends in one place, and each dash that
    // carries something, where it ends.
    using TakeDash = std::function<void(double from, double to)>;
    using TakeCarried = std::function<void(const Dash& dash, double at)>;
    void forEach(double from, double to, const TakeDash& takeDash, const TakeCarried& takeCarried) const;

  private:
    const Linetype& linetype_;
    double scale_;
    double length_;
    double lead_ = 0.0;   // the first dash, and the last one
    double phase_ = 0.0;  // of the pattern at the end of the first dash
    bool isBroken_ = false;
};

}  // namespace qrs::host::plot
