#pragma once

// Angles are degrees at every boundary and radians inside the trigonometry. The order of the two
// operations of each conversion is fixed, since it decides the last bit.

namespace tiltpole::detail {

inline constexpr double kPi = 3.141592653589793;

/// What the near-zero tests of angles, vectors and offsets compare with.
inline constexpr double kEpsilon = 1e-6;

constexpr double ToRadians(double degrees) { return degrees * kPi / 180.0; }

constexpr double ToDegrees(double radians) { return radians * 180.0 / kPi; }

}  // namespace tiltpole::detail
