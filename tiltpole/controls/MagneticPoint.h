#pragma once

/// @file
/// A magnetometer reading as the scatter plots take it.

#include <cstdint>

namespace tiltpole {

/// The three components of a reading [raw counts].
struct MagneticPoint {
  std::int32_t x = 0;  ///< on the x axis
  std::int32_t y = 0;  ///< on the y axis
  std::int32_t z = 0;  ///< on the z axis
};

}  // namespace tiltpole
