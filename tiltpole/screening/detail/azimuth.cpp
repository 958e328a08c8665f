#include "tiltpole/screening/detail/azimuth.h"

#include <cmath>

#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {
namespace {

// Deliberate: off the axes the direction is counted from the second axis, on them as if from the
// first. A reading exactly on an axis so lies 90 degrees away from its neighbours just off it.
double Direction(double d1, double d2) {
  const bool onSecondAxis = std::fabs(d1) < kEpsilon;
  const bool onFirstAxis = std::fabs(d2) < kEpsilon;
  if (onSecondAxis && onFirstAxis) return 0.0;
  if (onSecondAxis) return d2 > kEpsilon ? 90.0 : 270.0;
  if (onFirstAxis) return d1 > kEpsilon ? 0.0 : 180.0;

  const double t = ToDegrees(std::atan(std::fabs(d1 / d2)));
  if (d1 > kEpsilon && d2 > kEpsilon) return t;
  if (d1 > kEpsilon && d2 < kEpsilon) return 180.0 - t;
  if (d1 < kEpsilon && d2 < kEpsilon) return 180.0 + t;
  return 360.0 - t;
}

}  // namespace

double AzimuthAboutCenter(double d1, double d2) {
  const double direction = Direction(d1, d2);
  return direction < kEpsilon ? direction + 360.0 : direction;
}

}  // namespace tiltpole::detail
