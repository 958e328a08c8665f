#pragma once

// Two doubles that are worked on at once. Each lane has its own sum, so the bits are those of the
// plain loop; where the processor has no such registers the compiler makes two plain operations.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace tiltpole::detail {

using Pair = double __attribute__((vector_size(2 * sizeof(double))));

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

inline double Magnitude(double value) { return std::fabs(value); }

inline Pair Magnitude(Pair values) {
  using Bits = std::int64_t __attribute__((vector_size(sizeof(Pair))));
  constexpr std::int64_t kAllButSign = std::numeric_limits<std::int64_t>::max();
  Bits bits;
  std::memcpy(&bits, &values, sizeof bits);
  bits &= kAllButSign;
  std::memcpy(&values, &bits, sizeof values);
  return values;
}

}  // namespace tiltpole::detail
