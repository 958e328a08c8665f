#pragma once

// The sums of several ellipse fits at once, by the widest vectors that the processor has.

#include "tiltpole/calibration/detail/conic_sums_kernel.h"
#include "tiltpole/export.h"

namespace tiltpole::detail {

inline constexpr int kMostLanes = 4;

/// One way to form the sums. All ways give the same bits.
struct ConicSummation {
  /// How many values of t one call takes, at most kMostLanes.
  int lanes;
  /// Writes the sum `s` of the value in lane `l` to `sums[s * lanes + l]`.
  void (*Sum)(const ScaledPlane& plane, const double* t, double* sums);
};

/// Two lanes, which every 64-bit processor has.
TILTPOLE_EXPORT const ConicSummation& PortableConicSummation();

/// Four lanes where the processor running this has AVX2, else the portable way.
TILTPOLE_EXPORT const ConicSummation& FastestConicSummation();

}  // namespace tiltpole::detail
