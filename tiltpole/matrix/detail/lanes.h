#pragma once

// Doubles side by side in one register, with plain operators: one IEEE operation a lane. On a
// processor without such registers the compiler writes the lanes out one by one.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace tiltpole::detail {

template <std::size_t kCount>
struct VectorOf;
template <>
struct VectorOf<2> {
  using Type = double __attribute__((vector_size(16)));
};
template <>
struct VectorOf<4> {
  using Type = double __attribute__((vector_size(32)));
};
template <>
struct VectorOf<8> {
  using Type = double __attribute__((vector_size(64)));
};
template <std::size_t kCount>
using LanesOf = typename VectorOf<kCount>::Type;
using Pair = LanesOf<2>;

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

template <class Lanes>
inline Lanes Magnitude(const Lanes& values) {
  return values < 0.0 ? -values : values;
}

}  // namespace tiltpole::detail
