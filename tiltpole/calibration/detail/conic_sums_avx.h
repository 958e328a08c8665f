#pragma once

// The sums by wider vectors, each compiled for the processors that have them; ConicSummation says
// what they do.

#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients);

void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx512(const AxisSums& axis, const double* sums, double* coefficients);

}  // namespace tiltpole::detail
