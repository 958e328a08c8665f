// The one file compiled for AVX-512; see conic_sums_avx2.cpp for what it must not use.

#include "tiltpole/calibration/detail/conic_sums_avx.h"

namespace tiltpole::detail {

void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums) {
  SumConicsInLanes<8>(plane, t, sums);
}

bool SolveConicsWithAvx512(const AxisSums& axis, const double* sums, double* coefficients) {
  return SolveConicsInLanes<8>(axis, sums, coefficients);
}

bool BoundConicsWithAvx512(const SumsByScale& by, const double* t, Bounded<double>* A,
                           Bounded<double>* B) {
  return BoundConicsInLanes<8>(by, t, A, B);
}

}  // namespace tiltpole::detail
