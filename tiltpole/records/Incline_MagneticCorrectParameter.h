#pragma once

/// @file
/// The correction of one magnetometer.

namespace tiltpole {

/// The correction of one magnetometer, from a raw reading (mx, my, mz) to a corrected one:
///
///     X =   mx - x0
///     Y = -(a mx + b my - y0)
///     Z = -(c mx + d my + e mz - z0)
///
/// The x axis is never scaled, the offsets are subtracted after the weighting, and the change of
/// sign of Y and Z belongs to the correction, not to the parameters. tiltpole::CorrectReading
/// applies it. The default leaves a reading unscaled and unshifted: (mx, -my, -mz).
///
/// The fields stand in this order; the parameter file writes them in the order of their letters.
struct Incline_MagneticCorrectParameter {
  double x0 = 0.0;  ///< offset on the x axis [counts]
  double y0 = 0.0;  ///< offset on the y axis [counts]
  double z0 = 0.0;  ///< offset on the z axis [counts]
  double a = 0.0;   ///< weight of mx in the y axis
  double c = 0.0;   ///< weight of mx in the z axis
  double d = 0.0;   ///< weight of my in the z axis
  double b = 1.0;   ///< weight of my in the y axis: its scale
  double e = 1.0;   ///< weight of mz in the z axis: its scale
};

}  // namespace tiltpole
