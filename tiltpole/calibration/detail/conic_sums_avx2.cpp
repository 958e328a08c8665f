// The one file compiled for AVX2; what stands here runs only after a look at the processor.
// An inline function compiled here can become the program's only copy and meet a processor without
// AVX2. So nothing here may use one for other elements than vectors of four doubles, which no other
// file has, neither of these headers nor of the standard library; a test looks at the object file.

#include "tiltpole/calibration/detail/conic_sums_avx.h"

namespace tiltpole::detail {

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums) {
  SumConicsInLanes<4>(plane, t, sums);
}

bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients) {
  return SolveConicsInLanes<4>(axis, sums, coefficients);
}

bool BoundConicsWithAvx2(const SumsByScale& by, const double* t, Bounded<double>* A,
                         Bounded<double>* B) {
  return BoundConicsInLanes<4>(by, t, A, B);
}

}  // namespace tiltpole::detail
