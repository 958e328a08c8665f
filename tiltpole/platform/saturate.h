#pragma once

/// @file
/// The one way from a double to an int.

#include <cstdint>
#include <limits>

namespace tiltpole::detail {

/// Truncates towards zero; a value outside the range of the result becomes its nearest end, and
/// not-a-number becomes 0. A plain conversion is undefined for both.
constexpr std::int32_t TruncateSaturated(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (value != value) return 0;
  if (value <= static_cast<double>(Limits::min())) return Limits::min();
  if (value >= static_cast<double>(Limits::max())) return Limits::max();
  return static_cast<std::int32_t>(value);
}

}  // namespace tiltpole::detail
