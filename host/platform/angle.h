// Angles: radians in the program, degrees in drawing files.
#pragma once

namespace qrs::platform {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRadiansPerDegree = kPi / 180.0;
constexpr double kDegreesPerRadian = 180.0 / kPi;

}  // namespace qrs::platform
