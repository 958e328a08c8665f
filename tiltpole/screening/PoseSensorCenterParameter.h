#pragma once

/// @file
/// The circle that the readings of one turn trace.

#include <cstdint>

namespace tiltpole {

/// The circle that magnetometer A's readings trace while the pole is turned about one axis.
///
/// The record always holds all three coordinates. Which two are the circle's and which one is the
/// level of its plane depends on the turn: CInclineSensor_Filter_XY has its circle in x and y,
/// CInclineSensor_Filter_XZ in x and z.
struct PoseSensorCenterParameter {
  std::int32_t Valid = 0;  ///< 1 once a centre has been computed, 0 before
  double CenterX = 0.0;    ///< centre on MagneticX_A [counts]
  double CenterY = 0.0;    ///< centre on MagneticY_A [counts]
  double CenterZ = 0.0;    ///< centre on MagneticZ_A [counts]
  double Radius = 0.0;     ///< mean distance of the records from the centre in the plane [counts]
};

}  // namespace tiltpole
