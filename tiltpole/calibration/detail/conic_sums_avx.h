#pragma once

// The sums by wider vectors, each compiled for the processors that have them; ConicSummation says
// what they do.

#include "tiltpole/calibration/detail/conic_bounds_kernel.h"
#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients);
bool BoundConicsWithAvx2(const SumsByScale& by, const double* t, Bounded<double>* A,
                         Bounded<double>* B);

void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx512(const AxisSums& axis, const double* sums, double* coefficients);
bool BoundConicsWithAvx512(const SumsByScale& by, const double* t, Bounded<double>* A,
                           Bounded<double>* B);

}  // namespace tiltpole::detail
