#pragma once

/// @file
/// A magnetometer reading as the scatter plots take it.

#include <cstdint>

namespace tiltpole {

/// The three components of a reading [raw counts].
struct MagneticPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t z = 0;
};

}  // namespace tiltpole
