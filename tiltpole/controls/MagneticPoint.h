#pragma once

/// @file
/// A magnetometer reading as the scatter plots take it.

#include <cstdint>

#include "tiltpole/controls_export.h"

namespace tiltpole {

/// The three components of a reading [raw counts].
struct MagneticPoint {
  std::int32_t x = 0;  ///< on the x axis
  std::int32_t y = 0;  ///< on the y axis
  std::int32_t z = 0;  ///< on the z axis
};

/// A reading in whole counts, for a plot's AddTrackPoint or AddCenterPoint.
///
/// @param[in] x,y,z  the components of the reading [raw counts], any doubles
/// @return each truncated towards zero. What lies beyond the range of an int becomes its nearest
///         end, and not-a-number becomes 0.
TILTPOLE_CONTROLS_EXPORT MagneticPoint InWholeCounts(double x, double y, double z);

}  // namespace tiltpole
