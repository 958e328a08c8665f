// The one file compiled for AVX2; what stands here runs only after a look at the processor.
// It includes no header of the standard library: an inline function compiled here could otherwise
// become the program's only copy and meet a processor without AVX2.

#include "tiltpole/calibration/detail/vector_lanes.h"

namespace tiltpole::detail {

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums) {
  SumConicsInLanes<4>(plane, t, sums);
}

}  // namespace tiltpole::detail
