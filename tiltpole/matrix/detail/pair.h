#pragma once

// Elements of a matrix, two at once or one alone. Each lane has its own sum, so the bits are those
// of the plain loop.

#include <cstddef>
#include <cstring>

#include "tiltpole/matrix/detail/lanes.h"

namespace tiltpole::detail {

template <class Lanes>
inline constexpr std::size_t kLanesIn = 1;
template <>
inline constexpr std::size_t kLanesIn<Pair> = 2;

// One place for both widths, so that a loop can be written once and end on a single element.
template <class Lanes>
Lanes Load(const double* from) {
  Lanes lanes;
  std::memcpy(&lanes, from, sizeof lanes);
  return lanes;
}

template <class Lanes>
void Store(double* to, const Lanes& lanes) {
  std::memcpy(to, &lanes, sizeof lanes);
}

}  // namespace tiltpole::detail
