// The one file compiled for AVX-512; see conic_sums_avx2.cpp for what it must not include.

#include "tiltpole/calibration/detail/vector_lanes.h"

namespace tiltpole::detail {

void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums);

void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums) {
  SumConicsInLanes<8>(plane, t, sums);
}

}  // namespace tiltpole::detail
