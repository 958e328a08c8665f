#pragma once

// Doubles side by side in one register. Included by code for a particular processor, so no other
// header comes in here.

#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

#ifdef __GNUC__
/// The vectors of GCC and clang: plain operators, one IEEE operation a lane. On a processor without
/// such registers the compiler writes the lanes out one by one.
template <int kCount>
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
#endif

template <int kCount>
inline void SumConicsInLanes(const ScaledPlane& plane, const double* t, double* sums) {
  using Lanes = typename VectorOf<kCount>::Type;
  Lanes scales;
  for (int lane = 0; lane < kCount; ++lane) scales[lane] = t[lane];
  Lanes sumsInLanes[kConicSums];
  SumConics(plane, scales, sumsInLanes);
  for (int sum = 0; sum < kConicSums; ++sum) {
    for (int lane = 0; lane < kCount; ++lane) sums[sum * kCount + lane] = sumsInLanes[sum][lane];
  }
}

}  // namespace tiltpole::detail
