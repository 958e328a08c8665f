#pragma once

// Doubles side by side in one register, and what the inversion of matrices asks of an element, be
// it such a vector or a double.

#include <cmath>
#include <cstddef>

namespace tiltpole::detail {

inline double Magnitude(double value) { return std::fabs(value); }
inline bool InFirst(bool condition) { return condition; }
inline bool InAll(bool condition) { return condition; }
inline bool InAny(bool condition) { return condition; }

#ifdef __GNUC__

/// The vectors of GCC and clang: plain operators, one IEEE operation a lane. On a processor without
/// such registers the compiler writes the lanes out one by one.
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

// What the inversion asks of vectors. A comparison gives a vector of whole numbers, -1 where it
// holds.
template <class Lanes>
inline Lanes Magnitude(const Lanes& values) {
  return values < 0.0 ? -values : values;
}

template <class Condition>
inline bool InFirst(const Condition& condition) {
  return condition[0] != 0;
}

template <class Condition>
inline bool InAny(const Condition& condition) {
  bool any = false;
  for (std::size_t lane = 0; lane < sizeof(Condition) / sizeof condition[0]; ++lane) {
    any = any || condition[lane] != 0;
  }
  return any;
}

template <class Condition>
inline bool InAll(const Condition& condition) {
  return !InAny(~condition);
}

#endif

}  // namespace tiltpole::detail
