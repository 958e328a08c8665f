// The one file compiled for AVX2; what stands here runs only after a look at the processor.
// It includes no header of the standard library: an inline function compiled here could otherwise
// become the program's only copy and meet a processor without AVX2.

#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients);

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums) {
  SumConicsInLanes<4>(plane, t, sums);
}

bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients) {
  return SolveConicsInLanes<4>(axis, sums, coefficients);
}

}  // namespace tiltpole::detail
