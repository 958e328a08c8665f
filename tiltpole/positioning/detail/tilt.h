#pragma once

// A sample's two tilts with everything that is asked of them more than once: a sine costs more than
// all the rest of a formula that uses it, and the same argument always gives the same bits.

#include <cmath>

#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {

inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kThreeHalvesPi = 4.71238898038469;
inline constexpr double kTwoPi = 6.283185307179586;

struct Tilt {
  Tilt(double tiltX, double tiltY)
      : alpha(ToRadians(tiltX)),
        beta(ToRadians(tiltY)),
        sin_alpha(std::sin(alpha)),
        cos_alpha(std::cos(alpha)),
        sin_beta(std::sin(beta)),
        cos_beta(std::cos(beta)) {}

  double alpha;  // of the x axis [radians]
  double beta;   // of the y axis [radians]
  double sin_alpha;
  double cos_alpha;
  double sin_beta;
  double cos_beta;
};

// The same tilts as magnetometer B has them, turned half a turn about the pole. Sines are odd and
// cosines even to the last bit, so none is computed anew.
inline Tilt Reversed(Tilt tilt) {
  tilt.alpha = -tilt.alpha;
  tilt.beta = -tilt.beta;
  tilt.sin_alpha = -tilt.sin_alpha;
  tilt.sin_beta = -tilt.sin_beta;
  return tilt;
}

// The angle of the pole to the horizontal [radians].
inline double PoleToHorizontal(const Tilt& tilt) {
  return kHalfPi -
         std::asin(std::sqrt(tilt.sin_beta * tilt.sin_beta + tilt.sin_alpha * tilt.sin_alpha));
}

// One addition or subtraction; 360.0 itself is kept.
inline double WrapOnce(double degrees) {
  if (degrees > 360.0) return degrees - 360.0;
  if (degrees < 0.0) return degrees + 360.0;
  return degrees;
}

}  // namespace tiltpole::detail
