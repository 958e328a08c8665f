#pragma once

// Equality to the last bit. Zeros of different sign differ. Any NaN equals any other: which one
// an operation gives is the processor's choice and changes with the order of commuting factors.

#include <cmath>

namespace tiltpole_test {

inline bool SameBits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return a == b && std::signbit(a) == std::signbit(b);
}

}  // namespace tiltpole_test
