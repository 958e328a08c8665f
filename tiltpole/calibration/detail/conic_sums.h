#pragma once

// The sums of several ellipse fits at once, by the widest vectors that the processor has.

#include <vector>

#include "tiltpole/calibration/detail/conic_bounds_kernel.h"
#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

inline constexpr std::size_t kMostLanes = 8;

/// One way to form the sums. All ways give the same bits.
struct ConicSummation {
  /// How many values of t one call takes, at most kMostLanes.
  std::size_t lanes;
  /// Writes the sum `s` of the value in lane `l` to `sums[s * lanes + l]`.
  void (*Sum)(const ScaledPlane& plane, const double* t, double* sums);
  /// Solves the fits of all lanes side by side from these sums, and writes coefficient `i` of lane
  /// `l` to `coefficients[i * lanes + l]`. Returns false if the lanes cannot go together.
  bool (*Solve)(const AxisSums& axis, const double* sums, double* coefficients);
  /// Bounds the coefficients A and B that the fits of all lanes come to. Returns false if the lanes
  /// cannot go together, or nothing is known.
  bool (*Bound)(const SumsByScale& by, const double* t, Bounded<double>* A, Bounded<double>* B);
  /// Of fewer samples, a pass costs less than bounds do.
  std::size_t fewestToBound;
};

/// The ways that the processor running this offers, the slowest first: two lanes, which every
/// 64-bit processor has; four with AVX2; eight with AVX-512.
std::vector<ConicSummation> ConicSummationsOfThisProcessor();

/// The last of them.
const ConicSummation& FastestConicSummation();

}  // namespace tiltpole::detail
